// The host's main loop, processes, threads and log.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <future>
#include <thread>

#include "Platform/Linux/Applications/ProcessWatch.h"
#include "Platform/Linux/System/GLibMainLoop.h"
#include "Platform/Linux/System/StderrLog.h"
#include "Platform/Linux/System/ThreadQueue.h"

namespace morvel::x11 {
namespace {

using namespace std::chrono_literals;

TEST(GLibMainLoop, PostedWorkRunsInOrderAndItsOwnPostsInALaterTurn) {
    GLibMainLoop loop;
    std::string order;
    loop.post([&] {
        order += "a";
        loop.post([&] { order += "c"; });
    });
    loop.post([&] { order += "b"; });
    EXPECT_EQ(order, "") << "never inside the call";
    loop.turn(true);
    EXPECT_EQ(order, "ab");
    loop.turn(true);
    EXPECT_EQ(order, "abc");
    EXPECT_FALSE(loop.turn(false)) << "nothing is left to wake up for";
}

TEST(GLibMainLoop, APostFromAnotherThreadWakesTheLoop) {
    GLibMainLoop loop;
    std::jthread other([&] { loop.post([&] { loop.quit(7); }); });
    EXPECT_EQ(loop.run(), 7);
}

TEST(GLibMainLoop, TimersFireInTimeOrderAndNotOnceTheirTokenIsGone) {
    GLibMainLoop loop;
    std::string order;
    const Instant start = loop.now();
    const Timer later = loop.after(3ms, [&] { loop.quit(); });
    const Timer sooner = loop.after(1ms, [&] { order += "a"; });
    Timer cancelled = loop.after(1ms, [&] { order += "x"; });
    cancelled.reset();
    const Timer replaced = loop.after(2ms, [&] { order += "b"; });
    loop.run();
    EXPECT_EQ(order, "ab");
    EXPECT_GE(loop.now() - start, 3ms) << "never early";
    EXPECT_FALSE(loop.turn(false)) << "a timer that has fired is not armed any more";
}

TEST(GLibMainLoop, ATimerMayEndItselfWhileItFires) {
    GLibMainLoop loop;
    int fired = 0;
    Timer repeating;
    repeating = loop.every(1ms, 1ms, [&, owned = std::make_shared<int>(3)] {
        if (++fired < *owned) return;
        repeating.reset();
        EXPECT_EQ(*owned, 3) << "what the call owns lives as long as it runs";
        loop.quit();
    });
    loop.run();
    EXPECT_EQ(fired, 3);
}

TEST(ProcessWatch, TellsTheEndOfAProcessOnce) {
    GLibMainLoop loop;
    int gate[2];
    ASSERT_EQ(pipe(gate), 0);
    const pid_t child = fork();
    if (child == 0) {
        char byte = 0;
        [[maybe_unused]] const ssize_t n = read(gate[0], &byte, 1);  // until the test lets it go
        _exit(0);
    }
    int ends = 0;
    Subscription watch;
    watch = watchProcess(loop, ProcessID(child), [&] {
        ++ends;
        watch.reset();
        loop.quit();
    });
    ASSERT_TRUE(watch);
    EXPECT_TRUE(processStartTime(ProcessID(child)));
    ASSERT_EQ(write(gate[1], "x", 1), 1);
    loop.run();
    EXPECT_EQ(ends, 1);
    waitpid(child, nullptr, 0);
    EXPECT_FALSE(watchProcess(loop, ProcessID(child), [] {})) << "gone already";
    EXPECT_FALSE(watchProcess(loop, ProcessID(-5), [] {}));
    EXPECT_FALSE(processStartTime(ProcessID(child)));
    close(gate[0]);
    close(gate[1]);
}

TEST(ThreadQueue, RunsOnePieceAfterTheOtherOnAnotherThread) {
    ThreadQueue queue;
    std::string order;  // touched by the queue alone until the end is reached
    std::promise<std::thread::id> ended;
    queue.run([&] { order += "a"; });
    queue.run([&] { order += "b"; });
    queue.run([&] { ended.set_value(std::this_thread::get_id()); });
    EXPECT_NE(ended.get_future().get(), std::this_thread::get_id());
    EXPECT_EQ(order, "ab");
}

TEST(ThreadQueue, GoingAwayDropsWhatWaitsAndDoesNotWaitForWhatHangs) {
    auto queue = std::make_unique<ThreadQueue>();
    const auto begun = std::make_shared<std::promise<void>>();
    const auto mayEnd = std::make_shared<std::promise<void>>();
    const auto hasEnded = std::make_shared<std::promise<void>>();
    queue->run([=] {
        begun->set_value();
        mayEnd->get_future().wait();
        hasEnded->set_value();
    });
    const auto carried = std::make_shared<int>(0);
    queue->run([carried] { FAIL() << "its queue is gone"; });
    begun->get_future().wait();
    queue.reset();
    EXPECT_EQ(carried.use_count(), 1);
    mayEnd->set_value();
    hasEnded->get_future().wait();
}

TEST(StderrLog, OneLineStaysOneLineWhateverItQuotes) {
    testing::internal::CaptureStderr();
    StderrLog log;
    log.error("not shown: \"a\nmorvel: b\x1b[2J\" R\u00e9sum\u00e9");
    log.error(std::string(1'000'000, 'x'));
    const std::string written = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(written.starts_with("morvel: not shown: \"a morvel: b [2J\" R\u00e9sum\u00e9\n"))
        << written.substr(0, 200);
    EXPECT_EQ(std::ranges::count(written, '\n'), 2);
    EXPECT_LT(written.size(), 2000u);
}

}  // namespace
}  // namespace morvel::x11
