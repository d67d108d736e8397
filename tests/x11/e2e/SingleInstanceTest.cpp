// A second bar on the same display would reserve the same strip once more: it leaves, and the first one stays.
#include "BarTest.h"

namespace morvel::e2e {
namespace {

class SingleInstance : public BarTest {};

TEST_F(SingleInstance, IsStartedByTheSessionAndLeavesToTheFirstItsPlace) {
    const auto entry = world.server.configFolder() / "autostart/morvel.desktop";
    startBar();
    EXPECT_TRUE(eventually([&] { return std::filesystem::exists(entry); }));
    Program second = world.run({MORVEL_PROGRAM});
    EXPECT_EQ(second.waitForExit(), 0);
    EXPECT_EQ(bar->panels().size(), 1U);
    awaitWindow(kSettings);  // what starting it again is good for
    bar->program().kill();
    EXPECT_TRUE(eventually([&] { return bar->panels().empty(); })) << "or it would be taken for the next one's";
    startBar({.defaults = R"({"startAtLogin": false})"});
    EXPECT_EQ(bar->panels().size(), 1U) << "a crash leaves nothing behind that is in the way";
    EXPECT_TRUE(eventually([&] { return !std::filesystem::exists(entry); }));
}

}  // namespace
}  // namespace morvel::e2e
