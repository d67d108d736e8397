// A shell that writes down what it is given, and an entry among what is started at login.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Platform/LoginItem.h"
#include "Platform/ShellCommands.h"

namespace morvel::sim {

class SimShell : public ShellCommands {
public:
    ShellResult run(const std::string& line) override {
        lines.push_back(line);
        if (onRun) onRun();
        return result;
    }

    std::vector<std::string> lines;
    std::function<void()> onRun;  ///< while each line runs
    ShellResult result{0, ""};    ///< of every line
};

class SimLoginItem : public LoginItem {
public:
    void setRegistered(bool registered) override { isRegistered = registered; }

    bool isRegistered = false;
};

}  // namespace morvel::sim
