// The log's binary form: a format string in the program's image, and a buffer that describes each argument.
#include "Platform/Mac/apple/SystemLog.h"

#include <cstdio>
#include <cstring>

#include "Util/BundleIdentifier.h"

namespace morvel::mac {

extern "C" {
struct os_log_s* os_log_create(const char* subsystem, const char* category);
void _os_log_impl(void* image, os_log_s* log, std::uint8_t type, const char* format, std::uint8_t* buffer,
                  std::uint32_t size);
extern char __dso_handle;  // the image whose text section holds the format
}

namespace {

#if defined(__APPLE__)
__attribute__((section("__TEXT,__oslogstring,cstring_literals")))
#endif
constexpr char kFormat[] = "%{public}s";

}  // namespace

void logLine(LogType type, const char* text) noexcept {
    static os_log_s* const log = os_log_create(kBundleIdentifier.data(), "general");
    constexpr std::uint8_t kHasNonScalars = 0x02;
    constexpr std::uint8_t kPublicString = 0x22;
    std::uint8_t buffer[4 + sizeof(char*)] = {kHasNonScalars, 1, kPublicString, sizeof(char*)};
    std::memcpy(buffer + 4, &text, sizeof text);
    _os_log_impl(&__dso_handle, log, static_cast<std::uint8_t>(type), kFormat, buffer, sizeof buffer);
}

void logFormatted(LogType type, const char* subject, const char* where, const char* what) noexcept {
    char line[1024];
    std::snprintf(line, sizeof line, "%s: %s: %s", subject, where, what);
    logLine(type, line);
}

}  // namespace morvel::mac
