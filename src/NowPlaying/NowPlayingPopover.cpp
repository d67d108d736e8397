#include "NowPlaying/NowPlayingPopover.h"

#include "Settings/BarEdge.h"

namespace morvel {

NowPlayingPopover::NowPlayingPopover(ButtonServices services)
    : services_(services),
      popover_(
          services.toolkit, root_, [this] { popoverDidClose(); }, ui::PopoverKind::Controls) {}

void NowPlayingPopover::show(ui::View& anchor, const NowPlayingState& state, NowPlayingStore& store,
                             MorvelEdge barEdge) {
    content_ = std::make_unique<NowPlayingPopoverContentView>(services_, store, state);
    content_->setFrame({0, 0, NowPlayingPopoverContentView::kSize.width, NowPlayingPopoverContentView::kSize.height});
    root_.addSubview(*content_);
    anchor_ = &anchor;
    subscription_ = store.state().subscribe(
        [this](const std::optional<NowPlayingState>& now) { now ? content_->update(*now) : popover_.close(); },
        Current::Skip);
    outsidePresses_ = services_.toolkit.observeOutsidePresses([this] { popover_.close(); });
    popover_.show(anchor, popoverEdge(barEdge), NowPlayingPopoverContentView::kSize);
}

void NowPlayingPopover::closeBeside(const ui::View& anchor) {
    if (anchor_ == &anchor) popover_.close();
}

void NowPlayingPopover::popoverDidClose() {
    anchor_ = nullptr;
    subscription_.reset();
    outsidePresses_.reset();
    content_.reset();
    if (const auto closed = onDidClose) closed();
}

}  // namespace morvel
