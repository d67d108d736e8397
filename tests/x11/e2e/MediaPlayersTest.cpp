// Media players of the session: the badge on their buttons, the controls, and players that mean no good.
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "../Loopback.h"
#include "BarTest.h"
#include "FakePlayer.h"

namespace morvel::e2e {
namespace {

constexpr const char* kBadge = "Now Playing";
constexpr const char* kDefaults = R"({"groupingMode": "never", "updaterAutoCheckEnabled": false})";

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

class MediaPlayers : public BarTest {
protected:
    void SetUp() override {
        session.emplace(world);
        const auto folder = world.server.home() / ".local/share/applications";
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "tunes.desktop") << "[Desktop Entry]\nType=Application\nName=Tunes\nExec=true\n";
    }

    void startBarAndPlayersWindow() {
        puppet.emplace(runPuppet("tunes", {"My Library"}));
        startBar({.defaults = kDefaults, .environment = {{"DBUS_SESSION_BUS_ADDRESS", session->address()}}});
        ASSERT_TRUE(showsButton("My Library"));
    }
    testing::AssertionResult isBadged() {
        return eventually([&] { return bar->panelItem(kBadge).has_value(); }) << ": the badge";
    }
    testing::AssertionResult losesBadge() {
        return eventually([&] { return !bar->panelItem(kBadge); }) << ": the badge goes";
    }
    testing::AssertionResult controlsShow(const std::string& text) {
        return eventually([&] { return bar->popupItem(text).has_value(); }) << ": " << text;
    }
    void hoverButton() {
        pointer.moveTo({600, 200});
        pointer.moveTo(bar->button("My Library")->frame.center());
    }

    std::optional<SessionBus> session;
    std::optional<Program> puppet;
};

TEST_F(MediaPlayers, AreBadgedShownAndControlled) {
    startBarAndPlayersWindow();
    FakePlayer player(*session, "tunes.instance7");
    player.setRoot("DesktopEntry", g_variant_new_string("tunes"));
    const auto cover = world.server.home() / "cover 1.ppm";
    std::ofstream(cover) << "P3 1 1 255\n250 0 0\n";
    player.play("A Song", "A Band", "file://" + (world.server.home() / "cover%201.ppm").string());
    ASSERT_TRUE(isBadged());
    hoverButton();
    ASSERT_TRUE(controlsShow("A Song"));
    EXPECT_TRUE(controlsShow("A Band"));
    const Box title = popupItem("A Song");
    EXPECT_LT(title.bottom(), panelBox().y) << "above the bar";
    const Box art{title.x - 40 + 8, title.y + 8, 16, 16};
    EXPECT_TRUE(eventually([&] { return world.shoot().average(art) == Rgb{250, 0, 0}; })) << "the cover";

    pointer.click(popupItem("Next").center());
    pointer.click(popupItem("Pause").center());
    EXPECT_TRUE(eventually([&] { return player.calls() == std::vector<std::string>{"Next", "PlayPause"}; }));
    player.play("Another Song", "A Band");
    EXPECT_TRUE(controlsShow("Another Song"));
    player.set("PlaybackStatus", g_variant_new_string("Paused"));
    EXPECT_TRUE(controlsShow("Play"));
    EXPECT_TRUE(isBadged());
    player.set("PlaybackStatus", g_variant_new_string("Stopped"));
    EXPECT_TRUE(losesBadge());
    EXPECT_TRUE(eventually([&] { return bar->popups().empty(); }));
}

TEST_F(MediaPlayers, ComeAndGoAndTakeTheBusWithThem) {
    startBarAndPlayersWindow();
    std::optional<FakePlayer> player(std::in_place, *session, "tunes");
    player->play("A Song", "A Band");
    ASSERT_TRUE(isBadged()) << "known by its name on the bus";
    pointer.moveTo({640, 300});
    desktop.runFor(2500ms);
    const long before = bar->program().voluntarySwitches();
    desktop.runFor(3000ms);
    EXPECT_LE(bar->program().voluntarySwitches() - before, 6) << "something polls";
    player.reset();
    EXPECT_TRUE(losesBadge());
    player.emplace(*session, "tunes");
    player->play("A Song", "A Band");
    ASSERT_TRUE(isBadged());
    hoverButton();
    ASSERT_TRUE(controlsShow("A Song"));
    session->kill();
    EXPECT_TRUE(losesBadge());
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
    ASSERT_TRUE(isBadged());
    hoverButton();
    ASSERT_TRUE(controlsShow("Pause"));
    const UnaskedServer server;
    for (const std::string& url : {server.address(), std::string("https://example.org/cover.png"),
                                   std::string("file://example.org/etc/passwd"), std::string("file:///dev/zero"),
                                   std::string("file:///proc/kcore"), std::string("../cover.png")})
        loud.play("Title || with separators", "\u202eodd\n", url);
    EXPECT_TRUE(controlsShow("Title || with separators"));
    for (int i = 0; i < 2000; ++i) loud.play("Track " + std::to_string(i), "Flood");
    EXPECT_TRUE(controlsShow("Track 1999"));
    pointer.click(popupItem("Next").center());
    EXPECT_TRUE(eventually([&] { return loud.calls() == std::vector<std::string>{"Next"}; }));
    EXPECT_FALSE(server.wasAsked()) << "pictures of other computers are not fetched";
}

}  // namespace
}  // namespace morvel::e2e
