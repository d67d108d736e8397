// A media player of the system, as it comes: shown on its window's button and controlled from there.
#include <gdk-pixbuf/gdk-pixbuf.h>

#include <filesystem>
#include <fstream>

#include "BarTest.h"
#include "SessionBus.h"

namespace morvel::e2e {
namespace {

constexpr const char* kPlugin = "/usr/lib/mpv-mpris/mpris.so";
constexpr const char* kDefaults =
    R"({"groupingMode": "never", "updaterAutoCheckEnabled": false, "showStartButton": true})";
constexpr Rgb kCoverColor{200, 40, 120};

/// A part of a RIFF file.
std::string chunk(const std::string& name, std::string data) {
    if (data.size() % 2 == 1) data += '\0';
    const auto size = static_cast<uint32_t>(data.size());
    return name + std::string(reinterpret_cast<const char*>(&size), 4) + data;
}

/// A minute of silence with a title and an artist.
std::string song(const std::string& title, const std::string& artist) {
    constexpr uint32_t kRate = 8000;
    struct {
        uint16_t format = 1, channels = 1;
        uint32_t rate = kRate, bytesPerSecond = kRate;
        uint16_t frameSize = 1, bits = 8;
    } format;
    return chunk("RIFF", "WAVE" + chunk("fmt ", {reinterpret_cast<const char*>(&format), sizeof format}) +
                             chunk("LIST", "INFO" + chunk("INAM", title + '\0') + chunk("IART", artist + '\0')) +
                             chunk("data", std::string(60 * kRate, '\x80')));
}

class RealPlayer : public BarTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(std::filesystem::exists(kPlugin)) << "the packages of tools/packages.txt are missing";
        session.emplace(world);
        const auto folder = world.server.home() / "music";
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "1.wav", std::ios::binary) << song("First Song", "A Band");
        std::ofstream(folder / "2.wav", std::ios::binary) << song("Second Song", "Another Band");
        GdkPixbuf* const cover = gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, 300, 300);
        gdk_pixbuf_fill(cover, 0xC82878FF);
        gdk_pixbuf_save(cover, (folder / "cover.png").c_str(), "png", nullptr, nullptr);
        g_object_unref(cover);

        Environment environment = world.server.environment();
        environment["DBUS_SESSION_BUS_ADDRESS"] = session->address();
        player.emplace(std::vector<std::string>{"mpv", "--no-config", std::string("--script=") + kPlugin, "--ao=null",
                                                "--vo=x11", "--force-window", "--geometry=300x200", "--title=My Player",
                                                "--audio-display=no", folder / "1.wav", folder / "2.wav"},
                       environment);
        startBar({.defaults = kDefaults, .environment = {{"DBUS_SESSION_BUS_ADDRESS", session->address()}}});
        ASSERT_TRUE(showsButton("My Player"));
    }
    testing::AssertionResult controlsShow(const std::string& text) {
        return eventually([&] { return bar->popupItem(text).has_value(); }) << ": " << text;
    }
    void hoverButton() {
        pointer.moveTo({600, 200});
        pointer.moveTo(bar->button("My Player")->frame.center());
    }

    std::optional<SessionBus> session;
    std::optional<Program> player;
};

TEST_F(RealPlayer, IsBadgedShownAndControlled) {
    ASSERT_TRUE(eventually([&] { return bar->panelItem("Now Playing").has_value(); }));
    hoverButton();
    ASSERT_TRUE(controlsShow("First Song"));
    EXPECT_TRUE(controlsShow("A Band"));
    const Box title = popupItem("First Song");
    const Box art{title.x - 40 + 8, title.y + 8, 16, 16};
    EXPECT_TRUE(eventually([&] { return world.shoot().average(art) == kCoverColor; })) << "the cover beside the file";
    EXPECT_GT(world.shoot().average({title.x - 40, title.y, 1, 1}).distance(kCoverColor), 20)
        << "its corners are round";

    pointer.click(popupItem("Pause").center());
    EXPECT_TRUE(controlsShow("Play"));
    EXPECT_TRUE(bar->panelItem("Now Playing")) << "paused is not gone";
    pointer.click(popupItem("Next").center());
    EXPECT_TRUE(controlsShow("Second Song"));
    EXPECT_TRUE(controlsShow("Another Band"));
    pointer.click(popupItem("Play").center());
    EXPECT_TRUE(controlsShow("Pause"));

    pointer.click(bar->panelItem("Apps")->frame.center());
    EXPECT_TRUE(eventually([&] { return !bar->popupItem("Pause"); })) << "another button of the bar was pressed";
    player->terminate();
    EXPECT_TRUE(eventually([&] { return !bar->panelItem("Now Playing"); }));
}

}  // namespace
}  // namespace morvel::e2e
