// The running strip's row of buttons: windows are reordered in it, and windows of other bars are dropped into it.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "Bar/Drag/LiveReorderStackView.h"
#include "Util/Identity.h"

namespace morvel {

/// What the row asks and tells. All are set.
struct RunningStackHooks {
    /// The button of a window that may be reordered here; null when there is none.
    std::function<ui::View*(const WindowID&)> ownButton;
    /// What stands here for a window that can be moved here while it is dragged, or null.
    std::function<std::unique_ptr<ui::View>(const ui::DragPasteboard&)> placeholder;
    /// A window was dropped at an index among the other arranged views; whether it could be taken.
    std::function<bool(const WindowID&, size_t index)> onDrop;
    /// The wheel was turned over the row; positive is down.
    std::function<void(double notches)> onWheel;
};

class RunningStackView : public LiveReorderStackView {
public:
    RunningStackView(MainLoop& mainLoop, double spacing, RunningStackHooks hooks);

    bool acceptsDrag(const ui::DragPasteboard& pasteboard) const override;
    bool performDragOperation(const ui::DragInfo& info) override;
    bool scrollWheel(const ui::WheelEvent& event) override;
    ui::AccessibilityRole accessibilityRole() const override { return ui::AccessibilityRole::List; }

protected:
    ui::View* resolveSource(const ui::DragPasteboard& pasteboard) override;
    std::unique_ptr<ui::View> resolveForeignSource(const ui::DragPasteboard& pasteboard) override;
    ui::View* currentSource() override { return draggedID_ ? hooks_.ownButton(*draggedID_) : nullptr; }
    void sourceCleared() override { draggedID_.reset(); }

private:
    RunningStackHooks hooks_;
    std::optional<WindowID> draggedID_;  // of the own button that is dragged
};

}  // namespace morvel
