// Media players of the session: the badge on their buttons, the controls, and players that mean no good.
#include <gdk-pixbuf/gdk-pixbuf.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "../Loopback.h"
#include "BarTest.h"
#include "FakePlayer.h"

namespace morvel::e2e {
namespace {

constexpr const char* kBadge = "Now Playing";

/// A web server on this machine that nobody is to ask.
class UnaskedServer {
public:
    UnaskedServer() = default;
    ~UnaskedServer() { ::close(socket_); }
    UnaskedServer(const UnaskedServer&) = delete;
    UnaskedServer& operator=(const UnaskedServer&) = delete;

    std::string address() const { return "http://127.0.0.1:" + std::to_string(port_) + "/cover.png"; }
    bool wasAsked() const { return ::accept(socket_, nullptr, nullptr) >= 0; }

private:
    const int socket_ = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const int port_ = listenOnLoopback(socket_);
};

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

class MediaPlayers : public BarTest {
protected:
    /// Starts the bar on the players' bus, beside the window with this title.
    void startBarBeside(const std::string& title) {
        window = title;
        startBar({.defaults = R"({"groupingMode": "never", "updaterAutoCheckEnabled": false})",
                  .environment = {{"DBUS_SESSION_BUS_ADDRESS", session->address()}}});
        ASSERT_TRUE(showsButton(title));
    }
    void startBarAndPlayersWindow() {
        install("tunes", "true");
        puppet.emplace(runPuppet("tunes", {"My Library"}));
        startBarBeside("My Library");
    }
    void hoverButton() {
        pointer.moveTo({600, 200});
        pointer.moveTo(bar->button(window).value_or(BarView{}).frame.center());
    }

    std::optional<SessionBus> session{std::in_place, world};
    std::optional<Program> puppet;
    std::string window;
};

TEST_F(MediaPlayers, OfTheSystemAreBadgedShownAndControlled) {
    constexpr const char* kPlugin = "/usr/lib/mpv-mpris/mpris.so";
    ASSERT_TRUE(std::filesystem::exists(kPlugin)) << "the packages of tools/packages.txt are missing";
    constexpr Rgb kCoverColor{200, 40, 120};
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
    Program player(
        {"mpv", "--no-config", std::string("--script=") + kPlugin, "--ao=null", "--vo=x11", "--force-window",
         "--geometry=300x200", "--title=My Player", "--audio-display=no", folder / "1.wav", folder / "2.wav"},
        environment);
    startBarBeside("My Player");
    ASSERT_TRUE(showsOnPanel(kBadge));
    hoverButton();
    ASSERT_TRUE(showsInPopup("First Song"));
    EXPECT_TRUE(showsInPopup("A Band"));
    const Box title = popupItem("First Song");
    EXPECT_LT(title.bottom(), panelBox().y) << "above the bar";
    const Box art{title.x - 40 + 8, title.y + 8, 16, 16};
    EXPECT_TRUE(eventually([&] { return world.shoot().average(art) == kCoverColor; })) << "the cover beside the file";
    EXPECT_GT(world.shoot().average({title.x - 40, title.y, 1, 1}).distance(kCoverColor), 20)
        << "its corners are round";

    pick("Pause");
    EXPECT_TRUE(showsInPopup("Play"));
    EXPECT_TRUE(bar->panelItem(kBadge)) << "paused is not gone";
    pick("Next");
    EXPECT_TRUE(showsInPopup("Second Song"));
    EXPECT_TRUE(showsInPopup("Another Band"));
    pick("Play");
    EXPECT_TRUE(showsInPopup("Pause"));
    pointer.click(bar->panelItem("Apps")->frame.center());
    EXPECT_TRUE(eventually([&] { return !bar->popupItem("Pause"); })) << "another button of the bar was pressed";
    player.terminate();
    EXPECT_TRUE(lacksOnPanel(kBadge));
}

TEST_F(MediaPlayers, ComeAndGoAndTakeTheBusWithThem) {
    startBarAndPlayersWindow();
    std::optional<FakePlayer> player(std::in_place, *session, "tunes.instance7");
    player->play("A Song", "A Band");
    ASSERT_TRUE(showsOnPanel(kBadge)) << "known by its name on the bus";
    pointer.moveTo({640, 300});
    desktop.runFor(2500ms);
    const long before = bar->program().voluntarySwitches();
    desktop.runFor(3000ms);
    EXPECT_LE(bar->program().voluntarySwitches() - before, 6) << "something polls";

    hoverButton();
    ASSERT_TRUE(showsInPopup("A Song"));
    player->play("Another Song", "A Band");
    EXPECT_TRUE(showsInPopup("Another Song"));
    player->set("PlaybackStatus", g_variant_new_string("Stopped"));
    EXPECT_TRUE(lacksOnPanel(kBadge));
    EXPECT_TRUE(closesPopups());
    player->play("Another Song", "A Band");
    ASSERT_TRUE(showsOnPanel(kBadge));
    player.reset();
    EXPECT_TRUE(lacksOnPanel(kBadge));

    player.emplace(*session, "tunes");
    player->play("A Song", "A Band");
    ASSERT_TRUE(showsOnPanel(kBadge));
    hoverButton();
    ASSERT_TRUE(showsInPopup("A Song"));
    session->kill();
    EXPECT_TRUE(lacksOnPanel(kBadge));
    client.openAndWait({.title = "After the bus"});
    EXPECT_TRUE(showsButton("After the bus"));
}

TEST_F(MediaPlayers, ThatAreHostileStayWithoutEffect) {
    FakePlayer silent(*session, "tunes", FakePlayer::Manner::IsSilent);
    FakePlayer liar(*session, "liar");
    liar.setRoot("DesktopEntry", g_variant_new_uint32(7));
    liar.set("PlaybackStatus", g_variant_new_strv(nullptr, 0));
    liar.set("Metadata", g_variant_new_string("no track"));
    FakePlayer loud(*session, "loud");
    loud.setRoot("DesktopEntry", g_variant_new_string("tunes"));
    startBarAndPlayersWindow();
    EXPECT_FALSE(bar->panelItem(kBadge));

    const auto pipe = world.server.home() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string huge(10 << 20, 'x');
    loud.play(huge, huge, "file://" + pipe.string());
    ASSERT_TRUE(showsOnPanel(kBadge));
    hoverButton();
    ASSERT_TRUE(showsInPopup("Pause"));
    const UnaskedServer server;
    for (const std::string& url :
         std::vector<std::string>{server.address(), "https://example.org/cover.png", "file://example.org/etc/passwd",
                                  "file:///dev/zero", "file:///proc/kcore", "../cover.png"})
        loud.play("Title || with separators", "\u202eodd\n", url);
    EXPECT_TRUE(showsInPopup("Title || with separators"));
    for (int i = 0; i < 2000; ++i) loud.play("Track " + std::to_string(i), "Flood");
    EXPECT_TRUE(showsInPopup("Track 1999"));
    for (const char* button : {"Next", "Pause"}) pick(button);
    EXPECT_TRUE(eventually([&] { return loud.calls() == std::vector<std::string>{"Next", "PlayPause"}; }));
    EXPECT_FALSE(server.wasAsked()) << "pictures of other computers are not fetched";
}

}  // namespace
}  // namespace morvel::e2e
