// Processes that did not answer in time: nobody asks them anything but one cheap question, ever more rarely, until
// they answer it.
#pragma once

#include <functional>
#include <unordered_map>

#include "Platform/MainLoop.h"
#include "Util/Identity.h"

namespace morvel {

/// Main thread only. Nothing is called after destruction.
class UnresponsiveProcesses {
public:
    /// `answers` asks the cheap question; `recovered` is called once it was answered, when the process is listed no
    /// longer. The loop outlives this.
    UnresponsiveProcesses(MainLoop& mainLoop, std::function<bool(ProcessID)> answers,
                          std::function<void(ProcessID)> recovered)
        : mainLoop_(mainLoop), answers_(std::move(answers)), recovered_(std::move(recovered)) {}

    bool contains(ProcessID pid) const { return probes_.contains(pid); }
    /// Does nothing for a process that is listed.
    void add(ProcessID pid);
    void remove(ProcessID pid) { probes_.erase(pid); }

private:
    struct Probe {
        int count = 0;
        Timer timer;
    };
    void schedule(ProcessID pid, Probe& probe);
    void probe(ProcessID pid);

    MainLoop& mainLoop_;
    std::function<bool(ProcessID)> answers_;
    std::function<void(ProcessID)> recovered_;
    std::unordered_map<ProcessID, Probe> probes_;
};

}  // namespace morvel
