// Where an exception that reached the border ends: one line in the system log.
#include "Platform/Mac/objc/Guard.h"

#include "Platform/Mac/apple/SystemLog.h"

namespace morvel::mac::objc {

void reportEscapedException(const char* where, const char* what) noexcept {
    // Fixed storage: the exception may well be about memory.
    logFormatted(LogType::Fault, "exception in callback", where, what);
}

}  // namespace morvel::mac::objc
