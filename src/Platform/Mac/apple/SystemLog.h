// The unified system log, without the compiler's help: one public line per call, under the application's subsystem.
// Any thread.
#pragma once

#include <cstdint>

namespace morvel::mac {

enum class LogType : std::uint8_t { Default = 0, Info = 1, Debug = 2, Error = 16, Fault = 17 };

/// Never throws and takes no memory from the heap. A line longer than about a thousand bytes is cut.
void logLine(LogType type, const char* text) noexcept;
/// "subject: where: what".
void logFormatted(LogType type, const char* subject, const char* where, const char* what) noexcept;

}  // namespace morvel::mac
