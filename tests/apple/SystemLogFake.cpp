// Decodes the log's binary arguments, as the log's reader does.
#include <cstdint>
#include <cstring>

#include "Platform/Mac/apple/SystemLog.h"
#include "SystemObjects.h"

namespace morvel::mac {

extern "C" {
struct os_log_s* os_log_create(const char*, const char*) {
    return nullptr;
}

void _os_log_impl(void*, os_log_s*, std::uint8_t type, const char* format, std::uint8_t* buffer, std::uint32_t size) {
    using namespace checked;
    constexpr std::uint8_t kPublicString = 0x22;
    const bool isOneString = std::string(format) == "%{public}s" && size == 4 + sizeof(char*) && buffer[1] == 1 &&
                             buffer[2] == kPublicString && buffer[3] == sizeof(char*);
    if (!isOneString) return runtime().faults().add(FaultKind::BadCall, "a log line of another form");
    const char* text = nullptr;
    std::memcpy(&text, buffer + 4, sizeof text);
    logLines().emplace_back(text);
    if (type == static_cast<std::uint8_t>(LogType::Fault)) runtime().faults().add(FaultKind::EscapedException, text);
}
}

}  // namespace morvel::mac

namespace morvel::mac::checked {

std::vector<std::string>& logLines() {
    static std::vector<std::string> lines;
    return lines;
}

}  // namespace morvel::mac::checked
