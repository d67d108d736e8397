// The strip at the bar's start: the buttons of the system, the pinned items, and the button for those without a place.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "Bar/BarReveal.h"
#include "Bar/BarServices.h"
#include "Bar/Pinned/PinnedAppButton.h"
#include "Bar/Pinned/PinnedOverflowButton.h"
#include "Bar/Pinned/PinnedOverflowPopover.h"
#include "Bar/Pinned/PinnedStackView.h"
#include "Util/Lifetime.h"

namespace morvel {

/// Main thread only. Follows the pinned items and how many of them are shown. Buttons are kept while their items stay.
class LaunchStrip {
public:
    LaunchStrip(const BarServices& services, DisplayID screenID, BarReveal reveal);
    LaunchStrip(const LaunchStrip&) = delete;
    LaunchStrip& operator=(const LaunchStrip&) = delete;

    ui::StackView& stack() { return pinnedStack_; }
    const ui::StackView& stack() const { return pinnedStack_; }
    void setScreenID(DisplayID screenID);
    /// A button is clicked, before that does anything.
    std::function<void()> onClick = [] {};
    void closeOverflow() { overflowPopover_.close(); }
    /// The buttons before the pinned items, which their maker owns; in place of the former ones.
    void setSystemButtons(std::vector<ui::View*> buttons);

    /// The bundle identifiers of all windows and placeholders.
    static std::set<std::string> runningBundleIDs(const WindowMap& windows);
    /// Gives the running applications' buttons their dots.
    void windowsChanged(const WindowMap& windows);
    /// Colours and borders have changed.
    void applyAppearance();

    /// Of the pinned applications.
    const std::set<std::string>& pinnedBundleIDs() const { return pinnedBundleIDs_; }
    /// Whether it is one of the pinned items that is dragged, which every bar shows or lists.
    bool isPinnedItemDragged(const ui::DragPasteboard& pasteboard) const;
    /// Pins the dropped files at the place they were dropped at; whether there were any.
    bool filesDropped(const ui::DragInfo& info);
    /// A drag that was over the bar is over.
    void dragEnded();

private:
    using Button = std::unique_ptr<PinnedAppButton>;

    PinnedStackHooks stackHooks();
    PinnedOverflowButtonBindings overflowButtonBindings();
    PinnedOverflowBindings overflowBindings();
    std::optional<PinnedItem> draggedItem(const ui::DragPasteboard& pasteboard) const;
    PinnedAppButton* button(const std::string& itemID) const;
    Button makeButton(const PinnedItem& item);
    std::unique_ptr<ui::View> placeholder(const PinnedItem& item) const;
    bool dropped(const PinnedItem& item, size_t index);
    bool demote(const std::string& itemID);
    std::function<void(const PinnedItem&)> launchNewInstance() const;
    std::function<void(const PinnedItem&)> showInFinder() const;
    ProcessID processOf(const PinnedItem& item) const;
    void rebuild();
    void arrange();
    void showRunning();
    void overflowClicked();
    void hoverOpen();
    ButtonServices buttonServices() const { return {services_.toolkit, services_.icons, services_.iconCache}; }

    Lifetime lifetime_;  // first, for what it guards is handed out while the rest is made
    BarServices services_;
    DisplayID screenID_;
    BarReveal reveal_;
    PinnedStackView pinnedStack_;
    std::vector<ui::View*> systemButtons_;
    std::vector<Button> pinnedButtons_;
    PinnedOverflowButton overflowButton_;
    bool hasOverflow_ = false;
    PinnedOverflowPopover overflowPopover_;
    bool isSprungOpen_ = false;  // a drag opened the popover
    std::set<std::string> cachedRunningBundleIDs_;
    std::set<std::string> pinnedBundleIDs_;
    Subscriptions subscriptions_;  // last, so that nothing reaches a half-dead strip
};

}  // namespace morvel
