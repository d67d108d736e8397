// Log lines in the unified system log, under the bundle identifier as subsystem.
#pragma once

#include "Platform/Log.h"

namespace morvel::mac {

class MacLog : public Log {
public:
    /// Debug lines are kept when MORVEL_LOG is "debug" at this moment.
    MacLog();

    void error(std::string_view line) override;
    /// Kept lines have the log's default type, so that `log show` finds them without further settings.
    void debug(std::string_view line) override;
    bool isDebugWanted() const override { return isDebugWanted_; }

private:
    const bool isDebugWanted_;
};

}  // namespace morvel::mac
