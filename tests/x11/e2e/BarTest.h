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
    /// A bar that died or reported a fault of its memory fails the test, whatever it was about.
    void TearDown() override;

    void startBar(const Bar::Options& options = {}, size_t panels = 1);
    /// One process with a window per title.
    Program runPuppet(const std::string& className, const std::vector<std::string>& titles);

    [[nodiscard]] testing::AssertionResult eventually(const std::function<bool()>& reached);
    [[nodiscard]] testing::AssertionResult showsButton(const std::string& title, std::optional<size_t> panel = {});
    [[nodiscard]] testing::AssertionResult lacksButton(const std::string& title, std::optional<size_t> panel = {});
    [[nodiscard]] testing::AssertionResult becomesActive(xcb_window_t window);
    [[nodiscard]] testing::AssertionResult becomesMinimized(xcb_window_t window);
    [[nodiscard]] testing::AssertionResult disappears(xcb_window_t window);
    /// Waits for the menu or popover with this entry; its frame. An empty box when it does not come.
    Box popupItem(const std::string& label);
    /// Opens the button's menu and picks the entry.
    void pickFromMenu(const std::string& buttonTitle, const std::string& entry);
    void clickButton(const std::string& title);

    Box panelBox(size_t index = 0);
    /// How much bluer than red the button's empty lower edge is: the accent colour of the focused button.
    int blueness(const std::string& title);

    /// For a failed test: a picture, and which buttons the bar has.
    void reportScreen();

    VirtualDesktop world;
    Desktop& desktop = world.desktop;
    Pointer& pointer = world.pointer;
    Client client{world.server, world.desktop};
    std::optional<Bar> bar;
};

/// Window buttons as wide and ungrouped as they come, whatever their number.
inline constexpr const char* kNeverGrouped = R"({"groupingMode": "never"})";

}  // namespace morvel::e2e
