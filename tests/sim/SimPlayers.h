// The media players as scripts find them: what they answer, and what they were told.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Platform/ScriptRunner.h"
#include "sim/SimWorkspace.h"

namespace morvel::sim {

class SimPlayers : public ScriptRunner {
public:
    explicit SimPlayers(SimWorkspace& workspace) : workspace_(workspace) {}

    bool isRunning(const std::string& bundleID) override {
        for (const RunningApplication& app : workspace_.running)
            if (app.bundleID == bundleID) return true;
        return false;
    }
    std::optional<std::string> run(const std::string& source) override {
        const size_t from = source.find('"') + 1;
        const std::string app = source.substr(from, source.find('"', from) - from);
        if (!source.starts_with("if ")) {
            commands.push_back(source);
            if (onCommand) onCommand(source);
            return std::nullopt;
        }
        ++queries[app];
        const auto answer = answers.find(app);
        return answer == answers.end() ? std::nullopt : answer->second;
    }

    std::map<std::string, std::optional<std::string>> answers;  ///< of the queries, by the application's name
    std::map<std::string, int> queries;
    std::vector<std::string> commands;  ///< the scripts that were not queries
    std::function<void(const std::string&)> onCommand;

private:
    SimWorkspace& workspace_;
};

}  // namespace morvel::sim
