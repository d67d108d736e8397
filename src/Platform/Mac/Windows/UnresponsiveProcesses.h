// Which processes did not answer in time, and when each may be tried again.
#pragma once

#include <map>

#include "Platform/MainLoop.h"
#include "Util/Identity.h"

namespace morvel::mac {

/// Every question to a process that hangs costs the whole messaging time-out on the main thread, so such a process is
/// asked nothing but a probe, and that after waits that double from a quarter of a second to four seconds.
class UnresponsiveProcesses {
public:
    enum class Advice {
        Ask,
        ProbeFirst,  ///< it did not answer the last time; long enough ago
        Refuse,      ///< it did not answer just now
    };
    Advice adviceFor(ProcessID pid, Instant now) const;

    void timedOut(ProcessID pid, Instant now);
    void answered(ProcessID pid) { waits_.erase(pid); }

private:
    struct Wait {
        Instant until;
        Duration length{};
    };
    std::map<ProcessID, Wait> waits_;
};

}  // namespace morvel::mac
