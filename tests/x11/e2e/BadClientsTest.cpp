// Clients that lie, flood and vanish, and a defaults file that is none: the bar stays up and keeps answering.
#include "BarTest.h"

namespace morvel::e2e {
namespace {

class BadClients : public BarTest {
protected:
    /// Whether a new window still gets its button, and a click still reaches it.
    void expectAlive() {
        const auto window = client.openAndWait({.title = "Sign of life", .box = {700, 400, 200, 150}});
        ASSERT_TRUE(showsButton("Sign of life"));
        ASSERT_TRUE(becomesActive(window));
        clickButton("Sign of life");
        EXPECT_TRUE(becomesMinimized(window));
        client.destroy(window);
        EXPECT_TRUE(lacksButton("Sign of life"));
    }
};

TEST_F(BadClients, TitlesOfAllSorts) {
    startBar({.defaults = kNeverGrouped});
    const auto window = client.openAndWait({.title = "Fine", .className = "Titled"});
    ASSERT_TRUE(showsButton("Fine"));
    const std::vector<std::string> titles{"",
                                          std::string(1 << 20, 'x'),
                                          std::string(1 << 20, '\xF0'),
                                          "\xFF\xFE\xC0\x80 broken \xE2\x82",
                                          std::string("zero\0inside", 11),
                                          "line\nbreak\ttab\x01\x1B[31m",
                                          "\u202Eright to left \u05D0\u05D1",
                                          std::string(4096, '\n')};
    for (const auto& title : titles) {
        client.setTitle(window, title);
        client.setTitle(window, "Fine");
        ASSERT_TRUE(showsButton("Fine"));
        client.setTitle(window, title);
        ASSERT_TRUE(lacksButton("Fine"));
        EXPECT_EQ(bar->buttonTitles().size(), 1U) << "the window lost its button";
    }
    client.setTitle(window, "");
    EXPECT_TRUE(eventually([&] { return bar->buttonTitles() != std::vector<std::string>{""}; }))
        << "an empty title is shown as the application's name";
    expectAlive();
}

TEST_F(BadClients, ProcessesTheyDoNotBelongTo) {
    auto other = world.run({"sleep", "1000"});
    const auto othersPid = static_cast<uint32_t>(other.pid());
    startBar({.defaults = kNeverGrouped});
    const std::vector<std::pair<std::string, std::optional<uint32_t>>> claims{
        {"Nobody's", 0}, {"Unsaid", std::nullopt},   {"Negative", 0xFFFFFFFF},
        {"Init's", 1},   {"No process's", 0x3FFFFF}, {"Another's", othersPid}};
    for (const auto& [title, pid] : claims) client.openAndWait({.title = title, .pid = pid});
    const auto changing = client.openAndWait({.title = "Changing"});
    for (const auto& [title, pid] : claims) EXPECT_TRUE(showsButton(title));
    EXPECT_TRUE(showsButton("Changing"));
    for (const uint32_t pid : {0U, 1U, 0xFFFFFFFFU, othersPid}) client.setPid(changing, pid);
    other.kill();
    EXPECT_TRUE(showsButton("Changing"));
    EXPECT_TRUE(showsButton("Another's")) << "its window is still there";
    expectAlive();
}

TEST_F(BadClients, WindowsThatVanishOrArePlacedAnywhere) {
    startBar({.defaults = kNeverGrouped});
    for (int i = 0; i < 200; ++i) {
        const auto window = client.open({.title = "Flash " + std::to_string(i)});
        if (i % 3 == 0) desktop.connection().sync();  // some are managed first, some are not
        client.setTitle(window, "Renamed");
        client.destroy(window);  // before it can be asked
    }
    expectAlive();
    EXPECT_TRUE(eventually([&] { return bar->buttonTitles().size() <= 1; })) << "buttons of windows that are gone";

    client.open({.title = "Huge", .box = {-30000, -30000, 65535, 65535}});
    client.open({.title = "Tiny", .box = {300, 300, 1, 1}});
    const auto far = client.open({.title = "Far", .box = {32000, 32000, 10, 10}});
    const auto jumpy = client.openAndWait({.title = "Jumpy"});
    for (int i = 0; i < 200; ++i) {
        desktop.place(jumpy, {i % 2 ? -20000 : 20000, i * 7, 1 + i * 50, 60000 - i});
        desktop.place(far, {i, i, 10, 10});
    }
    desktop.place(jumpy, {100, 100, 300, 200});
    EXPECT_TRUE(showsButton("Jumpy"));
    expectAlive();
}

TEST_F(BadClients, HundredsOfWindowsAtOnce) {
    startBar();
    constexpr size_t kMany = 500;
    std::vector<xcb_window_t> windows;
    for (size_t i = 0; i < kMany; ++i)
        windows.push_back(client.open({.title = "Flood " + std::to_string(i), .box = {100, 100, 120, 80}}));
    ASSERT_TRUE(desktop.waitUntil([&] { return desktop.clients().size() >= kMany; }, 60s)) << "the manager is too slow";
    ASSERT_TRUE(desktop.waitUntil([&] { return bar->panelItem("500").has_value(); }, 30s))
        << "no group of five hundred";
    for (const auto window : windows) client.setTitle(window, "Renamed");
    for (const auto window : windows) client.destroy(window);
    EXPECT_TRUE(desktop.waitUntil([&] { return !bar->panelItem("500"); }, 30s));
    expectAlive();
}

TEST_F(BadClients, AFrozenProgramStopsNobodyElse) {
    auto frozen = runPuppet("Frozen", {"Stuck"});
    startBar();
    ASSERT_TRUE(showsButton("Stuck"));
    frozen.freeze();
    clickButton("Stuck");
    pickFromMenu("Stuck", "Close Window");
    expectAlive();
    EXPECT_TRUE(showsButton("Stuck")) << "it did not close, so it is still there";
    frozen.thaw();
    EXPECT_TRUE(lacksButton("Stuck"));
}

TEST_F(BadClients, DefaultsThatMakeNoSenseReadAsDefaults) {
    client.openAndWait({.title = "Ordinary"});
    for (const Bar::Options& options : std::vector<Bar::Options>{
             {.defaults = "{\"barHeight\": 60, nonsense"},
             {.defaults = R"({"barHeight": "60", "groupingMode": 7, "barEdge": "sideways", "unknown": [null],
                             "windowBlacklist": {"a": 1}, "showStartButton": "yes"})"},
             {.environment = {{"HOME", "/proc/none"}, {"XDG_CONFIG_HOME", "/proc/none"}}}}) {
        startBar(options);
        EXPECT_TRUE(showsButton("Ordinary"));
        EXPECT_EQ(panelBox(), (Box{0, 800 - 44, 1280, 44})) << options.defaults;
        quitBar();
    }
}

}  // namespace
}  // namespace morvel::e2e
