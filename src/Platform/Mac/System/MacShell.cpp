// The wait looks at the task again and again instead of letting the run loop turn, in which anything could happen to
// the callers; and it empties the pipe meanwhile, which a task that says much would else wait for.
#include "Platform/Mac/System/MacShell.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <thread>

#include "Platform/Mac/apple/Foundation/NSTask.h"
#include "Platform/Mac/objc/AutoreleasePool.h"

namespace morvel::mac {

namespace {

constexpr auto kLookAgain = std::chrono::milliseconds(5);
constexpr size_t kMostText = 16 * 1024;  // for the log

/// Adds what the pipe holds now. What comes from a child of the task's that lives on is not waited for.
void drain(int descriptor, std::string& text) {
    std::array<char, 4096> part;
    for (ssize_t count = 0; (count = ::read(descriptor, part.data(), part.size())) > 0;)
        if (text.size() < kMostText) text.append(part.data(), static_cast<size_t>(count));
}

/// With what it has started, where the system has made the task the leader of a group of its own. In our own group it
/// would take us along.
void killWithChildren(pid_t process) {
    if (::getpgid(process) == process) ::kill(-process, SIGKILL);
    ::kill(process, SIGKILL);
}

}  // namespace

ShellResult MacShell::run(const std::string& line) {
    const objc::AutoreleasePool pool;
    const NSPipe pipe = NSPipe::make();
    const NSFileHandle reading = pipe.fileHandleForReading();
    const int descriptor = reading ? reading.fileDescriptor() : -1;
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);

    const NSTask task = NSTask::make();
    task.setExecutableURL(NSURL::file("/bin/sh"));
    task.setArguments(NSArray::from<NSString>({NSString::from("-c"), NSString::from(line)}));
    task.setStandardError(pipe);
    ErrorOut error;
    if (!task.launch(error)) return {std::nullopt, "it could not be started: " + error.text()};

    ShellResult result;
    const auto deadline = std::chrono::steady_clock::now() + patience_;
    while (task.isRunning() && std::chrono::steady_clock::now() < deadline) {
        drain(descriptor, result.standardError);
        std::this_thread::sleep_for(kLookAgain);
    }
    drain(descriptor, result.standardError);
    if (task.isRunning()) {
        killWithChildren(task.processIdentifier());
        result.standardError += " (it did not end in time)";
    } else if (task.terminationReason() == NSTaskTerminationReasonExit) {
        result.exitStatus = task.terminationStatus();
    }
    return result;
}

}  // namespace morvel::mac
