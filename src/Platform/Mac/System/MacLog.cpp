// Lines as ended strings, which is what the system log takes.
#include "Platform/Mac/System/MacLog.h"

#include <cstdlib>
#include <string>

#include "Platform/Mac/apple/SystemLog.h"

namespace morvel::mac {

namespace {

bool wantsDebug() {
    const char* const value = std::getenv("MORVEL_LOG");
    return value && std::string_view(value) == "debug";
}

}  // namespace

MacLog::MacLog() : isDebugWanted_(wantsDebug()) {}

void MacLog::error(std::string_view line) {
    logLine(LogType::Error, std::string(line).c_str());
}

void MacLog::debug(std::string_view line) {
    if (isDebugWanted_) logLine(LogType::Default, std::string(line).c_str());
}

}  // namespace morvel::mac
