#include "BarTest.h"

namespace morvel::e2e {

void BarTest::TearDown() {
    if (!bar) return;
    EXPECT_TRUE(bar->program().isRunning()) << "the bar ended with status " << bar->program().exitStatus().value_or(-1);
    if (HasFailure()) reportScreen();
    bar->program().signal(SIGTERM);
    EXPECT_EQ(bar->program().waitForExit(), 0) << "the bar does not end cleanly when asked to";
    const auto log = bar->log();
    for (const char* fault : {"AddressSanitizer", "LeakSanitizer", "runtime error:", "Assertion"})
        EXPECT_EQ(log.find(fault), std::string::npos) << "the bar reports a fault";
    if (HasFailure()) ADD_FAILURE() << "the bar's log:\n" << log;
}

void BarTest::reportScreen() {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    const std::filesystem::path picture =
        std::filesystem::path(MORVEL_FAILURES) / (std::string(test->test_suite_name()) + "." + test->name() + ".png");
    std::filesystem::create_directories(picture.parent_path());
    world.shoot().writePng(picture);
    std::string buttons;
    for (const auto& title : bar->buttonTitles()) buttons += " [" + title.substr(0, 60) + "]";
    ADD_FAILURE() << "the screen: " << picture << "\nbuttons:" << buttons;
}

void BarTest::startBar(const Bar::Options& options, size_t panels) {
    bar.emplace(world.server, desktop, MORVEL_PROGRAM, options);
    ASSERT_TRUE(bar->waitForPanels(panels)) << "there are " << bar->panels().size() << " panels";
}

Program BarTest::runPuppet(const std::string& className, const std::vector<std::string>& titles) {
    std::vector<std::string> words{MORVEL_PUPPET, className};
    words.insert(words.end(), titles.begin(), titles.end());
    Program puppet = world.run(words);
    EXPECT_TRUE(desktop.waitUntil([&] { return desktop.windowsOf(puppet.pid()).size() == titles.size(); }));
    return puppet;
}

testing::AssertionResult BarTest::eventually(const std::function<bool()>& reached) {
    if (desktop.waitUntil(reached)) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "it did not happen";
}

testing::AssertionResult BarTest::showsButton(const std::string& title, std::optional<size_t> panel) {
    return eventually([&] { return bar->button(title, panel).has_value(); }) << ": a button for " << title;
}

testing::AssertionResult BarTest::lacksButton(const std::string& title, std::optional<size_t> panel) {
    return eventually([&] { return !bar->button(title, panel); }) << ": the button for " << title << " goes away";
}

testing::AssertionResult BarTest::becomesActive(xcb_window_t window) {
    return eventually([&] { return desktop.activeWindow() == window && !desktop.isMinimized(window); })
           << ": the window becomes active";
}

testing::AssertionResult BarTest::becomesMinimized(xcb_window_t window) {
    return eventually([&] { return desktop.isMinimized(window); }) << ": the window is minimized";
}

testing::AssertionResult BarTest::disappears(xcb_window_t window) {
    return eventually([&] { return !desktop.connection().boxOf(window); }) << ": the window is closed";
}

Box BarTest::popupItem(const std::string& label) {
    std::optional<BarView> item;
    desktop.waitUntil([&] { return (item = bar->popupItem(label)).has_value(); });
    return item ? item->frame : Box{};
}

void BarTest::pickFromMenu(const std::string& buttonTitle, const std::string& entry) {
    ASSERT_TRUE(showsButton(buttonTitle));
    pointer.rightClick(bar->button(buttonTitle)->frame.center());
    const Box item = popupItem(entry);
    ASSERT_FALSE(item.isEmpty()) << "no menu entry " << entry;
    pointer.click(item.center());
}

void BarTest::clickButton(const std::string& title) {
    ASSERT_TRUE(showsButton(title));
    pointer.click(bar->button(title)->frame.center());
}

Box BarTest::panelBox(size_t index) {
    const auto panels = bar->panels();
    return index < panels.size() ? panels[index].box : Box{};
}

int BarTest::blueness(const std::string& title) {
    const auto button = bar->button(title);
    if (!button) return 0;
    const Box& frame = button->frame;
    const Rgb color = world.shoot().average({frame.x + 10, frame.bottom() - 4, frame.width - 20, 2});
    return color.blue - color.red;
}

}  // namespace morvel::e2e
