// The bar as a person with a screen reader meets it, and that nobody else pays for that.
#include "Assistant.h"
#include "BarTest.h"

namespace morvel::e2e {
namespace {

constexpr const char* kBar = "Morvel";
constexpr const char* kButton = "push button";

class ScreenReader : public BarTest {
protected:
    void SetUp() override {
        session.emplace(world);
        if (!session->hasAccessibility()) GTEST_SKIP() << "the accessibility service (at-spi2-core) is not installed";
    }

    void enable() {
        session->setAccessibilityEnabled(true);
        assistant.emplace(*session);
    }
    void startAccessibleBar(const std::string& defaults = kNeverGrouped) {
        enable();
        startBar({.defaults = defaults, .environment = session->environment()});
        ASSERT_TRUE(eventually([&] { return assistant->application(kBar).has_value(); }));
    }
    std::vector<AccessibleObject> windows() { return assistant->childrenOf(assistant->application(kBar).value()); }
    /// Waits for the object; one that answers nothing when it does not come.
    AccessibleObject awaitObject(const std::string& role, const std::string& name) {
        std::optional<AccessibleObject> found;
        EXPECT_TRUE(eventually([&] { return (found = assistant->find(kBar, role, name)).has_value(); })) << name;
        return found.value_or(AccessibleObject{"org.example.none", "/none"});
    }
    AccessibleObject awaitButton(const std::string& name) { return awaitObject(kButton, name); }

    std::optional<SessionBus> session;
    std::optional<Assistant> assistant;
};

TEST_F(ScreenReader, FindsButtonsByNameAndPressesThem) {
    const auto back = client.openAndWait({.title = "Back", .box = {200, 150, 320, 200}});
    const auto front = client.openAndWait({.title = "Front", .box = {220, 170, 320, 200}});
    startAccessibleBar();
    ASSERT_EQ(windows().size(), 1U) << "one for each panel";
    EXPECT_EQ(assistant->roleOf(windows()[0]), "frame");
    EXPECT_EQ(assistant->extentsOf(windows()[0]), panelBox());
    ASSERT_TRUE(becomesActive(front));
    const auto found = awaitButton("Back");
    const BarView view = bar->button("Back").value();
    EXPECT_EQ(assistant->extentsOf(found), view.frame);
    EXPECT_EQ(assistant->descriptionOf(found), view.tooltip);
    EXPECT_EQ(assistant->actionOf(found), "press");
    for (const unsigned state : {Assistant::kSensitive, Assistant::kShowing, Assistant::kVisible})
        EXPECT_TRUE(assistant->hasState(found, state)) << state;
    EXPECT_FALSE(assistant->hasState(found, Assistant::kFocusable)) << "the bar never takes the keyboard";
    EXPECT_TRUE(assistant->childrenOf(found).empty()) << "the title would be read twice";

    EXPECT_TRUE(assistant->press(found));
    EXPECT_TRUE(becomesActive(back));
    EXPECT_TRUE(eventually([&] { return desktop.isAbove(back, front); }));
    // The bar shows that it knows of the focus; before that a press raises the window once more.
    EXPECT_TRUE(isMarked("Back", "Front"));
    EXPECT_TRUE(assistant->press(found));
    EXPECT_TRUE(becomesMinimized(back)) << "a press does what a click does";
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
    const auto first = awaitWindow("a1");
    desktop.activate(awaitWindow("a2"));
    ASSERT_TRUE(eventually([&] { return bar->group("Alpha").has_value(); }));
    EXPECT_TRUE(assistant->press(awaitButton(bar->group("Alpha")->label)));
    const auto row = awaitButton("a1");
    const auto inRow = assistant->childrenOf(row);
    ASSERT_EQ(inRow.size(), 1U);
    EXPECT_EQ(assistant->nameOf(inRow[0]), "Close window");
    EXPECT_TRUE(assistant->press(row));
    EXPECT_TRUE(becomesActive(first));
}

TEST_F(ScreenReader, CostsNothingUntilItIsAskedForAndThenFindsWhatIsThere) {
    client.openAndWait({.title = "Window"});
    startBar({.environment = session->environment()});
    ASSERT_TRUE(showsButton("Window"));
    desktop.runFor(1500ms);
    for (const char* library : {"morvel-accessibility", "libatk", "libatspi"})
        EXPECT_FALSE(isLoaded(library)) << library;
    const auto settings = openSettings();
    enable();
    EXPECT_TRUE(eventually([&] { return isLoaded("morvel-accessibility"); }));
    awaitButton("Window");
    awaitObject("frame", kSettings);
    desktop.close(settings);
    EXPECT_TRUE(eventually([&] { return !assistant->find(kBar, "frame", kSettings); }));
}

TEST_F(ScreenReader, FindsTheSettingsWindowAndItsControlsAndIsNotNeeded) {
    startAccessibleBar();
    const auto window = openSettings();
    const auto toggle = awaitObject("toggle button", "Show Start button");
    EXPECT_TRUE(assistant->hasState(toggle, Assistant::kFocusable));
    EXPECT_TRUE(assistant->hasState(toggle, Assistant::kShowing));
    ASSERT_TRUE(bar->panelItem("Apps"));
    EXPECT_TRUE(assistant->press(toggle));
    EXPECT_TRUE(lacksOnPanel("Apps")) << "it does what it says";

    desktop.close(window);
    EXPECT_TRUE(eventually([&] { return !assistant->find(kBar, "frame", kSettings); }));
    EXPECT_TRUE(assistant->hasHeard(toggle, "ChildrenChanged", "remove"));
    openSettings();
    awaitObject("frame", kSettings);
    EXPECT_EQ(windows().size(), 2U) << "with the bar, once each";

    session->kill();
    EXPECT_TRUE(eventually([&] { return assistant->isCutOff(); }));
    client.openAndWait({.title = "Later"});
    EXPECT_TRUE(showsButton("Later")) << "it goes on without its buses";
    desktop.runFor(500ms);
}

}  // namespace
}  // namespace morvel::e2e
