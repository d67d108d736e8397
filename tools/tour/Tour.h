// A short tour of the bar with real programs: each step does what a person would do, and looks whether it happened.
#pragma once

#include <list>
#include <optional>

#include "Album.h"
#include "harness/Bar.h"

namespace morvel::tour {

class Tour {
public:
    Tour(std::filesystem::path program, const std::filesystem::path& folder);
    /// Whether every step was observed, by the state of windows and by pixels.
    bool play();

private:
    void dock();
    void openPrograms();
    void focus();
    void minimize();
    void restore();
    void typeATitle();
    void menu();
    void pin();
    void secondWorkspace();
    void secondDisplay();
    void crowd();
    void groupPopover();
    void closeTerminals();
    void launcher();
    void settings();

    e2e::Program& launch(const std::vector<std::string>& arguments);
    e2e::Program& launchTerminal(const std::string& title);
    void expectButton(const std::string& title, std::optional<size_t> panel = {});
    /// Clicks the button, which `expectButton` has seen.
    void click(const std::string& title);
    void clickPopupItem(const std::string& label);
    /// Whether the button's plain lower edge is tinted in the accent colour.
    bool isTinted(const std::string& title);
    bool hasIcon(const std::string& title);
    xcb_window_t window(const std::string& title) { return desktop_.windowTitled(title).value_or(XCB_NONE); }

    e2e::VirtualDesktop world_;
    e2e::Desktop& desktop_ = world_.desktop;
    std::filesystem::path program_;
    Album album_;
    std::list<e2e::Program> programs_;
    std::optional<e2e::Bar> bar_;
};

}  // namespace morvel::tour
