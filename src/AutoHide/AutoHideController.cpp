#include "AutoHide/AutoHideController.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "AutoHide/AutoHideGeometry.h"
#include "Settings/BarEdge.h"

namespace morvel {

namespace {

/// How long the pointer must be away before the bar hides.
constexpr Duration kRehideDelay = std::chrono::seconds(1);
/// Long enough to be seen as a movement, short enough not to be waited for.
constexpr Duration kAnimationDuration = std::chrono::milliseconds(200);

}  // namespace

AutoHideController::AutoHideController(const AutoHideServices& services, MorvelEdge edge, AutoHidePanel panel,
                                       std::optional<AutoHidePanel> secondary)
    : services_(services), edge_(edge), panels_{std::move(panel)} {
    if (secondary) panels_.push_back(std::move(*secondary));
}

void AutoHideController::setSecondary(std::optional<AutoHidePanel> secondary) {
    if (panels_.size() > 1) {
        std::erase_if(tracking_, [&](const Tracking& tracking) { return tracking.panel == &panels_.back().panel; });
        panels_.pop_back();
    }
    if (!secondary) return;
    panels_.push_back(std::move(*secondary));
    if (trigger_) installPanelTracking(panels_.back());
    place(Animate::No);  // before it is shown
    if (presence_ == Presence::OnScreen) panels_.back().panel.orderFront();
}

void AutoHideController::start() {
    if (trigger_) return;
    trigger_ = std::make_unique<EdgeRevealTrigger>(
        services_.toolkit, uiEdge(edge_), [this] { return revealStrip(panels_.front().onScreenFrame(), edge_); },
        [this] { stripEntered(); });
    for (const AutoHidePanel& panel : panels_) installPanelTracking(panel);
    isShown_ = false;
    place(Animate::No);
    armTrigger();
}

void AutoHideController::stop() {
    rehideTimer_.reset();
    trigger_.reset();
    tracking_.clear();
    isPointerInside_ = false;
    isShown_ = true;
    place(Animate::No);
}

void AutoHideController::updateGeometry() {
    place(Animate::No);
    if (trigger_) trigger_->updateGeometry();
    layoutPanelTracking();
}

void AutoHideController::setAway(bool isAway) {
    if (std::exchange(isAway_, isAway) == isAway) return;
    place(Animate::No);
    armTrigger();
}

void AutoHideController::pinReveal() {
    ++revealPinCount_;
    reveal();
}

void AutoHideController::unpinReveal() {
    if (revealPinCount_ == 0 || --revealPinCount_ > 0) return;
    // Where the pointer is there but no panel has said that it came (a drag has just ended), none may say that it goes.
    if (!isPointerInside_ || !isPointerOverPanels()) scheduleRehide();
}

void AutoHideController::reveal() {
    if (isShown_) return;
    isShown_ = true;
    armTrigger();
    place(Animate::Yes);
}

void AutoHideController::hide() {
    isShown_ = false;
    place(Animate::Yes);
    armTrigger();
}

/// The pointer may be gone again before the bar has come under it, and the bar would then wait for it for ever.
void AutoHideController::stripEntered() {
    if (isShown_) return;
    reveal();
    scheduleRehide();
}

void AutoHideController::pointerMoved(bool inside) {
    isPointerInside_ = inside;
    inside ? rehideTimer_.reset() : scheduleRehide();
}

void AutoHideController::scheduleRehide() {
    if (!trigger_ || !isShown_ || revealPinCount_ > 0) return;
    rehideTimer_ = services_.mainLoop.after(kRehideDelay, [this] { countdownEnded(); });
}

void AutoHideController::countdownEnded() {
    rehideTimer_.reset();
    if (revealPinCount_ > 0) return;  // the last unpin counts anew
    // The bar came under a pointer that rests, or another program's grab was taken for its leaving.
    if (isPointerOverPanels()) return scheduleRehide();
    hide();
}

void AutoHideController::place(Animate animate) {
    const std::optional<double> distance = slideDistance();
    const bool isOut = isAway_ || (!isShown_ && !distance);
    const bool slides = animate == Animate::Yes && distance && !services_.toolkit.reducesMotion();
    if (isOut && std::exchange(presence_, Presence::OrderedOut) != Presence::OrderedOut)
        for (const AutoHidePanel& p : panels_) p.panel.orderOut();
    for (const AutoHidePanel& p : panels_) {
        const Rect<ScreenSpace> shown = p.onScreenFrame();
        const Rect<ScreenSpace> wanted = isShown_ || isOut ? shown : movedPastEdge(shown, edge_, *distance);
        slides ? p.panel.animateFrame(wanted, kAnimationDuration) : p.panel.setFrame(wanted);
    }
    if (!isOut && std::exchange(presence_, Presence::OnScreen) != Presence::OnScreen)
        for (const AutoHidePanel& p : panels_) p.panel.orderFront();
}

void AutoHideController::armTrigger() {
    if (trigger_) trigger_->setArmed(!isShown_ && !isAway_);
}

std::optional<double> AutoHideController::slideDistance() const {
    double distance = 0;
    for (const AutoHidePanel& p : panels_) distance = std::max(distance, p.onScreenFrame().height);
    const std::vector<Screen> screens = services_.screens.screens();
    for (const AutoHidePanel& p : panels_)
        if (!isOffEveryScreen(movedPastEdge(p.onScreenFrame(), edge_, distance), screens)) return std::nullopt;
    return distance;
}

bool AutoHideController::isPointerOverPanels() const {
    const auto pointer = services_.toolkit.pointerLocation();
    return pointer &&
           std::ranges::any_of(panels_, [&](const AutoHidePanel& p) { return p.onScreenFrame().contains(*pointer); });
}

void AutoHideController::installPanelTracking(const AutoHidePanel& panel) {
    tracking_.push_back(
        {&panel.panel, std::make_unique<PanelMouseObserver>([this](bool inside) { pointerMoved(inside); })});
    panel.panel.content().insertSubview(*tracking_.back().observer, 0);
    layoutPanelTracking();
}

void AutoHideController::layoutPanelTracking() {
    for (const Tracking& tracking : tracking_) tracking.observer->setFrame(tracking.panel->content().bounds());
}

}  // namespace morvel
