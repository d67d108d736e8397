// The host's main loop and log: what runs when, what never runs, and that nothing stays armed.
#include <cstdlib>

#include "Platform/Mac/System/DispatchQueue.h"
#include "Platform/Mac/System/MacLog.h"
#include "Platform/Mac/System/MacMainLoop.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

class MainLoopOfTheMac : public RuntimeTest {
protected:
    /// The milliseconds since the test began, and a name.
    void note(const std::string& what) { notes_.push_back(std::to_string((loop_.now() - begin_) / 1ms) + " " + what); }
    Texts notes() { return std::exchange(notes_, {}); }

    MacMainLoop loop_;
    const Instant begin_ = loop_.now();
    Texts notes_;
};

TEST_F(MainLoopOfTheMac, PostedWorkRunsLaterAndInOrder) {
    loop_.post([&] {
        note("first");
        loop_.post([&] { note("from within"); });
    });
    loop_.post([&] { note("second"); });
    EXPECT_TRUE(notes().empty()) << "never inside post";
    EXPECT_EQ(dispatch().waiting(), 1U) << "one wake-up for both";
    dispatch().runPending();
    EXPECT_EQ(notes(), (Texts{"0 first", "0 second", "0 from within"}));
    EXPECT_EQ(dispatch().waiting(), 0U);
}

TEST_F(MainLoopOfTheMac, WorkThatThrowsIsLoggedAndTheRestStillRuns) {
    loop_.post([] { throw std::runtime_error("broken"); });
    loop_.post([&] { note("after"); });
    const Timer timer = loop_.after(0ms, [] { throw std::runtime_error("broken timer"); });
    dispatch().runPending();
    EXPECT_EQ(notes(), Texts{"0 after"});
    EXPECT_EQ(takenKinds(), (std::vector{FaultKind::EscapedException, FaultKind::EscapedException}));
}

TEST_F(MainLoopOfTheMac, WorkOfALoopThatIsGoneIsDropped) {
    auto loop = std::make_unique<MacMainLoop>();
    const auto carried = std::make_shared<int>(0);
    loop->post([&, carried] { note("too late"); });
    loop.reset();
    EXPECT_EQ(carried.use_count(), 1) << "what it carried is let go at once";
    dispatch().runPending();
    EXPECT_TRUE(notes().empty());
}

TEST_F(MainLoopOfTheMac, TimersFireOnTimeAndLeaveNothingBehind) {
    Timer once = loop_.after(200ms, [&] { note("once"); });
    Timer often = loop_.every(100ms, 250ms, [&] { note("often"); });
    Timer atOnce = loop_.after(-5s, [&] { note("at once"); });
    EXPECT_TRUE(notes().empty()) << "never inside the call, also when it is due";
    dispatch().runFor(700ms);
    EXPECT_EQ(notes(), (Texts{"0 at once", "100 often", "200 once", "350 often", "600 often"}));
    often.reset();
    dispatch().runFor(10s);
    EXPECT_TRUE(notes().empty());
    EXPECT_EQ(dispatch().waiting(), 0U) << "nothing wakes the process any more";
    once.reset();  // after it fired: nothing to end
}

TEST_F(MainLoopOfTheMac, TokensMayEndInAnyPlace) {
    Timer itself, neighbour;
    const auto carried = std::make_shared<int>(0);
    itself = loop_.every(100ms, 100ms, [&, carried] {
        neighbour.reset();
        itself.reset();
        note("carried by " + std::to_string(carried.use_count() - 1));
    });
    neighbour = loop_.after(100ms, [&] { note("neighbour"); });
    Timer replaced = loop_.after(50ms, [&] { note("old"); });
    replaced = loop_.after(60ms, [&] { note("new"); });
    dispatch().runFor(1s);
    EXPECT_EQ(notes(), (Texts{"60 new", "100 carried by 1"})) << "a callback outlives the token it ends";
    EXPECT_EQ(carried.use_count(), 1);
    EXPECT_EQ(dispatch().waiting(), 0U);
}

TEST_F(MainLoopOfTheMac, DebugLinesAreForThoseWhoAsk) {
    ::unsetenv("MORVEL_LOG");
    MacLog quiet;
    quiet.error("failed");
    quiet.debug("decided");
    EXPECT_FALSE(quiet.isDebugWanted());
    EXPECT_EQ(logLines(), Texts{"failed"});
    ::setenv("MORVEL_LOG", "debug", 1);
    MacLog talkative;
    ::unsetenv("MORVEL_LOG");
    talkative.debug(std::string_view("decided, and more").substr(0, 7));
    EXPECT_TRUE(talkative.isDebugWanted());
    EXPECT_EQ(logLines().back(), "decided") << "a view need not end where its text does";
}

TEST_F(MainLoopOfTheMac, AQueueRunsItsWorkInOrderAndNothingOnceItIsGone) {
    auto queue = std::make_unique<DispatchQueue>("test");
    queue->run([&] {
        EXPECT_FALSE(dispatch().isOnMain());
        note("first");
    });
    queue->run([] { throw std::runtime_error("broken"); });
    queue->run([&] { note("second"); });
    dispatch().runPending();
    EXPECT_EQ(notes(), (Texts{"0 first", "0 second"}));
    EXPECT_EQ(takenKinds(), std::vector{FaultKind::EscapedException});

    const auto carried = std::make_shared<int>(0);
    queue->run([&, carried] { note("too late"); });
    queue.reset();
    dispatch().runPending();
    EXPECT_TRUE(notes().empty());
    EXPECT_EQ(carried.use_count(), 1);
}

}  // namespace
}  // namespace morvel::mac::checked
