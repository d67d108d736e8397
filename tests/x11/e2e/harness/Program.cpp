#include "harness/Program.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace morvel::e2e {
namespace {

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (auto& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

/// The number behind `key` in a /proc status file, or 0 when there is none (the process is gone).
long statusNumber(const std::filesystem::path& file, const std::string& key) {
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);)
        if (line.starts_with(key + ":")) return std::stol(line.substr(key.size() + 1));
    return 0;
}

/// Runs in the child between fork and exec: only calls that are safe there.
[[noreturn]] void becomeProgram(char* const* arguments, char* const* environment, const Program::Options& options,
                                int failurePipe) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, options.deathSignal);
    const int null = open("/dev/null", O_RDONLY);
    const int out = open(options.output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    dup2(null, STDIN_FILENO);
    if (out >= 0) {
        dup2(out, STDOUT_FILENO);
        dup2(out, STDERR_FILENO);
    }
    if (options.inheritedDescriptor >= 0) fcntl(options.inheritedDescriptor, F_SETFD, 0);
    execvpe(arguments[0], arguments, environment);
    const int reason = errno;
    [[maybe_unused]] const auto written = write(failurePipe, &reason, sizeof reason);
    _exit(127);
}

}  // namespace

Program::Program(const std::vector<std::string>& arguments, const Environment& environment, const Options& options) {
    std::vector<std::string> words = arguments;
    std::vector<std::string> variables;
    for (const auto& [name, value] : environment) variables.push_back(name + "=" + value);
    const auto argumentPointers = pointersTo(words);
    const auto environmentPointers = pointersTo(variables);

    int failure[2];
    if (pipe2(failure, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    pid_ = fork();
    if (pid_ == 0) becomeProgram(argumentPointers.data(), environmentPointers.data(), options, failure[1]);
    close(failure[1]);
    int reason = 0;
    const bool failed = read(failure[0], &reason, sizeof reason) == sizeof reason;  // closed by a successful exec
    close(failure[0]);
    if (pid_ < 0) throw std::runtime_error("cannot fork");
    if (failed) {
        waitpid(pid_, nullptr, 0);
        pid_ = -1;
        throw std::runtime_error("cannot start " + arguments[0] + ": " + std::strerror(reason));
    }
}

Program::Program(Program&& other) noexcept : pid_(std::exchange(other.pid_, -1)), status_(other.status_) {}

Program::~Program() {
    if (pid_ > 0) kill();
}

std::optional<int> Program::exitStatus() {
    if (!status_ && pid_ > 0) {
        int raw = 0;
        if (waitpid(pid_, &raw, WNOHANG) == pid_) status_ = WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
    }
    return status_;
}

std::optional<int> Program::waitForExit(std::chrono::milliseconds patience) {
    if (exitStatus()) return status_;
    const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, pid_, 0));
    if (descriptor < 0) return exitStatus();
    pollfd ended{descriptor, POLLIN, 0};
    poll(&ended, 1, static_cast<int>(patience.count()));
    close(descriptor);
    return exitStatus();
}

void Program::terminate() {
    if (exitStatus()) return;
    thaw();
    signal(SIGTERM);
    if (!waitForExit(1s)) kill();
}

void Program::kill() {
    if (exitStatus()) return;
    ::kill(-pid_, SIGKILL);
    waitForExit();
}

long Program::voluntarySwitches() const {
    long sum = 0;
    for (const auto& task : std::filesystem::directory_iterator("/proc/" + std::to_string(pid_) + "/task"))
        sum += statusNumber(task.path() / "status", "voluntary_ctxt_switches");
    return sum;
}

}  // namespace morvel::e2e
