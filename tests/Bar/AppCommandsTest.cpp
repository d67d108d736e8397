// Quitting other applications: politely, then not, and never the wrong one.
#include <gtest/gtest.h>

#include "Bar/ButtonWorld.h"

namespace morvel {
namespace {

using namespace std::chrono_literals;
using Calls = std::vector<std::string>;

constexpr ProcessID kMail{10};

TEST(AppCommands, ForcesOnlyWhatStillRunsAfterItsTime) {
    sim::ButtonWorld world;
    world.workspace.running[kMail] = 1;
    world.commands.quit(kMail);
    world.loop.advance(2499ms);
    EXPECT_EQ(world.workspace.calls, Calls{"terminate 10"});
    world.loop.advance(1ms);
    EXPECT_EQ(world.workspace.calls, (Calls{"terminate 10", "force 10"}));
    world.loop.advance(10s);
    EXPECT_EQ(world.workspace.calls.size(), 2u) << "once is enough";
    EXPECT_EQ(world.loop.armedTimers(), 0u);
}

TEST(AppCommands, LeavesWhatQuitByItselfAlone) {
    sim::ButtonWorld world;
    world.workspace.running[kMail] = 1;
    world.commands.quit(kMail);
    world.loop.advance(1s);
    world.workspace.running.erase(kMail);
    world.loop.advance(1s);
    world.workspace.running[kMail] = 2;  // another process got the number
    world.loop.advance(5s);
    EXPECT_EQ(world.workspace.calls, Calls{"terminate 10"});
    world.commands.quit(ProcessID{11});
    EXPECT_EQ(world.workspace.calls, Calls{"terminate 10"}) << "there is nobody to ask";
}

TEST(AppCommands, AskingAgainDoesNotPostponeTheEnd) {
    sim::ButtonWorld world;
    world.workspace.running[kMail] = 1;
    world.commands.quit(kMail);
    world.loop.advance(2s);
    world.commands.quit(kMail);
    world.loop.advance(500ms);
    EXPECT_EQ(world.workspace.calls, (Calls{"terminate 10", "terminate 10", "force 10"}));
    world.workspace.running.erase(kMail);
    world.loop.advance(5s);
    EXPECT_EQ(world.workspace.calls.size(), 3u);
}

TEST(AppCommands, ShowsWhatCanBeLocated) {
    sim::ButtonWorld world;
    world.commands.showInFinder("mail");
    world.commands.showInFinder("gone");
    world.commands.showInFinder(std::nullopt);
    EXPECT_EQ(world.workspace.calls, Calls{"reveal /Applications/mail"});
}

}  // namespace
}  // namespace morvel
