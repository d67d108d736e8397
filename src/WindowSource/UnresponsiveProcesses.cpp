#include "WindowSource/UnresponsiveProcesses.h"

#include "Util/RetryScheduler.h"

namespace morvel {

void UnresponsiveProcesses::add(ProcessID pid) {
    const auto [at, isNew] = probes_.try_emplace(pid);
    if (isNew) schedule(pid, at->second);
}

void UnresponsiveProcesses::schedule(ProcessID pid, Probe& probe) {
    probe.timer = mainLoop_.after(doublingBackoff(++probe.count), [this, pid] { this->probe(pid); });
}

void UnresponsiveProcesses::probe(ProcessID pid) {
    const bool answered = answers_(pid);
    const auto found = probes_.find(pid);
    if (found == probes_.end()) return;
    if (!answered) {
        schedule(pid, found->second);
        return;
    }
    probes_.erase(found);
    const auto recovered = recovered_;  // it may destroy us
    recovered(pid);
}

}  // namespace morvel
