// The bar under observation: its process, its windows and what they say they show.
#pragma once

#include <filesystem>

#include "harness/Desktop.h"
#include "harness/Program.h"
#include "harness/XServer.h"

namespace morvel::e2e {

/// A view as the bar describes it in the `_MORVEL_VIEWS` property of its windows.
struct BarView {
    std::string label;
    std::string tooltip;
    Box frame;  // root pixels
    bool hidden = false;
    double alpha = 1;

    /// What a window button's tooltip says after the application's name and a dash. No value: it is no such button.
    std::optional<std::string> windowTitle() const;
};

struct BarWindow {
    xcb_window_t id = XCB_NONE;
    Box box;
    bool isPanel = false;        // else a menu, a popover or a tooltip
    std::vector<BarView> views;  // also those that cannot be seen
};

class Bar {
public:
    struct Options {
        std::string defaults = {};     // the text of the defaults file; empty: there is none
        Environment environment = {};  // beyond the desktop's
    };

    /// Starts the program; does not wait for its panel.
    Bar(XServer& server, Desktop& desktop, const std::filesystem::path& program, const Options& options);

    /// All windows of the bar that can be seen, panels first, those from left to right and from top to bottom.
    std::vector<BarWindow> windows();
    /// All panels, or only the one with this index.
    std::vector<BarWindow> panels(std::optional<size_t> index = {});
    std::vector<BarWindow> popups();
    bool waitForPanels(size_t count) {
        return desktop_.waitUntil([&] { return panels().size() == count; });
    }

    /// The visible button of the window with this title on any panel, or on the panel with this index.
    std::optional<BarView> button(std::string_view title, std::optional<size_t> panel = {}) {
        return find(panels(panel), [&](const BarView& view) { return view.windowTitle() == title; });
    }
    /// The button of an application's group or of a pinned item, which has its name as its tooltip.
    std::optional<BarView> group(std::string_view application, std::optional<size_t> panel = {}) {
        return find(panels(panel), [&](const BarView& view) { return view.tooltip == application; });
    }
    /// A visible view with this label on a panel: the number on a group's badge, for instance.
    std::optional<BarView> panelItem(std::string_view label) {
        return find(panels(), [&](const BarView& view) { return view.label == label; });
    }
    /// A visible view with this label in a menu or a popover.
    std::optional<BarView> popupItem(std::string_view label) {
        return find(popups(), [&](const BarView& view) { return view.label == label; });
    }
    /// The titles of all window buttons that can be seen, from left to right.
    std::vector<std::string> buttonTitles(std::optional<size_t> panel = {});

    Program& program() { return program_; }
    std::filesystem::path defaultsFile() const { return server_.configFolder() / "morvel/defaults.json"; }
    /// What it has written to standard output and error.
    std::string log() const;

private:
    /// The first visible view that is wanted, in these windows.
    static std::optional<BarView> find(const std::vector<BarWindow>& windows,
                                       const std::function<bool(const BarView&)>& isWanted);
    static std::filesystem::path prepared(XServer& server, const Options& options);

    XServer& server_;  // both outlive us
    Desktop& desktop_;
    std::filesystem::path logFile_;
    Program program_;
};

}  // namespace morvel::e2e
