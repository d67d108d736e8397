#include "UI/LayoutAnimator.h"

#include <utility>

namespace morvel::ui {

void LayoutAnimator::willLayout() {
    before_.clear();
    for (const View* view : parent_.subviews()) before_.emplace(view, view->frame());
}

void LayoutAnimator::didLayout(Duration duration) {
    const auto before = std::exchange(before_, {});
    const auto former = std::exchange(ways_, {});
    for (View* view : parent_.subviews()) {
        const Rect<ViewSpace> target = view->frame();
        const Rect<ViewSpace> shown = before.at(view);
        if (shown.isEmpty() || (shown.x == target.x && shown.y == target.y)) continue;
        const auto way = former.find(view);
        if (way != former.end() && way->second.to == target) {
            ways_.emplace(view, way->second);  // nothing new for this one
        } else if (duration > Duration{}) {
            ways_.emplace(view, Way{shown, target});
        } else {
            continue;
        }
        view->setFrame({shown.x, shown.y, target.width, target.height});
    }
    if (ways_.empty()) return animation_.cancel();
    if (duration <= Duration{}) return;  // those on their way keep their time
    for (auto& [view, way] : ways_) way.from = view->frame();
    animation_.start(duration, [this](double progress) { step(progress); });
}

void LayoutAnimator::step(double progress) {
    for (View* view : parent_.subviews()) {
        const auto way = ways_.find(view);
        if (way == ways_.end()) continue;
        const auto& [from, to] = way->second;
        view->setFrame({from.x + (to.x - from.x) * progress, from.y + (to.y - from.y) * progress, to.width, to.height});
    }
    if (progress >= 1) ways_.clear();
}

}  // namespace morvel::ui
