// AppleScript, through which media players are asked and told.
#pragma once

#include "Platform/ScriptRunner.h"

namespace morvel::mac {

/// The person is asked once for each application whether it may be scripted; a refusal is a failure like any other.
class MacScripts : public ScriptRunner {
public:
    bool isRunning(const std::string& bundleID) override;
    std::optional<std::string> run(const std::string& source) override;
};

}  // namespace morvel::mac
