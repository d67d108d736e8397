#include "Platform/Linux/Applications/ProcessWatch.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>

namespace morvel::x11 {

namespace {

std::optional<std::string> readProcFile(ProcessID pid, const char* name) {
    std::ifstream file("/proc/" + std::to_string(pid.value) + "/" + name);
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (text.empty()) return std::nullopt;
    return text;
}

}  // namespace

Subscription watchProcess(GLibMainLoop& mainLoop, ProcessID pid, std::function<void()> ended) {
    if (pid.value <= 0) return {};
    const int fd = static_cast<int>(syscall(SYS_pidfd_open, pid.value, 0));
    if (fd < 0) return {};
    auto watch = std::make_shared<Subscription>();
    *watch = mainLoop.watchReadable(fd, std::move(ended));
    return Subscription([watch, fd] {
        watch->reset();
        close(fd);
    });
}

std::optional<uint64_t> processStartTime(ProcessID pid) {
    const auto stat = readProcFile(pid, "stat");
    if (!stat) return std::nullopt;
    // The second field is the name in parentheses and may hold blanks and parentheses; the 22nd is the start time.
    const size_t nameEnd = stat->rfind(')');
    if (nameEnd == std::string::npos) return std::nullopt;
    std::istringstream rest(stat->substr(nameEnd + 1));
    std::string skipped;
    constexpr int kFieldsBetween = 19;
    for (int i = 0; i < kFieldsBetween; ++i) rest >> skipped;
    uint64_t ticks = 0;
    if (!(rest >> ticks)) return std::nullopt;
    return ticks;
}

std::optional<std::string> processName(ProcessID pid) {
    auto name = readProcFile(pid, "comm");
    if (name && name->ends_with('\n')) name->pop_back();
    return name;
}

}  // namespace morvel::x11
