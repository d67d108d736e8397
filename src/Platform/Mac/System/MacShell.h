// Shell lines as tasks.
#pragma once

#include <chrono>

#include "Platform/ShellCommands.h"

namespace morvel::mac {

class MacShell : public ShellCommands {
public:
    /// `patience`: how long a line may take.
    explicit MacShell(std::chrono::milliseconds patience = std::chrono::seconds(10)) : patience_(patience) {}

    ShellResult run(const std::string& line) override;

private:
    const std::chrono::milliseconds patience_;
};

}  // namespace morvel::mac
