// A log that keeps its lines.
#pragma once

#include <string>
#include <vector>

#include "Platform/Log.h"

namespace morvel::sim {

class SimLog : public Log {
public:
    void error(std::string_view line) override { errors.emplace_back(line); }
    void debug(std::string_view line) override {
        if (wantsDebug) debugs.emplace_back(line);
    }
    bool isDebugWanted() const override { return wantsDebug; }

    bool wantsDebug = false;
    std::vector<std::string> errors;
    std::vector<std::string> debugs;
};

}  // namespace morvel::sim
