// Lines to the system's log under the application's own subsystem. For developers; nothing here reaches the user.
#pragma once

#include <string_view>

namespace morvel {

class Log {
public:
    virtual ~Log() = default;

    /// Something failed that the program lives with. Any thread.
    virtual void error(std::string_view line) = 0;

    /// Explains a decision; dropped unless the person asked for it (MORVEL_LOG=debug in the environment).
    virtual void debug(std::string_view line) = 0;

    /// Whether `debug` lines are kept, so that a caller can save itself from composing them.
    virtual bool isDebugWanted() const = 0;
};

}  // namespace morvel
