// What one bar shows: the pinned, running and system strips, kept in line with the stores.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "Bar/BarBackgroundLayer.h"
#include "Bar/BarServices.h"
#include "Bar/CompactTop/CompactTopState.h"
#include "Bar/Drag/DragHighlightView.h"
#include "Bar/LaunchStrip.h"
#include "Bar/Layout/RunningStripArranger.h"
#include "Bar/Layout/WindowProjection.h"
#include "Bar/RebuildSchedule.h"
#include "Bar/RunningStrip.h"
#include "Bar/SystemButtons.h"
#include "NowPlaying/NowPlayingPopover.h"
#include "UI/StackView.h"
#include "UI/View.h"
#include "Util/Lifetime.h"

namespace morvel {

/// Main thread only. However much the stores publish in one turn of the main loop, the bar projects once, and it
/// rebuilds its running strip only when the projection differs from the last one.
class MorvelView : public ui::View {
public:
    MorvelView(const BarServices& services, DisplayID screenID, std::optional<SpaceID> spaceID);

    /// The display this bar is on and the Space that it shows now; absent where Spaces cannot be told.
    void setDisplay(DisplayID screenID, std::optional<SpaceID> spaceID);

    /// What the compact mode leaves of the display's width, and how.
    void setCompactTop(const CompactTopState& state);
    bool isCompactTopExpanded() const;

    /// Projects the windows onto this bar and rebuilds the running strip if the projection changed.
    void rebuildRunningIfNeeded(const WindowMap& windows);
    /// Rebuilds the running strip though the windows have not changed.
    void forceRebuildRunning();

    /// Puts a window at a position in the running order, counted without it; the strip follows in a later turn.
    void moveRunningWindow(const WindowID& id, size_t position);
    /// The window whose button is dragged here from another bar, as far as it can be told.
    std::optional<WindowID> foreignRunningWindowUUID(const ui::DragPasteboard& pasteboard) const;
    /// Tints the whole bar while something from elsewhere is dragged over it.
    void setForeignDragHighlight(bool on);

    /// The order that a person gave the windows, for the bar that takes this one's place.
    const RunningStripArranger& runningOrder() const { return arranger_; }
    void adoptRunningOrder(const RunningStripArranger& former);

    /// Keep an auto-hidden bar shown while a menu or popover of it is open or a drag concerns it, and release it.
    std::function<void()> pinReveal = [] {};
    std::function<void()> unpinReveal = [] {};

    bool acceptsMouse() const override { return true; }
    void mouseDown(const ui::MouseEvent& event) override;
    void rightMouseDown(const ui::MouseEvent& event) override;
    /// Files that no button takes are pinned, wherever on the bar they are dropped.
    bool acceptsDrag(const ui::DragPasteboard& pasteboard) const override;
    ui::DragOperation draggingEntered(const ui::DragInfo& info) override;
    bool performDragOperation(const ui::DragInfo& info) override;
    void windowDragEntered(const ui::DragInfo& info) override;
    void windowDragExited() override;
    void windowDragEnded() override;

protected:
    void layout() override;

private:
    void subscribeToStores();
    void subscribeToSettings();
    RebuildSchedule::Actions rebuildActions();
    void rebuild(Rebuild due);
    void retitle(const WindowSnapshot& window);
    BarReveal reveal();
    void closeLists();
    void placeSystemButtons();
    RunningStrip::Drops drops();
    NowPlayingControls nowPlayingControls();
    void openNowPlaying(ui::View& button, const std::string& bundleID);
    bool runningWindowDropped(const WindowID& id, size_t index);
    void installDragHighlightIfNeeded();
    void setPinnedByDrag(bool pinned);
    ProjectionContext projectionContext() const;
    SpaceQueryCache makeSpaceQueryCache() const;
    double availableWidth() const;
    void rebuildRunning(std::vector<WindowSnapshot> filtered);
    std::optional<ui::StackView::Gap> notchIn(double stripX) const;

    Lifetime lifetime_;  // before the strips, which hand what it guards to menus; it ends when all of this does
    BarServices services_;
    DisplayID screenID_;
    std::optional<SpaceID> spaceID_;
    CompactTopState compactTop_;
    BarBackgroundLayer backgroundLayer_;
    std::unique_ptr<DragHighlightView> dragHighlightView_;  // once it was needed
    bool isForeignDragActive_ = false;
    bool isPinnedByDrag_ = false;  // something is dragged over the bar
    SystemButtons systemButtons_;
    LaunchStrip launchStrip_;
    ui::StackView systemStack_;
    ui::View divider_;
    NowPlayingPopover nowPlayingPopover_;
    RunningStrip running_;
    RunningStripArranger arranger_;
    std::optional<RunningProjection> lastRunningProjection_;
    double lastAvailableWidth_ = 0;  // what the last rebuild had for the running zone; a display may be resized
    RebuildSchedule rebuilds_;
    Subscriptions subscriptions_;
};

}  // namespace morvel
