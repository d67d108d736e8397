// The playback controls that open from the badged button of the player.
#pragma once

#include <functional>
#include <memory>

#include "NowPlaying/NowPlayingPopoverContentView.h"
#include "Settings/SettingsEnums.h"
#include "UI/Popover.h"

namespace morvel {

/// One per bar, owned by it. Closes with a press anywhere else, and when nothing plays any more.
class NowPlayingPopover {
public:
    explicit NowPlayingPopover(ButtonServices services);
    NowPlayingPopover(const NowPlayingPopover&) = delete;
    NowPlayingPopover& operator=(const NowPlayingPopover&) = delete;

    /// Opens beside `anchor`, on the side away from the screen edge, and follows the store while it is open. Open
    /// already, it moves there. The store outlives the popover.
    void show(ui::View& anchor, const NowPlayingState& state, NowPlayingStore& store, MorvelEdge barEdge);
    /// Does nothing while it is open beside another view.
    void closeBeside(const ui::View& anchor);
    bool isShown() const { return popover_.isShown(); }

    /// Null while closed.
    NowPlayingPopoverContentView* content() const { return content_.get(); }

    /// After each closing.
    std::function<void()> onDidClose;

private:
    void popoverDidClose();

    ButtonServices services_;
    ui::View root_;  // what the popover shows, around a content that is new each time
    std::unique_ptr<NowPlayingPopoverContentView> content_;
    const ui::View* anchor_ = nullptr;  // only compared; null while closed
    Subscription subscription_;
    Subscription outsidePresses_;
    ui::Popover popover_;  // last, so that it is destroyed first and never calls a half-dead object
};

}  // namespace morvel
