// Log lines on the standard error stream, where the journal picks them up with the program's name.
#pragma once

#include "Platform/Log.h"

namespace morvel::x11 {

/// Each line is written in one call, so lines of several threads do not mix.
class StderrLog : public Log {
public:
    /// Debug lines are kept when MORVEL_LOG is "debug" at this moment.
    StderrLog();

    void error(std::string_view line) override;
    void debug(std::string_view line) override;
    bool isDebugWanted() const override { return isDebugWanted_; }

private:
    const bool isDebugWanted_;
};

}  // namespace morvel::x11
