// The waits between probes.
#include "Platform/Mac/Windows/UnresponsiveProcesses.h"

#include <algorithm>

namespace morvel::mac {

UnresponsiveProcesses::Advice UnresponsiveProcesses::adviceFor(ProcessID pid, Instant now) const {
    const auto found = waits_.find(pid);
    if (found == waits_.end()) return Advice::Ask;
    return now < found->second.until ? Advice::Refuse : Advice::ProbeFirst;
}

void UnresponsiveProcesses::timedOut(ProcessID pid, Instant now) {
    // Short at first: an application that only starts or stalls for a moment is back before a person notices.
    constexpr Duration kFirst = std::chrono::milliseconds(250);
    constexpr Duration kLongest = std::chrono::seconds(4);
    Wait& wait = waits_[pid];
    wait.length = wait.length == Duration{} ? kFirst : std::min(wait.length * 2, kLongest);
    wait.until = now + wait.length;
}

}  // namespace morvel::mac
