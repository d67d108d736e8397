// A person hears music: what the bars show of it and what their controls do, whatever the players answer.
#include "App/BarDesktop.h"
#include "Bar/Pinned/PinnedAppButton.h"
#include "Launcher/StartButton.h"
#include "NowPlaying/NowPlayingPopoverContentView.h"

namespace morvel {
namespace {

constexpr const char* kSpotifyID = "com.spotify.client";
constexpr const char* kMusicID = "com.apple.Music";
constexpr const char* kMusicPlaying = "playing||Blue||Ann";

class NowPlaying : public ::testing::Test {
protected:
    NowPlaying() { desktop.launch("Music", {.bundleID = kMusicID}).open({.title = "Library"}); }

    bool isBadged(const std::string& label, size_t screen = 0) { return desktop.button(label, screen).isNowPlaying(); }
    /// Rests on the button for as long as it takes.
    void hover(ui::View& button) {
        desktop.toolkit().moveTo(button);
        desktop.run(500ms);
    }
    NowPlayingPopoverContentView* controls() {
        const auto found = desktop.listed<NowPlayingPopoverContentView>();
        return found.empty() ? nullptr : found.front();
    }

    BarDesktop desktop{sim::twoDisplays()};
};

TEST_F(NowPlaying, ThePlayersButtonsAreBadgedOnEveryBar) {
    desktop.launch("Spotify", {.bundleID = kSpotifyID}).open({.x = 1500, .title = "Radio"});
    desktop.players().answers["Music"] = kMusicPlaying;
    desktop.startMorvel();
    EXPECT_TRUE(isBadged("Library"));
    EXPECT_FALSE(isBadged("Radio", 1));

    desktop.players().answers["Spotify"] = "playing||Red||Bob";
    desktop.run(2s);
    EXPECT_TRUE(isBadged("Radio", 1)) << "of two that play, Spotify";
    EXPECT_FALSE(isBadged("Library"));

    desktop.app(ProcessID{101})->open({.x = 200, .title = "Second"});
    desktop.players().answers["Spotify"] = "paused||Red||Bob";
    desktop.run(2s);
    EXPECT_TRUE(isBadged("Library") && isBadged("Second")) << "each of its windows, also those that are new";

    desktop.settings().groupingMode.set(RunningZoneLayout::Mode::Always);
    EXPECT_TRUE(desktop.group("Music").isNowPlaying());
}

TEST_F(NowPlaying, TheControlsFollowTheTrackAndSendCommands) {
    desktop.players().answers["Music"] = kMusicPlaying;
    desktop.startMorvel();
    hover(desktop.button("Library"));
    ASSERT_TRUE(controls());
    EXPECT_EQ(desktop.toolkit().shownPopover()->edge, ui::Edge::Top) << "above the bar at the bottom";
    EXPECT_EQ(controls()->titleLabel().text(), "Blue");
    EXPECT_EQ(controls()->artistLabel().text(), "Ann");
    EXPECT_EQ(controls()->toggleButton().accessibilityLabel(), "Pause");
    EXPECT_TRUE(sim::imageName(controls()->artworkView().image()).find(kMusicID) != std::string::npos);

    desktop.players().onCommand = [&](const std::string&) { desktop.players().answers["Music"] = "paused||Green||"; };
    desktop.click(controls()->nextButton());
    EXPECT_EQ(desktop.players().commands, std::vector<std::string>{"tell application \"Music\" to next track"});
    EXPECT_EQ(controls()->titleLabel().text(), "Green") << "without waiting for the next turn";
    EXPECT_EQ(controls()->toggleButton().accessibilityLabel(), "Play");
    desktop.click(controls()->toggleButton());
    desktop.click(controls()->prevButton());
    EXPECT_EQ(desktop.players().commands.back(), "tell application \"Music\" to previous track");

    desktop.players().answers["Music"] = "paused||||";
    desktop.run(2s);
    EXPECT_EQ(controls()->titleLabel().text(), kMusicID) << "a track without a name";
    desktop.players().answers["Music"] = "";
    desktop.run(2s);
    EXPECT_FALSE(desktop.toolkit().shownPopover()) << "stopped";
    EXPECT_FALSE(isBadged("Library"));
}

TEST_F(NowPlaying, AnyPressElsewhereClosesTheControls) {
    desktop.launch("Editor").open({.title = "Draft"});
    desktop.defaults().set("showStartButton", {true});
    desktop.players().answers["Music"] = kMusicPlaying;
    desktop.startMorvel();
    desktop.rightClick(desktop.button("Draft"));
    desktop.choose({"Pin App to Morvel"});
    const auto elsewhere =
        std::vector<std::function<void()>>{[&] { desktop.toolkit().pressOutside(); },
                                           [&] { desktop.click(desktop.button("Draft")); },
                                           [&] { desktop.click(desktop.button("Library")); },
                                           [&] { desktop.click(desktop.bar()); },
                                           [&] { desktop.click(desktop.bar(1)); },
                                           [&] { desktop.toolkit().rightClick(desktop.bar()); },
                                           [&] { desktop.click(*desktop.all<StartButton>(desktop.bar()).at(0)); },
                                           [&] { desktop.click(*desktop.all<PinnedAppButton>(desktop.bar()).at(0)); },
                                           [&] { desktop.settings().nowPlayingEnabled.set(false); }};
    for (const auto& press : elsewhere) {
        desktop.toolkit().leave();
        hover(desktop.button("Library"));
        ASSERT_TRUE(controls());
        press();
        EXPECT_FALSE(controls());
        desktop.toolkit().pressOutside();
    }
    desktop.run(10s);
    EXPECT_FALSE(isBadged("Library")) << "switched off";
    const auto asked = desktop.players().queries["Music"];
    desktop.settings().nowPlayingEnabled.set(true);
    EXPECT_TRUE(isBadged("Library"));
    EXPECT_EQ(desktop.players().queries["Music"], asked + 1);
}

TEST_F(NowPlaying, TheControlsGoWithTheirButton) {
    auto& second = desktop.app(ProcessID{101})->open({.x = 200, .title = "Second"});
    desktop.players().answers["Music"] = kMusicPlaying;
    desktop.startMorvel();
    hover(desktop.button("Second"));
    hover(desktop.button("Library"));
    ASSERT_TRUE(controls());
    second.close();
    EXPECT_TRUE(controls()) << "they have moved away from it";
    desktop.settings().groupingMode.set(RunningZoneLayout::Mode::Always);
    EXPECT_FALSE(controls());
}

TEST_F(NowPlaying, PlayersThatHangFailOrLieCostNothing) {
    desktop.players().answers["Music"] = kMusicPlaying;
    desktop.startMorvel();
    ASSERT_TRUE(isBadged("Library"));
    EXPECT_EQ(desktop.players().queries.count("Spotify"), 0U) << "a script would start it";

    desktop.workQueues().hold();
    desktop.run(60s);
    EXPECT_TRUE(isBadged("Library")) << "nothing is concluded from silence";
    const int asked = desktop.players().queries["Music"];
    desktop.workQueues().letGo();
    desktop.settle();
    EXPECT_EQ(desktop.players().queries["Music"], asked + 1) << "turns are skipped, not queued";

    for (const auto& lie : std::vector<std::optional<std::string>>{std::nullopt, "||", "a||b||c||d", "playing"}) {
        desktop.players().answers["Music"] = kMusicPlaying;
        desktop.run(2s);
        ASSERT_TRUE(isBadged("Library"));
        desktop.players().answers["Music"] = lie;
        desktop.run(2s);
        EXPECT_FALSE(isBadged("Library")) << lie.value_or("no answer");
    }
    desktop.workQueues().hold();
    desktop.run(2s);
    desktop.quitMorvel();  // with a script on its way
    desktop.workQueues().letGo();
    desktop.settle();
}

TEST_F(NowPlaying, WhoeverSwitchedItOffIsNotAsked) {
    desktop.defaults().set("nowPlayingEnabled", {false});
    desktop.players().answers["Music"] = kMusicPlaying;
    desktop.startMorvel();
    desktop.run(10s);
    EXPECT_TRUE(desktop.players().queries.empty());
}

}  // namespace
}  // namespace morvel
