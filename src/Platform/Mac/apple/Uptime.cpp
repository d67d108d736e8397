// The system's clock on Apple systems; elsewhere whoever supplies the system's functions keeps it.
#include "Platform/Mac/apple/Uptime.h"

#if defined(__APPLE__)
#include <time.h>
#endif

namespace morvel::mac {

#if defined(__APPLE__)
std::uint64_t uptimeNanoseconds() {
    return clock_gettime_nsec_np(CLOCK_UPTIME_RAW);
}
#else
std::uint64_t checkedUptime();

std::uint64_t uptimeNanoseconds() {
    return checkedUptime();
}
#endif

}  // namespace morvel::mac
