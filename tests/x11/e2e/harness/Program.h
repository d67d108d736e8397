// A child process that never outlives the harness.
#pragma once

#include <signal.h>
#include <sys/types.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "harness/Waiting.h"

namespace morvel::e2e {

/// The variables a child process is started with.
using Environment = std::map<std::string, std::string>;

class Program {
public:
    struct Options {
        std::filesystem::path output = "/dev/null";  // standard output and error go here
        int deathSignal = SIGKILL;                   // what it gets when the harness dies first
        int inheritedDescriptor = -1;                // kept open in the child under the same number
    };

    /// Starts `arguments[0]`, looked up in PATH, as the leader of its own process group. It is killed when the thread
    /// that started it ends, however that happens. Throws std::runtime_error when the program cannot be started.
    Program(const std::vector<std::string>& arguments, const Environment& environment, const Options& options);
    Program(const std::vector<std::string>& arguments, const Environment& environment)
        : Program(arguments, environment, Options{}) {}
    Program(Program&&) noexcept;
    Program& operator=(Program&&) = delete;
    ~Program();

    pid_t pid() const { return pid_; }
    void signal(int number) const {
        if (!status_ && pid_ > 0) ::kill(pid_, number);
    }
    /// Stops the whole group as a frozen program would; `thaw` lets it go on.
    void freeze() const { signalGroup(SIGSTOP); }
    void thaw() const { signalGroup(SIGCONT); }

    bool isRunning() { return !exitStatus(); }
    /// The exit code, or 128 + the signal that ended it; no value while it runs.
    std::optional<int> exitStatus();
    /// Waits for the end. No value: it still runs after `patience`.
    std::optional<int> waitForExit(std::chrono::milliseconds patience = kPatience);
    /// Ends it and waits: politely, and after a second by force.
    void terminate();
    void kill();

    /// How often its threads have gone to sleep so far: the difference over a time is the number of its wake-ups.
    long voluntarySwitches() const;

private:
    void signalGroup(int number) const {
        if (!status_ && pid_ > 0) ::kill(-pid_, number);
    }

    pid_t pid_ = -1;
    std::optional<int> status_;
};

}  // namespace morvel::e2e
