// A private desktop with the bar on it, and the words that end-to-end tests are written in.
#pragma once

#include <gtest/gtest.h>

#include <optional>

#include "harness/Bar.h"
#include "harness/VirtualDesktop.h"

namespace morvel::e2e {

/// Everything waits for a state and says what it waited for; nothing here counts on how fast the bar is.
class BarTest : public testing::Test {
protected:
    explicit BarTest(int width = 1280, int height = 800) : world(width, height) {}
    /// A bar that died or reported a fault fails the test, whatever it was about.
    void TearDown() override;

    void startBar(const Bar::Options& options = {}, size_t panels = 1);
    /// Ends it as a session does that closes.
    void quitBar();
    /// Enters a program among those of the person, by a desktop entry with this Exec line.
    void install(const std::string& id, const std::string& command, const std::string& more = "");
    /// From now on there is a monitor on each half of the screen.
    void splitInTwo() { desktop.setMonitors({{"left", kLeft, true}, {"right", kRight}}); }
    /// Tells all programs of the desktop's settings, in the bytes of that protocol; again when they are others.
    void tellSettings(std::string_view bytes);
    /// One process with a window per title.
    Program runPuppet(const std::string& className, const std::vector<std::string>& titles);

    [[nodiscard]] testing::AssertionResult eventually(const std::function<bool()>& reached);
    [[nodiscard]] testing::AssertionResult showsButton(const std::string& title, std::optional<size_t> panel = {}) {
        return eventually([&] { return bar->button(title, panel).has_value(); }) << ": a button for " << title;
    }
    [[nodiscard]] testing::AssertionResult lacksButton(const std::string& title, std::optional<size_t> panel = {}) {
        return eventually([&] { return !bar->button(title, panel); }) << ": the button for " << title << " goes away";
    }
    /// There are exactly these window buttons, in any order.
    [[nodiscard]] testing::AssertionResult showsButtons(std::vector<std::string> titles,
                                                        std::optional<size_t> panel = {});
    [[nodiscard]] testing::AssertionResult becomesActive(xcb_window_t window) {
        return eventually([&] { return desktop.activeWindow() == window && !desktop.isMinimized(window); })
               << ": the window becomes active";
    }
    [[nodiscard]] testing::AssertionResult becomesMinimized(xcb_window_t window) {
        return eventually([&] { return desktop.isMinimized(window); }) << ": the window is minimized";
    }
    [[nodiscard]] testing::AssertionResult showsInPopup(const std::string& label) {
        return eventually([&] { return bar->popupItem(label).has_value(); })
               << ": " << label << " in a menu or popover";
    }
    [[nodiscard]] testing::AssertionResult closesPopups() {
        return eventually([&] { return bar->popups().empty(); }) << ": what was open is closed";
    }
    [[nodiscard]] testing::AssertionResult showsOnPanel(const std::string& label) {
        return eventually([&] { return bar->panelItem(label).has_value(); }) << ": " << label << " on the bar";
    }
    [[nodiscard]] testing::AssertionResult lacksOnPanel(const std::string& label) {
        return eventually([&] { return !bar->panelItem(label); }) << ": " << label << " goes from the bar";
    }
    /// Waits for the window with this title; a test fails where it does not come.
    xcb_window_t awaitWindow(const std::string& title);
    /// Waits for the menu or popover with this entry; its frame. An empty box when it does not come.
    Box popupItem(const std::string& label);
    void pick(const std::string& entry) { pointer.click(popupItem(entry).center()); }
    /// Opens the button's menu and picks the entry.
    void pickFromMenu(const std::string& buttonTitle, const std::string& entry);
    void clickButton(const std::string& title) {
        ASSERT_TRUE(showsButton(title));
        pointer.click(bar->button(title)->frame.center());
    }
    /// By the menu of the bar's empty end. The window, once it has the focus; none when it does not come.
    xcb_window_t openSettings();

    Box panelBox(size_t index = 0);
    /// How much bluer than red the button's empty lower edge is: the accent colour of the focused button.
    int blueness(const std::string& title);
    /// The button of `title` shows the focus and that of `other` does not.
    [[nodiscard]] testing::AssertionResult isMarked(const std::string& title, const std::string& other);
    /// Whether the bar's process has this library in its memory.
    bool isLoaded(const std::string& library);

    /// For a failed test: a picture, and which buttons the bar has.
    void reportScreen();

    static constexpr Box kLeft{0, 0, 640, 800}, kRight{640, 0, 640, 800};
    static constexpr const char* kSettings = "Morvel Settings";

    VirtualDesktop world;
    Desktop& desktop = world.desktop;
    Pointer& pointer = world.pointer;
    Client client{world.server, world.desktop};
    std::optional<Bar> bar;

private:
    xcb_window_t settingsOwner_ = XCB_NONE;
};

/// Window buttons as wide and ungrouped as they come, whatever their number.
inline constexpr const char* kNeverGrouped = R"({"groupingMode": "never"})";

}  // namespace morvel::e2e
