// The button at the end of the pinned items that opens the list of those that have no place on the bar.
#pragma once

#include <functional>
#include <string>

#include "Platform/MainLoop.h"
#include "Settings/SettingsEnums.h"
#include "Theme/ButtonServices.h"
#include "UI/ButtonView.h"
#include "UI/ImageView.h"

namespace morvel {

/// The provider is set. Any of the others may destroy the button.
struct PinnedOverflowButtonBindings {
    std::function<bool()> bordersProvider;
    std::function<void()> onClick;
    /// A pinned item was dropped on the button; whether there is such an item.
    std::function<bool(const std::string& itemID)> onDemote;
    /// A pinned item has rested over the button for a while.
    std::function<void()> onHoverOpen;
    /// Files were dropped on the button; whether they could be pinned.
    std::function<bool(const ui::DragInfo&)> onFileDrop;
};

class PinnedOverflowButton : public ui::ButtonView {
public:
    /// The glyph points to where the list opens: away from the edge.
    PinnedOverflowButton(ButtonServices services, MainLoop& mainLoop, MorvelEdge edge,
                         PinnedOverflowButtonBindings bindings);

    void refreshBorders() { applyAppearance(); }
    static const char* symbolName(MorvelEdge edge);

    const ui::ImageView& iconView() const { return iconView_; }

    Size intrinsicSize() const override;
    void mouseUp(const ui::MouseEvent& event) override;
    bool acceptsDrag(const ui::DragPasteboard& pasteboard) const override;
    ui::DragOperation draggingEntered(const ui::DragInfo& info) override;
    ui::DragOperation draggingUpdated(const ui::DragInfo& info) override;
    void draggingExited() override { hoverOpenTimer_.reset(); }
    void draggingEnded() override { hoverOpenTimer_.reset(); }
    bool performDragOperation(const ui::DragInfo& info) override;
    bool accessibilityPress() override;

protected:
    void applyAppearance() override;
    void layout() override;

private:
    MainLoop& mainLoop_;
    PinnedOverflowButtonBindings bindings_;
    ui::ImageView iconView_;
    Timer hoverOpenTimer_;  // last, so that it never reaches a half-dead button
};

}  // namespace morvel
