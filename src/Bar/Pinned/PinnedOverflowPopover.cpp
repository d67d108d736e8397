#include "Bar/Pinned/PinnedOverflowPopover.h"

#include <utility>

#include "Pinned/PinnedOverflowSlicing.h"
#include "Settings/BarEdge.h"

namespace morvel {

PinnedOverflowPopover::PinnedOverflowPopover(ButtonServices services, MainLoop& mainLoop, PinnedAppsStore& store,
                                             SettingsStore& settings, PinnedOverflowBindings bindings)
    : services_(services),
      store_(store),
      settings_(settings),
      bindings_(std::move(bindings)),
      list_(
          mainLoop, bindings_.draggedItem, [this](const PinnedItem& item) { return makeRow(item); },
          [this](const PinnedItem& item, size_t index) { return dropped(item, index); }),
      popover_(services.toolkit, list_, [this] { didClose(); }) {
    list_.onSizeChanged = [this] {
        if (isShown()) popover_.resize(list_.intrinsicSize());
    };
    const auto follows = [this](const auto&) {
        if (isShown()) itemsChanged();
    };
    subscriptions_.push_back(store_.pinnedItems().subscribe(follows, Current::Skip));
    subscriptions_.push_back(settings_.pinnedMaxVisible.subscribe(follows, Current::Skip));
}

std::span<const PinnedItem> PinnedOverflowPopover::overflow() const {
    return PinnedOverflowSlicing::slice(store_.pinnedItems().value(), settings_.pinnedMaxVisible.value()).overflow;
}

void PinnedOverflowPopover::show(ui::View& anchor) {
    if (isShown()) return;
    tookDrop_ = false;
    list_.scrollToTop();
    list_.setItems(overflow());
    bindings_.onWillShow();
    popover_.show(anchor, popoverEdge(settings_.barEdge.value()), list_.intrinsicSize());
    outsideClickMonitor_ = services_.toolkit.observeOutsidePresses([this] { close(); });
}

void PinnedOverflowPopover::itemsChanged() {
    list_.setItems(overflow());
    if (list_.items().empty()) return close();
    popover_.resize(list_.intrinsicSize());
}

void PinnedOverflowPopover::didClose() {
    outsideClickMonitor_.reset();
    list_.setItems({});
    bindings_.onDidClose();
}

std::unique_ptr<PinnedOverflowRow> PinnedOverflowPopover::makeRow(const PinnedItem& item) {
    PinnedItemActions actions;
    actions.onClick = [this, click = bindings_.onClickItem, item] {
        click(item);
        close();
    };
    actions.onUnpin = [&store = store_, id = item.id()] { store.unpin(id); };
    if (bindings_.onLaunchNew) actions.onLaunchNewInstance = [launch = bindings_.onLaunchNew, item] { launch(item); };
    actions.onShow = [show = bindings_.onShow, item] { show(item); };
    actions.reveal = {bindings_.onWillShow, bindings_.onDidClose};
    return std::make_unique<PinnedOverflowRow>(services_, item, bindings_.processOf(item), std::move(actions));
}

bool PinnedOverflowPopover::dropped(const PinnedItem& item, size_t index) {
    tookDrop_ = true;
    store_.pinAt(PinnedOverflowSlicing::dropIndexInOverflow(store_.pinnedItems().value(),
                                                            settings_.pinnedMaxVisible.value(), item.id(), index),
                 {item});
    return true;
}

}  // namespace morvel
