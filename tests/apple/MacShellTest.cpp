// Shell lines as tasks: what the task is told, and every way in which it can end.
#include "Platform/Mac/System/MacShell.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Platform/Mac/apple/Foundation/NSTask.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

class Shell : public RuntimeTest {
protected:
    Shell() {
        EXPECT_EQ(::pipe(pipe_), 0);
        answer("NSFileHandle", "fileDescriptor", pipe_[0]);
        answer("NSTask", "terminationStatus", std::int32_t{3});
        runtime().script("NSTask", "launchAndReturnError:", [this](Invocation& i) { i.answer<bool>(starts); });
        runtime().script("NSTask", "isRunning", [this](Invocation& i) { i.answer<bool>(looks-- > 0); });
        runtime().script("NSTask", "terminationReason", [this](Invocation& i) { i.answer<NSInteger>(reason); });
        runtime().script("NSTask", "processIdentifier", [this](Invocation& i) { i.answer<std::int32_t>(child); });
    }
    ~Shell() override {
        for (const int end : pipe_) ::close(end);
    }
    ShellResult run(std::chrono::milliseconds patience = 10s) {
        const objc::AutoreleasePool pool;
        return MacShell(patience).run("killall Dock");
    }
    void say(const std::string& text) { EXPECT_EQ(::write(pipe_[1], text.data(), text.size()), ssize_t(text.size())); }

    bool starts = true;
    int looks = 3;  // at which it still runs
    NSInteger reason = NSTaskTerminationReasonExit;
    std::int32_t child = 0;

private:
    int pipe_[2] = {};
};

TEST_F(Shell, TellsStatusAndErrors) {
    say("no such process");
    const ShellResult result = run();
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_EQ(result.standardError, "no such process");
    const Texts told = {"setExecutableURL:", "setArguments:", "setStandardError:", "launchAndReturnError:"};
    EXPECT_EQ(sentOf(told), told);
}

TEST_F(Shell, HasNoStatusWithoutAProperEnd) {
    starts = false;
    EXPECT_FALSE(run().exitStatus);
    starts = true;
    reason = 2;  // a signal
    EXPECT_FALSE(run().exitStatus);
}

/// Whether nobody holds the writing end of the pipe any more.
bool endsSoon(int reading) {
    pollfd watched{reading, POLLIN, 0};
    constexpr int kMilliseconds = 5000;
    return ::poll(&watched, 1, kMilliseconds) == 1 && (watched.revents & POLLHUP);
}

TEST_F(Shell, KillsWhatDoesNotEndAndWhatThatHasStarted) {
    for (const bool leadsGroup : {true, false}) {
        int alive[2];
        ASSERT_EQ(::pipe(alive), 0);
        child = ::fork();
        if (child == 0) {
            if (leadsGroup) ::setpgid(0, 0);
            ::close(alive[0]);
            if (leadsGroup) ::fork();
            for (;;) ::pause();
        }
        ::close(alive[1]);
        if (leadsGroup) ::setpgid(child, child);  // whichever of us comes first, as the system does it
        looks = 1'000'000;
        const ShellResult result = run(100ms);
        EXPECT_FALSE(result.exitStatus);
        EXPECT_NE(result.standardError.find("did not end"), std::string::npos);
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status));
        EXPECT_TRUE(endsSoon(alive[0])) << "a child of it lives on";
        ::close(alive[0]);
    }
}

}  // namespace
}  // namespace morvel::mac::checked
