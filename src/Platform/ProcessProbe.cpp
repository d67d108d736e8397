#include "Platform/ProcessProbe.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>

namespace morvel {

bool killProbe(ProcessID pid) {
    // 0 and negative numbers would signal process groups.
    if (pid.value <= 0) return false;
    return kill(pid.value, 0) == 0 || errno != ESRCH;
}

ProcessID ownProcess() {
    return ProcessID(getpid());
}

}  // namespace morvel
