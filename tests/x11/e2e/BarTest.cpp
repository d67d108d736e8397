#include "BarTest.h"

#include <algorithm>
#include <fstream>

namespace morvel::e2e {

void BarTest::TearDown() {
    if (!bar) return;
    EXPECT_TRUE(bar->program().isRunning()) << "the bar ended with status " << bar->program().exitStatus().value_or(-1);
    if (HasFailure()) reportScreen();
    quitBar();
}

void BarTest::quitBar() {
    bar->program().signal(SIGTERM);
    EXPECT_EQ(bar->program().waitForExit(), 0) << "the bar does not end cleanly when asked to";
    const auto log = bar->log();
    for (const char* fault : {"AddressSanitizer", "LeakSanitizer", "runtime error:", "Assertion", "Gtk-CRITICAL",
                              "GObject-CRITICAL", "Atk-CRITICAL"})
        EXPECT_EQ(log.find(fault), std::string::npos) << "the bar reports a fault";
    if (HasFailure()) ADD_FAILURE() << "the bar's log:\n" << log;
    bar.reset();
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

void BarTest::install(const std::string& id, const std::string& command, const std::string& more) {
    const auto folder = world.server.home() / ".local/share/applications";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / (id + ".desktop"))
        << "[Desktop Entry]\nType=Application\nName=" << id << "\nStartupWMClass=" << id << "\nExec=" << command << "\n"
        << more;
}

void BarTest::tellSettings(std::string_view bytes) {
    if (!settingsOwner_) settingsOwner_ = client.open({.title = "settings"});
    client.connection().setBytes(settingsOwner_, "_XSETTINGS_SETTINGS", "_XSETTINGS_SETTINGS", bytes);
    client.connection().own(settingsOwner_, "_XSETTINGS_S0");
}

testing::AssertionResult BarTest::eventually(const std::function<bool()>& reached) {
    if (desktop.waitUntil(reached)) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "it did not happen";
}

testing::AssertionResult BarTest::showsButtons(std::vector<std::string> titles, std::optional<size_t> panel) {
    std::ranges::sort(titles);
    std::vector<std::string> shown;
    const auto areShown = [&] {
        shown = bar->buttonTitles(panel);
        std::ranges::sort(shown);
        return shown == titles;
    };
    return eventually(areShown) << ": buttons for " << testing::PrintToString(titles) << "; there are "
                                << testing::PrintToString(shown);
}

xcb_window_t BarTest::awaitWindow(const std::string& title) {
    std::optional<xcb_window_t> found;
    EXPECT_TRUE(eventually([&] { return (found = desktop.windowTitled(title)).has_value(); })) << title;
    return found.value_or(XCB_NONE);
}

Box BarTest::popupItem(const std::string& label) {
    std::optional<BarView> item;
    desktop.waitUntil([&] { return (item = bar->popupItem(label)).has_value(); });
    return item ? item->frame : Box{};
}

void BarTest::pickFromMenu(const std::string& buttonTitle, const std::string& entry) {
    ASSERT_TRUE(showsButton(buttonTitle));
    pointer.rightClick(bar->button(buttonTitle)->frame.center());
    ASSERT_TRUE(showsInPopup(entry));
    pick(entry);
}

xcb_window_t BarTest::openSettings() {
    const Box panel = panelBox();
    pointer.rightClick({panel.right() - 40, panel.center().y});
    pick("Morvel Settings…");
    const xcb_window_t window = awaitWindow(kSettings);
    EXPECT_TRUE(becomesActive(window));
    return window;
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

testing::AssertionResult BarTest::isMarked(const std::string& title, const std::string& other) {
    constexpr int kClearly = 12;
    return eventually([&] { return blueness(title) > blueness(other) + kClearly; }) << ": the focus is on " << title;
}

bool BarTest::isLoaded(const std::string& library) {
    std::ifstream maps("/proc/" + std::to_string(bar->program().pid()) + "/maps");
    for (std::string line; std::getline(maps, line);)
        if (line.find(library) != std::string::npos) return true;
    return false;
}

}  // namespace morvel::e2e
