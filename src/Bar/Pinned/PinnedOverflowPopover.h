// The list of the pinned items that have no place on the bar, which opens from the overflow button.
#pragma once

#include <functional>
#include <vector>

#include "Bar/Pinned/PinnedOverflowList.h"
#include "Pinned/PinnedAppsStore.h"
#include "Settings/SettingsStore.h"
#include "UI/Popover.h"

namespace morvel {

/// The first four are set. Menus keep copies of `onLaunchNew` and `onShow`, so those refer to no view.
struct PinnedOverflowBindings {
    DraggedItem draggedItem;
    std::function<ProcessID(const PinnedItem&)> processOf;  ///< one that runs the application, if any does
    std::function<void(const PinnedItem&)> onClickItem;
    std::function<void(const PinnedItem&)> onShow;
    std::function<void(const PinnedItem&)> onLaunchNew;
    /// Called in pairs around the time the popover is open, and a row's menu, to keep the bar shown meanwhile.
    std::function<void()> onWillShow = [] {};
    std::function<void()> onDidClose = [] {};
};

/// One per bar, owned by it. Follows the store while it is open, and closes when nothing is left to show.
class PinnedOverflowPopover {
public:
    /// What it is given outlives it.
    PinnedOverflowPopover(ButtonServices services, MainLoop& mainLoop, PinnedAppsStore& store, SettingsStore& settings,
                          PinnedOverflowBindings bindings);
    PinnedOverflowPopover(const PinnedOverflowPopover&) = delete;
    PinnedOverflowPopover& operator=(const PinnedOverflowPopover&) = delete;

    /// Opens beside `anchor`, on the side away from the screen edge. Does nothing while it is open.
    void show(ui::View& anchor);
    void close() { popover_.close(); }
    bool isShown() const { return popover_.isShown(); }

    /// Something was dropped into the list since it was opened.
    bool tookDrop() const { return tookDrop_; }
    /// A drag is over, wherever it was dropped.
    void dragEnded() { list_.dragEnded(); }

private:
    std::span<const PinnedItem> overflow() const;
    std::unique_ptr<PinnedOverflowRow> makeRow(const PinnedItem& item);
    bool dropped(const PinnedItem& item, size_t index);
    void itemsChanged();
    void didClose();

    ButtonServices services_;
    PinnedAppsStore& store_;
    SettingsStore& settings_;
    PinnedOverflowBindings bindings_;
    PinnedOverflowList list_;
    bool tookDrop_ = false;
    Subscription outsideClickMonitor_;
    Subscriptions subscriptions_;
    ui::Popover popover_;  // last, so that it is destroyed first and never calls a half-dead object
};

}  // namespace morvel
