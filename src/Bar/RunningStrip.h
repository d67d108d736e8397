// The running strip's buttons: makes, updates, moves and drops them so that they show what was decided.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "Bar/BarReveal.h"
#include "Bar/BarServices.h"
#include "Bar/Buttons/GroupPopover.h"
#include "Bar/Buttons/GroupedAppButton.h"
#include "Bar/Buttons/WindowButton.h"
#include "Bar/Drag/RunningStackView.h"
#include "Bar/DragHoverRaise/DragHoverRaiseController.h"
#include "Bar/DragHoverRaise/RunLoopDragHoverClock.h"
#include "Bar/FocusWheel.h"
#include "Bar/Layout/RunningStripArranger.h"

namespace morvel {

/// Main thread only. Buttons are kept while what they stand for stays, so that hover survives a change of title.
class RunningStrip {
public:
    /// What is dragged and dropped here, which the order of the windows decides. Both are set.
    struct Drops {
        /// The window that is dragged, if it is one that this bar does not list.
        std::function<std::optional<WindowID>(const ui::DragPasteboard&)> foreignWindow;
        /// A window was dropped at an index among the strip's other buttons; whether it could be taken.
        std::function<bool(const WindowID&, size_t index)> dropped;
    };

    RunningStrip(const BarServices& services, DisplayID screenID, BarReveal reveal, Drops drops,
                 NowPlayingControls nowPlayingControls);

    LiveReorderStackView& stack() { return runningStack_; }
    /// Between neighbours, in points.
    double spacing() const { return runningStack_.spacing(); }

    void setScreenID(DisplayID screenID) { screenID_ = screenID; }
    /// A button is clicked, before that does anything.
    std::function<void()> onClick = [] {};
    void closeGroupPopover() { groupPopover_.close(); }

    /// Whether the window, or placeholder, has a button or a row here.
    bool shows(const WindowID& id) const;

    /// Shows the content; `iconOnly` is how its placeholders look.
    void apply(const RunningStripContent& content, bool iconOnly);
    /// Shows a window's new title, if it is shown here; the order stays.
    void retitle(const WindowSnapshot& window);
    /// Marks the focused window's button, and no other.
    void applyFocus(const std::optional<WindowID>& focused);
    /// Badges the buttons of this application, and no others.
    void applyNowPlaying(const std::optional<std::string>& bundleID);
    /// Colours, borders and active style have changed.
    void applyAppearance();
    /// The width of the buttons has changed.
    void applyWidth();
    /// A drag that was over the bar is over.
    void dragEnded();

private:
    WindowButton& windowButton(const WindowSnapshot& snapshot, bool iconOnly);
    GroupedAppButton& groupedButton(const RunningZoneLayout::Group& group);
    WindowButtonBindings bindings(const WindowSnapshot& snapshot);
    GroupPopoverBindings popoverBindings();
    RunningStackHooks stackHooks();
    DragHoverActions dragHoverActions();
    std::unique_ptr<ui::View> placeholder(const ui::DragPasteboard& pasteboard) const;
    void openGroupPopover(GroupedAppButton& button);
    void wheelTurned(double notches);
    ButtonServices buttonServices() const { return {services_.toolkit, services_.icons, services_.iconCache}; }
    bool isNowPlaying(const std::optional<std::string>& bundleID) const;
    void groupClicked(GroupedAppButton& button);
    void dropMissing(const RunningStripContent& content);

    BarServices services_;
    DisplayID screenID_;
    BarReveal reveal_;
    Drops drops_;
    NowPlayingControls nowPlayingControls_;
    RunningStackView runningStack_;
    GroupPopover groupPopover_;
    RunLoopDragHoverClock dragHoverClock_;
    DragHoverRaiseController dragHover_;  // after the popover, which it closes at its end
    std::string popoverGroup_;            // the key of the group whose windows the popover listed last
    std::unordered_map<WindowID, std::unique_ptr<WindowButton>> windowButtons_;
    std::map<std::string, std::unique_ptr<GroupedAppButton>> groupedButtons_;  // by group key
    std::vector<WindowID> shownWindows_;  // from the leading end, without placeholders
    FocusWheel wheel_;
    bool isGrouped_ = false;
    std::optional<WindowID> focused_;
    std::optional<std::string> lastNowPlayingBundleID_;  // what carries the badge
};

}  // namespace morvel
