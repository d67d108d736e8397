// The running strip's buttons: makes, updates, moves and drops them so that they show what was decided.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "Bar/BarServices.h"
#include "Bar/Buttons/GroupPopover.h"
#include "Bar/Buttons/GroupedAppButton.h"
#include "Bar/Buttons/WindowButton.h"
#include "Bar/Layout/RunningStripArranger.h"
#include "UI/StackView.h"

namespace morvel {

/// Main thread only. Buttons are kept while what they stand for stays, so that hover survives a change of title.
class RunningStrip {
public:
    /// Keeps an auto-hidden bar shown while a menu or popover of it is open, and releases it.
    struct Reveal {
        std::function<void()> pin;
        std::function<void()> unpin;
    };

    RunningStrip(const BarServices& services, DisplayID screenID, Reveal reveal);

    ui::StackView& stack() { return runningStack_; }
    /// Between neighbours, in points.
    double spacing() const { return runningStack_.spacing(); }

    void setScreenID(DisplayID screenID) { screenID_ = screenID; }

    /// Shows the content; `iconOnly` is how its placeholders look.
    void apply(const RunningStripContent& content, bool iconOnly);
    /// Marks the focused window's button, and no other.
    void applyFocus(const std::optional<WindowID>& focused);
    /// Colours, borders and active style have changed.
    void applyAppearance();
    /// The width of the buttons has changed.
    void applyWidth();

private:
    WindowButton& windowButton(const WindowSnapshot& snapshot, bool iconOnly);
    GroupedAppButton& groupedButton(const RunningZoneLayout::Group& group);
    WindowButtonBindings bindings(const WindowSnapshot& snapshot) const;
    GroupPopoverBindings popoverBindings();
    ButtonServices buttonServices() const { return {services_.toolkit, services_.icons, services_.iconCache}; }
    void groupClicked(GroupedAppButton& button);
    void dropMissing(const RunningStripContent& content);

    BarServices services_;
    DisplayID screenID_;
    Reveal reveal_;
    ui::StackView runningStack_;
    GroupPopover groupPopover_;
    std::string popoverGroup_;  // the key of the group whose windows the popover listed last
    std::unordered_map<WindowID, std::unique_ptr<WindowButton>> windowButtons_;
    std::map<std::string, std::unique_ptr<GroupedAppButton>> groupedButtons_;  // by group key
    std::optional<WindowID> focused_;
};

}  // namespace morvel
