#include "UI/StackView.h"

#include <algorithm>

namespace morvel::ui {

void StackView::setInsets(double leading, double trailing) {
    leading_ = leading;
    trailing_ = trailing;
    intrinsicSizeChanged();
}

void StackView::setGap(const std::optional<Gap>& gap) {
    if (gap_ == gap) return;
    gap_ = gap;
    intrinsicSizeChanged();
}

Size StackView::intrinsicSize() const {
    double along = leading_;
    double across = 0;
    double position = leading_;
    for (const View* view : subviews()) {
        if (view->isHidden()) continue;
        const Size size = view->intrinsicSize();
        const double length = axis_ == Axis::Horizontal ? size.width : size.height;
        along = clearOfGap(position, length) + length;
        position = along + spacing_;
        across = std::max(across, axis_ == Axis::Horizontal ? size.height : size.width);
    }
    along += trailing_;
    return axis_ == Axis::Horizontal ? Size{along, across} : Size{across, along};
}

double StackView::clearOfGap(double position, double length) const {
    return gap_ && position < gap_->end && position + length > gap_->start ? gap_->end : position;
}

std::vector<Rect<ViewSpace>> StackView::arrangedFrames() const {
    std::vector<Rect<ViewSpace>> frames;
    double position = leading_;
    for (const View* view : subviews()) {
        if (view->isHidden()) continue;
        const Size size = view->intrinsicSize();
        const double length = axis_ == Axis::Horizontal ? size.width : size.height;
        position = clearOfGap(position, length);
        if (axis_ == Axis::Horizontal) {
            const double height = std::min(size.height, frame().height);
            frames.push_back({position, (frame().height - height) / 2, size.width, height});
            position += size.width + spacing_;
        } else {
            frames.push_back({0, position, frame().width, size.height});
            position += size.height + spacing_;
        }
    }
    return frames;
}

void StackView::layout() {
    const std::vector<Rect<ViewSpace>> frames = arrangedFrames();
    auto next = frames.begin();
    for (View* view : subviews())
        if (!view->isHidden()) view->setFrame(*next++);
}

}  // namespace morvel::ui
