#include "UI/View.h"

#include <algorithm>
#include <utility>

namespace morvel::ui {

View::~View() {
    removeFromParent();
    if (host_) detach();
    for (View* view : subviews_) view->parent_ = nullptr;
}

void View::insertSubview(View& view, size_t index) {
    if (view.parent_ == this) {
        // A move inside this view keeps the subview's peer and hover state.
        const auto at = std::find(subviews_.begin(), subviews_.end(), &view);
        const size_t target = std::min(index, subviews_.size() - 1);
        if (static_cast<size_t>(at - subviews_.begin()) == target) return;
        subviews_.erase(at);
        subviews_.insert(subviews_.begin() + static_cast<std::ptrdiff_t>(target), &view);
        changed(ViewChange::Order);
        setNeedsLayout();
        return;
    }
    view.removeFromParent();
    const size_t target = std::min(index, subviews_.size());
    subviews_.insert(subviews_.begin() + static_cast<std::ptrdiff_t>(target), &view);
    view.parent_ = this;
    if (host_) {
        view.attach(host_);
        if (target + 1 != subviews_.size()) changed(ViewChange::Order);
    }
    view.needsLayout_ = true;
    setNeedsLayout();
}

void View::removeFromParent() {
    if (!parent_) return;
    if (host_) detach();
    View& parent = *parent_;
    std::erase(parent.subviews_, this);
    parent_ = nullptr;
    parent.setNeedsLayout();
}

bool View::isDescendantOf(const View& ancestor) const {
    for (const View* view = this; view; view = view->parent_)
        if (view == &ancestor) return true;
    return false;
}

void View::setFrame(const Rect<ViewSpace>& frame) {
    if (frame_ == frame) return;
    const bool resized = frame_.size() != frame.size();
    frame_ = frame;
    changed(ViewChange::Frame);
    if (resized) setNeedsLayout();
}

Rect<ViewSpace> View::boundsInRoot() const {
    Rect<ViewSpace> rect = bounds();
    for (const View* view = this; view->parent_; view = view->parent_) {
        rect.x += view->frame_.x;
        rect.y += view->frame_.y;
    }
    return rect;
}

Point<ViewSpace> View::fromRoot(Point<ViewSpace> inRoot) const {
    const Rect<ViewSpace> rect = boundsInRoot();
    return {inRoot.x - rect.x, inRoot.y - rect.y};
}

void View::setHidden(bool hidden) {
    if (std::exchange(hidden_, hidden) == hidden) return;
    changed(ViewChange::Visibility);
    if (parent_) parent_->setNeedsLayout();
}

void View::setAlpha(double alpha) {
    if (std::exchange(alpha_, alpha) != alpha) changed(ViewChange::Visibility);
}

void View::setBackground(const Color& color) {
    if (std::exchange(background_, color) != color) changed(ViewChange::Look);
}

void View::setCornerRadius(double radius) {
    if (std::exchange(cornerRadius_, radius) != radius) changed(ViewChange::Look);
}

void View::setBorder(double width, const Color& color) {
    if (borderWidth_ == width && borderColor_ == color) return;
    borderWidth_ = width;
    borderColor_ = color;
    changed(ViewChange::Look);
}

void View::setClipsToBounds(bool clips) {
    if (std::exchange(clips_, clips) != clips) changed(ViewChange::Look);
}

void View::setTooltip(std::string text) {
    if (tooltip_ == text) return;
    tooltip_ = std::move(text);
    changed(ViewChange::Texts);
}

void View::setAccessibilityLabel(std::string text) {
    if (accessibilityLabel_ == text) return;
    accessibilityLabel_ = std::move(text);
    changed(ViewChange::Texts);
}

void View::setNeedsLayout() {
    needsLayout_ = true;
    for (View* view = parent_; view && !view->descendantNeedsLayout_; view = view->parent_)
        view->descendantNeedsLayout_ = true;
    if (host_) host_->layoutNeeded();
}

void View::intrinsicSizeChanged() {
    setNeedsLayout();
    if (parent_) parent_->setNeedsLayout();
}

void View::layoutIfNeeded() {
    if (needsLayout_) {
        needsLayout_ = false;
        layout();
    }
    if (!descendantNeedsLayout_) return;
    descendantNeedsLayout_ = false;
    for (View* view : subviews_)
        if (view->needsLayout_ || view->descendantNeedsLayout_) view->layoutIfNeeded();
}

View* View::hitTest(Point<ViewSpace> point) {
    if (hidden_ || !bounds().contains(point)) return nullptr;
    for (auto it = subviews_.rbegin(); it != subviews_.rend(); ++it) {
        const Rect<ViewSpace>& frame = (*it)->frame_;
        if (View* hit = (*it)->hitTest({point.x - frame.x, point.y - frame.y})) return hit;
    }
    return acceptsMouse() ? this : nullptr;
}

View* View::dragTarget(Point<ViewSpace> point, const DragPasteboard& pasteboard) {
    if (hidden_ || !bounds().contains(point)) return nullptr;
    for (auto it = subviews_.rbegin(); it != subviews_.rend(); ++it) {
        const Rect<ViewSpace>& frame = (*it)->frame_;
        if (View* hit = (*it)->dragTarget({point.x - frame.x, point.y - frame.y}, pasteboard)) return hit;
    }
    return acceptsDrag(pasteboard) ? this : nullptr;
}

void View::setHost(ViewHost* host) {
    if (host_ == host) return;
    if (host_) detach();
    if (host) attach(host);
}

void View::changed(ViewChange change) {
    if (host_) host_->viewChanged(*this, change);
}

void View::attach(ViewHost* host) {
    host_ = host;
    host->viewAttached(*this);
    for (View* view : subviews_) view->attach(host);
}

void View::detach() {
    for (View* view : subviews_) view->detach();
    host_->viewWillDetach(*this);
    peer_.reset();
    host_ = nullptr;
}

}  // namespace morvel::ui
