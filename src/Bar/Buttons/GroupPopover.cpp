#include "Bar/Buttons/GroupPopover.h"

#include <algorithm>

#include "Settings/BarEdge.h"

namespace morvel {

namespace {

constexpr double kWidth = 280;

Size contentSize(size_t rows) {
    return {kWidth, GroupRowButton::kHeight * static_cast<double>(std::max<size_t>(rows, 1))};
}

}  // namespace

GroupPopover::GroupPopover(ButtonServices services, GroupPopoverBindings bindings)
    : services_(services),
      bindings_(std::move(bindings)),
      popover_(std::make_shared<ui::Popover>(services.toolkit, stack_, [this] { popoverDidClose(); })) {}

void GroupPopover::show(ui::View& anchor, const std::vector<WindowSnapshot>& windows, MorvelEdge barEdge) {
    rows_.clear();
    for (const WindowSnapshot& window : windows) {
        rows_.push_back(makeRow(window));
        stack_.addArrangedSubview(*rows_.back());
    }
    if (!popover_->isShown()) bindings_.onWillShow();
    popover_->show(anchor, popoverEdge(barEdge), contentSize(rows_.size()));
    outsideClickMonitor_ = services_.toolkit.observeOutsidePresses([popover = popover_.get()] { popover->close(); });
}

void GroupPopover::windowsChanged(const std::vector<WindowSnapshot>& group) {
    const auto updateOrDrop = [&](const Row& row) {
        const auto window = std::ranges::find(group, row->snapshot().id, &WindowSnapshot::id);
        if (window != group.end()) row->update(*window);
        return window == group.end();
    };
    if (std::erase_if(rows_, updateOrDrop) > 0) rowsChanged();
}

void GroupPopover::retitle(const WindowSnapshot& window) {
    for (const Row& row : rows_)
        if (row->snapshot().id == window.id) row->update(window);
}

std::vector<WindowSnapshot> GroupPopover::currentWindows() const {
    std::vector<WindowSnapshot> windows;
    for (const Row& row : rows_) windows.push_back(row->snapshot());
    return windows;
}

GroupPopover::Row GroupPopover::makeRow(const WindowSnapshot& window) {
    const WindowID id = window.id;
    const ProcessID pid = window.pid;
    const std::weak_ptr<ui::Popover> popover = popover_;
    const auto closePopover = [popover] {
        if (const auto open = popover.lock()) open->close();
    };
    GroupRowBindings row;
    row.onActivate = [activate = bindings_.onActivate, id] {
        if (activate) activate(id);
    };
    row.onCloseClicked = [this, id] { closeClicked(id); };
    row.onClose = [close = bindings_.onClose, id] {
        if (close) close(id);
    };
    row.onPin = [pin = bindings_.onPinApp, closePopover, pid] {
        if (pin) pin(pid);
        closePopover();
    };
    row.onQuit = [quit = bindings_.app.quit, pid] { quit(pid); };
    row.onMoveTo = [move = bindings_.onMoveWindow, closePopover, id](DisplayID display) {
        if (move) move(id, display);
        closePopover();
    };
    row.reveal = {bindings_.onWillShow, bindings_.onDidClose};
    row.otherScreensProvider = bindings_.otherScreensProvider;
    row.onDragEntered = [entered = bindings_.onRowDragEntered, id](const ui::DragPasteboard& pasteboard) {
        if (entered) entered(id, pasteboard);
    };
    row.onDragExited = [exited = bindings_.onRowDragExited, id] {
        if (exited) exited(id);
    };
    row.onDragEnded = [ended = bindings_.onRowDragEnded] {
        if (ended) ended();
    };
    return std::make_unique<GroupRowButton>(services_, window, std::move(row));
}

void GroupPopover::closeClicked(WindowID id) {
    if (bindings_.onClose) bindings_.onClose(id);
    // At once, without waiting for the window to close. Looked up only now: the callback may have changed the rows.
    if (std::erase_if(rows_, [id](const Row& row) { return row->snapshot().id == id; }) > 0) rowsChanged();
}

void GroupPopover::rowsChanged() {
    if (rows_.empty()) {
        popover_->close();
    } else {
        popover_->resize(contentSize(rows_.size()));
    }
}

void GroupPopover::popoverDidClose() {
    outsideClickMonitor_.reset();
    rows_.clear();
    bindings_.onDidClose();
}

}  // namespace morvel
