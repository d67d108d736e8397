// The bar as a person with a screen reader meets it, and that nobody else pays for that.
#include <fstream>

#include "Assistant.h"
#include "BarTest.h"

namespace morvel::e2e {
namespace {

constexpr const char* kBar = "Morvel";
constexpr const char* kButton = "push button";
constexpr const char* kSettings = "Morvel Settings";

class ScreenReader : public BarTest {
protected:
    void SetUp() override {
        session.emplace(world);
        if (!session->hasAccessibility()) GTEST_SKIP() << "the accessibility service (at-spi2-core) is not installed";
    }

    void startAccessibleBar(const std::string& defaults = kNeverGrouped) {
        session->setAccessibilityEnabled(true);
        assistant.emplace(*session);
        startBar({.defaults = defaults, .environment = session->environment()});
    }

    std::optional<AccessibleObject> button(const std::string& name) { return assistant->find(kBar, kButton, name); }

    /// Waits for the object; one that answers nothing when it does not come.
    AccessibleObject awaitObject(const std::string& role, const std::string& name) {
        std::optional<AccessibleObject> found;
        EXPECT_TRUE(eventually([&] { return (found = assistant->find(kBar, role, name)).has_value(); })) << name;
        return found.value_or(AccessibleObject{"org.example.none", "/none"});
    }
    AccessibleObject awaitButton(const std::string& name) { return awaitObject(kButton, name); }

    xcb_window_t openSettings() {
        const Box panel = panelBox();
        pointer.rightClick({panel.right() - 40, panel.center().y});
        pointer.click(popupItem("Morvel Settings…").center());
        std::optional<xcb_window_t> window;
        EXPECT_TRUE(eventually([&] { return (window = desktop.windowTitled(kSettings)).has_value(); }));
        return window.value_or(XCB_NONE);
    }

    bool isLoaded(const std::string& library) {
        std::ifstream maps("/proc/" + std::to_string(bar->program().pid()) + "/maps");
        for (std::string line; std::getline(maps, line);)
            if (line.find(library) != std::string::npos) return true;
        return false;
    }

    std::optional<SessionBus> session;
    std::optional<Assistant> assistant;
};

TEST_F(ScreenReader, FindsButtonsByNameAndPressesThem) {
    const auto back = client.openAndWait({.title = "Back", .box = {200, 150, 320, 200}});
    const auto front = client.openAndWait({.title = "Front", .box = {220, 170, 320, 200}});
    startAccessibleBar();
    ASSERT_TRUE(becomesActive(front));
    const auto found = awaitButton("Back");
    const BarView view = bar->button("Back").value();
    EXPECT_EQ(assistant->extentsOf(found), view.frame);
    EXPECT_EQ(assistant->descriptionOf(found), view.tooltip);
    EXPECT_EQ(assistant->actionsOf(found), std::vector<std::string>{"press"});
    for (const unsigned state : {Assistant::kSensitive, Assistant::kShowing, Assistant::kVisible})
        EXPECT_TRUE(assistant->hasState(found, state)) << state;
    EXPECT_FALSE(assistant->hasState(found, Assistant::kFocusable)) << "the bar never takes the keyboard";
    EXPECT_TRUE(assistant->childrenOf(found).empty()) << "the title would be read twice";

    EXPECT_TRUE(assistant->press(found));
    EXPECT_TRUE(becomesActive(back));
    EXPECT_TRUE(eventually([&] { return desktop.isAbove(back, front); }));
    // The bar shows that it knows of the focus; before that a press raises the window once more.
    EXPECT_TRUE(eventually([&] { return blueness("Back") > blueness("Front") + 12; }));
    EXPECT_TRUE(assistant->press(found));
    EXPECT_TRUE(becomesMinimized(back)) << "a press does what a click does";
}

TEST_F(ScreenReader, SeesOneWindowPerPanel) {
    startAccessibleBar();
    ASSERT_TRUE(eventually([&] { return assistant->application(kBar).has_value(); }));
    const auto windows = assistant->childrenOf(*assistant->application(kBar));
    ASSERT_EQ(windows.size(), 1U);
    EXPECT_EQ(assistant->roleOf(windows[0]), "frame");
    EXPECT_EQ(assistant->extentsOf(windows[0]), panelBox());
}

TEST_F(ScreenReader, HearsOfTitlesThatChangeAndWindowsThatComeAndGo) {
    const auto window = client.openAndWait({.title = "Draft"});
    startAccessibleBar();
    const auto draft = awaitButton("Draft");
    assistant->forgetWhatWasHeard();

    client.setTitle(window, "Bad \xff title");
    EXPECT_TRUE(eventually([&] { return assistant->hasHeard(draft, "PropertyChange", "accessible-name"); }));
    EXPECT_EQ(assistant->nameOf(draft), "Bad \ufffd title");
    EXPECT_FALSE(assistant->hasHeard(draft, "ChildrenChanged", "add")) << "the button is still the same";

    client.openAndWait({.title = "Second"});
    EXPECT_TRUE(eventually([&] { return assistant->hasHeard(draft, "ChildrenChanged", "add"); }));
    awaitButton("Second");
    client.destroy(window);
    EXPECT_TRUE(eventually([&] { return assistant->hasHeard(draft, "ChildrenChanged", "remove"); }));
    EXPECT_EQ(assistant->nameOf(draft), "");
    EXPECT_FALSE(assistant->press(draft)) << "there is nothing left to press";
    EXPECT_TRUE(assistant->press(awaitButton("Second"))) << "the bar has lost its way";
}

TEST_F(ScreenReader, OpensAGroupAndPicksAWindow) {
    auto alpha = runPuppet("Alpha", {"a1", "a2"});
    startAccessibleBar(R"({"groupingMode": "always"})");
    const auto first = desktop.windowTitled("a1").value();
    desktop.activate(desktop.windowTitled("a2").value());
    std::optional<BarView> group;
    ASSERT_TRUE(eventually([&] { return (group = bar->group("Alpha")).has_value(); }));
    EXPECT_TRUE(assistant->press(awaitButton(group->label)));
    const auto row = awaitButton("a1");
    const auto inRow = assistant->childrenOf(row);
    ASSERT_EQ(inRow.size(), 1U);
    EXPECT_EQ(assistant->nameOf(inRow[0]), "Close window");
    EXPECT_TRUE(assistant->press(row));
    EXPECT_TRUE(becomesActive(first));
}

TEST_F(ScreenReader, CostsNothingUntilItIsAskedFor) {
    client.openAndWait({.title = "Window"});
    startBar({.environment = session->environment()});
    ASSERT_TRUE(showsButton("Window"));
    desktop.runFor(1500ms);
    for (const char* library : {"morvel-accessibility", "libatk", "libatspi"})
        EXPECT_FALSE(isLoaded(library)) << library;
    // It did look: switched on in the middle of the session, it is there.
    session->setAccessibilityEnabled(true);
    assistant.emplace(*session);
    EXPECT_TRUE(eventually([&] { return isLoaded("morvel-accessibility"); }));
    awaitButton("Window");
}

TEST_F(ScreenReader, FindsTheSettingsWindowAndItsControls) {
    startAccessibleBar();
    ASSERT_TRUE(eventually([&] { return assistant->application(kBar).has_value(); }));
    const auto window = openSettings();
    const auto toggle = awaitObject("toggle button", "Show Start button");
    EXPECT_TRUE(assistant->hasState(toggle, Assistant::kFocusable));
    EXPECT_TRUE(assistant->hasState(toggle, Assistant::kShowing));
    ASSERT_TRUE(bar->panelItem("Apps"));
    EXPECT_TRUE(assistant->press(toggle));
    EXPECT_TRUE(eventually([&] { return !bar->panelItem("Apps"); })) << "it does what it says";

    desktop.close(window);
    EXPECT_TRUE(eventually([&] { return !assistant->find(kBar, "frame", kSettings); }));
    EXPECT_TRUE(assistant->hasHeard(toggle, "ChildrenChanged", "remove"));
    openSettings();
    awaitObject("frame", kSettings);
    EXPECT_EQ(assistant->childrenOf(*assistant->application(kBar)).size(), 2U) << "with the bar, once each";
}

TEST_F(ScreenReader, FindsASettingsWindowThatWasThereBefore) {
    startBar({.environment = session->environment()});
    const auto window = openSettings();
    session->setAccessibilityEnabled(true);
    assistant.emplace(*session);
    awaitObject("frame", kSettings);
    desktop.close(window);
    EXPECT_TRUE(eventually([&] { return !assistant->find(kBar, "frame", kSettings); }));
    EXPECT_TRUE(bar->program().isRunning());
    EXPECT_EQ(bar->log().find("CRITICAL"), std::string::npos) << bar->log();
}

TEST_F(ScreenReader, IsNotNeededByABarThatGoesOnWithoutItsBuses) {
    client.openAndWait({.title = "Window"});
    startAccessibleBar();
    awaitButton("Window");
    session->kill();
    EXPECT_TRUE(eventually([&] { return assistant->isCutOff(); }));
    client.openAndWait({.title = "Later"});
    EXPECT_TRUE(showsButton("Later"));
    desktop.runFor(500ms);
    EXPECT_TRUE(bar->program().isRunning());
}

}  // namespace
}  // namespace morvel::e2e
