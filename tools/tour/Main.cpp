// morvel_tour BAR FOLDER: plays the tour with this program and leaves the pictures in the folder.
#include <exception>
#include <iostream>

#include "Tour.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: morvel_tour BAR FOLDER\n";
        return 2;
    }
    try {
        return morvel::tour::Tour(argv[1], argv[2]).play() ? 0 : 1;
    } catch (const std::exception& problem) {
        std::cerr << "the tour cannot go on: " << problem.what() << "\n";
        return 1;
    }
}
