#include "Bar/Buttons/CountBadge.h"

#include <algorithm>
#include <cmath>

namespace morvel {

namespace {

constexpr double kHeight = 13;
constexpr double kFontSize = 9;
constexpr double kSideInset = 3;  // clears the round ends without making one digit wider than the badge is high

}  // namespace

CountBadge::CountBadge(ui::Toolkit& toolkit)
    : countLabel_(toolkit, {.size = kFontSize, .weight = ui::FontWeight::Semibold}, ui::TextAlignment::Center) {
    setHidden(true);
    setCornerRadius(kHeight / 2);
    countLabel_.setColor(ui::kWhiteColor);
    addSubview(countLabel_);
}

void CountBadge::setCount(size_t count) {
    const Size before = intrinsicSize();
    countLabel_.setText(std::to_string(count));
    setHidden(count < 2);
    if (intrinsicSize() != before) intrinsicSizeChanged();
}

Size CountBadge::intrinsicSize() const {
    return {std::max(kHeight, std::ceil(countLabel_.intrinsicSize().width + 2 * kSideInset)), kHeight};
}

void CountBadge::layout() {
    const double textHeight = countLabel_.intrinsicSize().height;
    countLabel_.setFrame({0, (frame().height - textHeight) / 2, frame().width, textHeight});
}

}  // namespace morvel
