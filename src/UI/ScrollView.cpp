#include "UI/ScrollView.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace morvel::ui {

namespace {

constexpr double kWheelStep = 56;  // two rows of a list a notch
constexpr double kScrollerWidth = 6;
constexpr double kScrollerInset = 2;  // from the edges
constexpr double kShortestScroller = 24;
constexpr double kScrollerAlpha = 0.28;
constexpr double kGrippedAlpha = 0.5;

}  // namespace

ScrollView::ScrollView(View& document) : document_(document) {
    setClipsToBounds(true);
    addSubview(document_);
    addSubview(scroller_);
    scroller_.setCornerRadius(kScrollerWidth / 2);
    scroller_.show();
}

double ScrollView::maxOffset() const {
    return std::max(0.0, documentHeight() - frame().height);
}

void ScrollView::scrollTo(double offset) {
    const double wanted = std::clamp(offset, 0.0, maxOffset());
    if (std::exchange(offset_, wanted) == wanted) return;
    apply();
    if (onScroll) onScroll();
}

void ScrollView::scrollToVisible(double top, double bottom) {
    // What is higher than the bounds shows its top.
    if (top < offset_ || bottom - top > frame().height) return scrollTo(top);
    if (bottom > offset_ + frame().height) scrollTo(bottom - frame().height);
}

bool ScrollView::scrollWheel(const WheelEvent& event) {
    if (isHostScrolling_ || !std::isfinite(event.notches)) return false;
    const double before = offset_;
    scrollTo(offset_ + event.notches * kWheelStep);
    return offset_ != before;
}

void ScrollView::leaveScrollingToHost() {
    isHostScrolling_ = true;
    scroller_.removeFromParent();
}

void ScrollView::layout() {
    offset_ = std::clamp(offset_, 0.0, maxOffset());
    apply();
    if (onScroll) onScroll();
}

void ScrollView::apply() {
    document_.setFrame({0, -offset_, frame().width, std::max(documentHeight(), frame().height)});
    const double track = frame().height - 2 * kScrollerInset;
    const double most = maxOffset();
    scroller_.setHidden(most <= 0);
    if (most <= 0) return;
    const double length =
        std::clamp(track * frame().height / documentHeight(), std::min(kShortestScroller, track), track);
    scroller_.setFrame({frame().width - kScrollerInset - kScrollerWidth,
                        kScrollerInset + (track - length) * offset_ / most, kScrollerWidth, length});
}

void ScrollView::Scroller::mouseDown(const MouseEvent& event) {
    if (event.button == MouseButton::Left) held_ = Hold{event.location.y, view_.offset_};
    show();
}

void ScrollView::Scroller::mouseDragged(const MouseEvent& event) {
    const double room = view_.frame().height - 2 * kScrollerInset - frame().height;
    if (held_ && room > 0)
        view_.scrollTo(held_->offset + (event.location.y - held_->pointer) * view_.maxOffset() / room);
}

void ScrollView::Scroller::mouseUp(const MouseEvent&) {
    held_.reset();
    show();
}

void ScrollView::Scroller::mouseEntered(const MouseEvent&) {
    isHovered_ = true;
    show();
}

void ScrollView::Scroller::mouseExited() {
    isHovered_ = false;
    show();
}

void ScrollView::Scroller::show() {
    setBackground(kLabelColor.withAlpha(isHovered_ || held_ ? kGrippedAlpha : kScrollerAlpha));
}

}  // namespace morvel::ui
