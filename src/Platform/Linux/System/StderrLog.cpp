#include "Platform/Linux/System/StderrLog.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace morvel::x11 {

namespace {

/// Lines quote the titles of other programs' windows, which may be a megabyte long, or hold line breaks and the
/// terminal's control characters.
constexpr size_t kMaxLength = 1000;

void writeLine(std::string_view line) {
    std::string text = "morvel: ";
    text.append(line.substr(0, kMaxLength));
    std::ranges::replace_if(
        text, [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
    text.push_back('\n');
    // A log that cannot be written (a closed terminal) is not worth a second try.
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
}

bool wantsDebug() {
    const char* value = std::getenv("MORVEL_LOG");
    return value && std::string_view(value) == "debug";
}

}  // namespace

StderrLog::StderrLog() : isDebugWanted_(wantsDebug()) {}

void StderrLog::error(std::string_view line) {
    writeLine(line);
}

void StderrLog::debug(std::string_view line) {
    if (isDebugWanted_) writeLine(line);
}

}  // namespace morvel::x11
