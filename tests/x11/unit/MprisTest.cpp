// What players say, and which of them is shown.
#include <gtest/gtest.h>

#include "Platform/Linux/NowPlaying/MprisValues.h"
#include "Platform/Linux/NowPlaying/PlayerChoice.h"
#include "Platform/Linux/System/BusCalls.h"

namespace morvel::x11 {
namespace {

/// From the text form of a dictionary "a{sv}".
MprisValues valuesOf(const std::string& text, MprisValues values = {}) {
    const Variant properties(g_variant_parse(G_VARIANT_TYPE_VARDICT, text.c_str(), nullptr, nullptr, nullptr));
    EXPECT_TRUE(properties) << text;
    if (properties) readProperties(properties.get(), values);
    return values;
}

TEST(MprisValues, TakeWhatIsKnownAndOfTheRightType) {
    const auto song = valuesOf(R"({'PlaybackStatus': <'Playing'>, 'Rate': <1.0>, 'Metadata': <{'xesam:title': <'T'>,
        'xesam:artist': <['A', 'B']>, 'mpris:artUrl': <'file:///tmp/a%20b.png'>, 'mpris:length': <int64 5>}>})");
    EXPECT_EQ(song, (MprisValues{"", "", PlaybackStatus::Playing, "T", "A, B", "/tmp/a b.png"}));
    EXPECT_EQ(valuesOf("{'PlaybackStatus': <'Paused'>}", song).title, "T") << "what is not said stays";
    EXPECT_EQ(valuesOf("{'Metadata': <{'xesam:artist': <'Solo'>}>}", song),
              (MprisValues{"", "", PlaybackStatus::Playing, "", "Solo", ""}))
        << "a new track has nothing of the former one";
    EXPECT_EQ(valuesOf("{'PlaybackStatus': <3>, 'Metadata': <'x'>, 'DesktopEntry': <uint32 1>}", song), MprisValues{});
    EXPECT_EQ(valuesOf("{'Metadata': <{'xesam:title': <['T']>, 'xesam:artist': <[1]>, 'mpris:artUrl': <1>}>}"),
              MprisValues{});
    for (const char* url : {"https://h/a.png", "file://h/a.png", "a.png", "file:///a%00b", "FILE:", ""})
        EXPECT_EQ(valuesOf(std::string("{'Metadata': <{'mpris:artUrl': <'") + url + "'>}>}").artPath, "") << url;
}

TEST(MprisValues, LongTextsAreCutBetweenCharacters) {
    std::string umlauts = "x";
    while (umlauts.size() < 5000) umlauts += "\u00e4";
    const auto cut = valuesOf("{'Metadata': <{'xesam:title': <'" + umlauts + "'>, 'xesam:artist': <['" + umlauts +
                              "', '" + umlauts + "']>}>}");
    for (const std::string& text : {cut.title, cut.artist}) {
        EXPECT_TRUE(text.size() == 511 || text.size() == 512) << text.size();
        EXPECT_TRUE(g_utf8_validate(text.c_str(), -1, nullptr));
    }
}

const std::vector<RunningApplication> kApplications = {
    {.pid = ProcessID{10}, .bundleID = std::nullopt, .localizedName = "bare"},
    {.pid = ProcessID{11}, .bundleID = "org.videolan.VLC", .localizedName = "VLC media player"},
    {.pid = ProcessID{12}, .bundleID = "browser", .localizedName = "Browser"}};

TEST(PlayerChoice, FindsThePlayersApplication) {
    struct Row {
        const char* why;
        const char* busName;
        int pid;
        const char* desktopEntry;
        const char* identity;
        std::optional<std::string> application;
    };
    for (const Row& row :
         {Row{"process", "org.mpris.MediaPlayer2.x", 12, "org.videolan.VLC", "", "browser"},
          Row{"entry", "org.mpris.MediaPlayer2.browser", 99, "ORG.videolan.vlc", "", "org.videolan.VLC"},
          Row{"bus name", "org.mpris.MediaPlayer2.vlc.instance9", 0, "", "", "org.videolan.VLC"},
          Row{"name", "org.mpris.MediaPlayer2.x", 0, "", "vlc media player", "org.videolan.VLC"},
          Row{"without buttons of its own", "org.mpris.MediaPlayer2.x", 10, "", "bare", std::nullopt},
          Row{"nothing fits", "", 0, "", "", std::nullopt}}) {
        MprisValues values;
        values.desktopEntry = row.desktopEntry;
        values.identity = row.identity;
        EXPECT_EQ(applicationOf({row.busName, ProcessID{row.pid}, values}, kApplications), row.application) << row.why;
    }
}

TEST(PlayerChoice, PrefersWhoPlaysAndThenWhoBeganLast) {
    const auto with = [](PlaybackStatus status) {
        MprisValues values;
        values.status = status;
        return values;
    };
    const MprisValues playing = with(PlaybackStatus::Playing), paused = with(PlaybackStatus::Paused),
                      stopped = with(PlaybackStatus::Stopped);
    const auto chosen = [](const std::vector<KnownPlayer>& players) -> std::optional<size_t> {
        const auto choice = chooseKnownPlayer(players, kApplications);
        return choice ? std::optional(choice->index) : std::nullopt;
    };
    const ProcessID vlc{11}, browser{12}, unknown{99};
    EXPECT_EQ(chosen({{"", vlc, paused, 9}, {"", browser, playing, 1}}), 1U);
    EXPECT_EQ(chosen({{"", vlc, playing, 9}, {"", browser, playing, 1}}), 0U);
    EXPECT_EQ(chosen({{"", vlc, paused, 1}, {"", browser, paused, 9}}), 1U);
    EXPECT_EQ(chosen({{"", vlc, stopped, 9}, {"", browser, paused, 1}}), 1U);
    EXPECT_EQ(chosen({{"", vlc, paused, 1}, {"", unknown, playing, 9}}), 0U) << "it has no button to badge";
    EXPECT_EQ(chosen({{"", vlc, stopped, 1}}), std::nullopt);
}

}  // namespace
}  // namespace morvel::x11
