// Lines for the system's shell.
#pragma once

#include <optional>
#include <string>

namespace morvel {

/// What became of a shell line.
struct ShellResult {
    std::optional<int> exitStatus;  ///< absent: the shell could not be started, or did not end by itself in time
    std::string standardError;      ///< UTF-8, or why there is no exit status
};

/// Main thread only.
class ShellCommands {
public:
    virtual ~ShellCommands() = default;

    /// Runs the line with `/bin/sh -c` and waits for its end, ten seconds at most: then it is killed, with what it
    /// has started.
    virtual ShellResult run(const std::string& line) = 0;
};

}  // namespace morvel
