#include "Platform/Linux/UI/MenuView.h"

#include <algorithm>
#include <cmath>

namespace morvel::x11 {

namespace {

constexpr ui::Font kFont{13};
constexpr double kRowHeight = 24;
constexpr double kSeparatorHeight = 11;
constexpr double kPadding = 5;       // around all rows
constexpr double kTextInset = 11;    // of a row's texts
constexpr double kTrailingGap = 28;  // between the title and what stands at the right
constexpr double kRowRadius = 5;
constexpr double kMinWidth = 130;
constexpr double kMaxWidth = 420;
constexpr double kDisabledAlpha = 0.6;

std::string trailingText(const ui::MenuItem& item) {
    if (!item.submenu.empty()) return "›";
    if (item.keyEquivalent.empty()) return {};
    std::string key = item.keyEquivalent;
    if (key.size() == 1 && key[0] >= 'a' && key[0] <= 'z') key[0] = static_cast<char>(key[0] - 'a' + 'A');
    return "Ctrl+" + key;
}

}  // namespace

bool isSelectable(const ui::MenuItem& item) {
    return !item.isSeparator && (item.action || !item.submenu.empty());
}

std::optional<size_t> nextSelectable(const ui::Menu& menu, std::optional<size_t> from, Direction direction) {
    const size_t count = menu.size();
    const size_t step = direction == Direction::Down ? 1 : count - 1;  // count - 1 steps ahead are one back
    size_t at = from ? *from : direction == Direction::Down ? count - 1 : 0;
    for (size_t tried = 0; tried < count; ++tried) {
        at = (at + step) % count;
        if (isSelectable(menu[at])) return at;
    }
    return std::nullopt;
}

class MenuView::Row : public ui::View {
public:
    Row(ui::Toolkit& toolkit, const ui::MenuItem& item)
        : item_(item), title_(toolkit, kFont), trailing_(toolkit, kFont) {
        if (item.isSeparator) {
            line_.setBackground(ui::kSeparatorColor);
            addSubview(line_);
            return;
        }
        title_.setText(item.title);
        trailing_.setText(trailingText(item));
        setCornerRadius(kRowRadius);
        setAccessibilityLabel(item.title);
        addSubview(title_);
        addSubview(trailing_);
        setSelected(false);
    }

    double height() const { return item_.isSeparator ? kSeparatorHeight : kRowHeight; }

    double wantedWidth() const {
        if (item_.isSeparator) return 0;
        const double trailing = trailing_.text().empty() ? 0 : kTrailingGap + trailing_.intrinsicSize().width;
        return std::ceil(2 * kTextInset + title_.intrinsicSize().width + trailing);
    }

    void setSelected(bool isSelected) {
        setBackground(isSelected ? ui::kControlAccentColor : ui::kClear);
        const double alpha = isSelectable(item_) ? 1 : kDisabledAlpha;
        title_.setColor(isSelected            ? ui::kWhiteColor
                        : isSelectable(item_) ? ui::kLabelColor
                                              : ui::kSecondaryLabelColor.withAlpha(alpha));
        trailing_.setColor(isSelected ? ui::kWhiteColor : ui::kSecondaryLabelColor);
    }

protected:
    void layout() override {
        const double width = frame().width;
        line_.setFrame({kTextInset, std::floor(kSeparatorHeight / 2), width - 2 * kTextInset, 1});
        const double trailing = std::ceil(trailing_.intrinsicSize().width);
        trailing_.setFrame({width - kTextInset - trailing, 0, trailing, kRowHeight});
        const double end = trailing > 0 ? trailing_.frame().minX() - kTextInset : width - kTextInset;
        title_.setFrame({kTextInset, 0, end - kTextInset, kRowHeight});
    }

private:
    const ui::MenuItem& item_;
    ui::Label title_;
    ui::Label trailing_;
    ui::View line_;
};

MenuView::MenuView(ui::Toolkit& toolkit, const ui::Menu& menu) : menu_(menu) {
    double width = kMinWidth, height = 2 * kPadding;
    for (const ui::MenuItem& item : menu_) {
        rows_.push_back(std::make_unique<Row>(toolkit, item));
        addSubview(*rows_.back());
        width = std::max(width, rows_.back()->wantedWidth() + 2 * kPadding);
        height += rows_.back()->height();
    }
    size_ = {std::min(width, kMaxWidth), height};
}

MenuView::~MenuView() = default;

void MenuView::layout() {
    double y = kPadding;
    for (const auto& row : rows_) {
        row->setFrame({kPadding, y, frame().width - 2 * kPadding, row->height()});
        y += row->height();
    }
}

double MenuView::topPadding() {
    return kPadding;
}

std::optional<size_t> MenuView::itemAt(double y) const {
    for (size_t i = 0; i < rows_.size(); ++i)
        if (y >= rows_[i]->frame().minY() && y < rows_[i]->frame().maxY()) return i;
    return std::nullopt;
}

Rect<ViewSpace> MenuView::itemFrame(size_t index) const {
    const Rect<ViewSpace>& row = rows_[index]->frame();
    return {0, row.y, frame().width, row.height};
}

void MenuView::select(std::optional<size_t> index) {
    if (index && !isSelectable(menu_[*index])) index.reset();
    if (selected_ == index) return;
    if (selected_) rows_[*selected_]->setSelected(false);
    selected_ = index;
    if (selected_) rows_[*selected_]->setSelected(true);
}

}  // namespace morvel::x11
