// Running small AppleScript programs, for what other applications tell only that way.
#pragma once

#include <optional>
#include <string>

namespace morvel {

/// Any thread, but one call at a time. A call takes as long as the application that the script talks to.
class ScriptRunner {
public:
    virtual ~ScriptRunner() = default;

    /// Whether an application with this identifier runs. A script that talks to one that does not would start it.
    virtual bool isRunning(const std::string& bundleID) = 0;

    /// Compiles and runs the script. Nothing when that fails in any way, or when its result is no text.
    virtual std::optional<std::string> run(const std::string& source) = 0;
};

}  // namespace morvel
