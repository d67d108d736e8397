// What the whole program spends on what happens on a desktop, counted in instructions by Callgrind. Run by check.py;
// without Callgrind it does the same and counts nothing.
#include <valgrind/callgrind.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "App/AppDelegate.h"
#include "sim/Desktop.h"

namespace morvel {
namespace {

using namespace std::chrono_literals;

constexpr int kApplications = 40;
constexpr int kRounds = 10;
constexpr double kDisplayWidth = 1440;

std::vector<sim::DisplaySpec> displaysInARow(int count) {
    std::vector<sim::DisplaySpec> displays;
    for (int i = 0; i < count; ++i)
        displays.push_back({DisplayID(static_cast<uint32_t>(i + 1)), "Display", {i * kDisplayWidth, 0, 1440, 900}});
    return displays;
}

/// The program on a desktop with this many windows, spread over applications and displays, at rest.
class World {
public:
    World(int windowCount, int displayCount) : desktop_(displaysInARow(displayCount)), displays_(displayCount) {
        for (int i = 0; i < kApplications; ++i) apps_.push_back(&desktop_.launch("Application " + std::to_string(i)));
        for (int i = 0; i < windowCount; ++i) windows_.push_back(&open());
        delegate_.applicationDidFinishLaunching();
        desktop_.run(5s);
    }

    void changeTitle(int round) {
        window(round).setTitle("Another title " + std::to_string(round));
        desktop_.run(250ms);  // a title counts once it has rested
    }
    /// All that a published change makes the bars look at.
    void moveWindow(int round) {
        sim::SimWindow& moved = window(round);
        Rect<AXSpace> frame = moved.frame();
        frame.x += 1;
        moved.setFrame(frame);
        desktop_.settle();
    }
    void focus(int round) {
        window(round).focus();
        desktop_.settle();
    }
    void openAndClose(int) {
        sim::SimWindow& opened = open();
        desktop_.settle();
        opened.close();
        desktop_.settle();
    }

private:
    sim::SimWindow& window(int round) { return *windows_.at(static_cast<size_t>(round) * 7 % windows_.size()); }

    sim::SimWindow& open() {
        const int n = opened_++;
        sim::SimApp& app = *apps_.at(static_cast<size_t>(n % kApplications));
        const double x = kDisplayWidth * (n % displays_) + n % 600;
        return app.open({.x = x, .y = double(50 + n % 200), .title = "A document with a usual title"});
    }

    sim::Desktop desktop_;
    int displays_;
    int opened_ = 0;
    std::vector<sim::SimApp*> apps_;
    std::vector<sim::SimWindow*> windows_;
    AppDelegate delegate_{desktop_.platform()};
};

struct Cost {
    const char* name;
    void (World::*round)(int);
};

constexpr Cost kCosts[] = {{"title", &World::changeTitle},
                           {"move", &World::moveWindow},
                           {"focus", &World::focus},
                           {"open and close", &World::openAndClose}};

void count(int windows, int displays) {
    World world(windows, displays);
    for (const Cost& cost : kCosts) {
        (world.*cost.round)(0);  // whatever is made once
        CALLGRIND_ZERO_STATS;
        for (int round = 1; round <= kRounds; ++round) (world.*cost.round)(round);
        const std::string label = std::string(cost.name) + ", " + std::to_string(windows) + " windows, " +
                                  std::to_string(displays) + " displays";
        CALLGRIND_DUMP_STATS_AT(label.c_str());
        std::puts(label.c_str());
    }
}

}  // namespace
}  // namespace morvel

int main() {
    for (const int windows : {10, 100, 1000}) morvel::count(windows, 1);
    for (const int displays : {3, 6}) morvel::count(100, displays);
}
