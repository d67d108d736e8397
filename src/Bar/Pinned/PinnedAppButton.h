// The button of one pinned item in a bar's launch strip.
#pragma once

#include <functional>

#include "Bar/Pinned/PinnedItemView.h"

namespace morvel {

/// The two providers are set; they are asked whenever the button restyles.
struct PinnedAppButtonBindings {
    PinnedItemActions actions;
    std::function<bool()> bordersProvider;
    std::function<ui::Color()> accentProvider;
    /// Files were dropped on the button; whether they could be pinned. May destroy it.
    std::function<bool(const ui::DragInfo&)> onFileDrop;
};

class PinnedAppButton : public PinnedItemView {
public:
    static constexpr double kWidth = 36;  ///< in points; a button as wide as the tile that keeps its place in a drag

    /// `process` is one that runs the application, if any does.
    PinnedAppButton(ButtonServices services, const PinnedItem& item, ProcessID process,
                    PinnedAppButtonBindings bindings);

    void setRunning(bool running);
    void refreshAccent();
    void refreshBorders() { applyAppearance(); }

    const ui::View& runningDot() const { return runningDot_; }

    Size intrinsicSize() const override;
    /// Files are pinned beside it. What is dragged within the bars is the strip's.
    bool acceptsDrag(const ui::DragPasteboard& pasteboard) const override;
    ui::DragOperation draggingEntered(const ui::DragInfo& info) override;
    bool performDragOperation(const ui::DragInfo& info) override;

protected:
    void applyAppearance() override;
    void layout() override;

private:
    PinnedAppButtonBindings bindings_;
    ui::View runningDot_;
    bool isRunning_ = false;
};

}  // namespace morvel
