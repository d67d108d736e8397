#include "Bar/Pinned/PinnedOverflowList.h"

#include <algorithm>
#include <utility>

#include "Bar/Pinned/ReusedViews.h"

namespace morvel {

namespace {

constexpr double kWidth = 240;
constexpr double kScrollerWidth = 3;
constexpr double kScrollerInset = 2;
constexpr double kScrollerAlpha = 0.3;

}  // namespace

PinnedOverflowList::PinnedOverflowList(MainLoop& mainLoop, DraggedItem draggedItem, MakeRow makeRow, Drop onDrop)
    : mainLoop_(mainLoop),
      makeRow_(std::move(makeRow)),
      onDrop_(std::move(onDrop)),
      stack_(mainLoop, hooks(std::move(draggedItem)), [this](double rows) { scrollBy(rows); }) {
    scroller_.setBackground(ui::kLabelColor.withAlpha(kScrollerAlpha));
    scroller_.setCornerRadius(kScrollerWidth / 2);
    addSubview(stack_);
    addSubview(scroller_);
}

PinnedStackHooks PinnedOverflowList::hooks(DraggedItem draggedItem) {
    return {.draggedItem = std::move(draggedItem),
            .ownView = [this](const std::string& itemID) -> ui::View* {
                const auto isIt = [&](const auto& row) { return row->pinnedItem().isIdentifiedBy(itemID); };
                const auto row = std::ranges::find_if(rows_, isIt);
                return row == rows_.end() ? nullptr : row->get();
            },
            .placeholder = [this](const PinnedItem& item) { return makeRow_(item); },
            .onDrop = [this](const PinnedItem& item, size_t index) { return dropped(item, index); }};
}

void PinnedOverflowList::setItems(std::span<const PinnedItem> items) {
    items_.assign(items.begin(), items.end());
    showRows();
}

size_t PinnedOverflowList::shownRows() const {
    return std::min(items_.size(), kMaxRows);
}

void PinnedOverflowList::scrollBy(double rows) {
    firstRow_ += rows;
    showRows();
}

void PinnedOverflowList::showRows() {
    firstRow_ = std::clamp(firstRow_, 0.0, static_cast<double>(items_.size() - shownRows()));
    reuseViews(rows_, std::span(items_).subspan(firstShown(), shownRows()), makeRow_);
    std::vector<ui::View*> views;
    for (const auto& row : rows_) views.push_back(row.get());
    stack_.arrange(views, 0, 0);
    scroller_.setHidden(items_.size() <= kMaxRows);
    setNeedsLayout();
}

bool PinnedOverflowList::dropped(const PinnedItem& item, size_t indexAmongShown) {
    const auto above = std::span(items_).first(firstShown());
    const auto isOther = [&](const PinnedItem& other) { return other.id() != item.id(); };
    const auto drop = onDrop_;
    return drop(item, static_cast<size_t>(std::ranges::count_if(above, isOther)) + indexAmongShown);
}

Size PinnedOverflowList::intrinsicSize() const {
    const size_t rows = std::min(std::max(stack_.arrangedSubviews().size(), shownRows()), kMaxRows);
    return {kWidth, PinnedOverflowRow::kHeight * static_cast<double>(rows)};
}

void PinnedOverflowList::layout() {
    stack_.setFrame(bounds());
    if (intrinsicSize().height != bounds().height) mainLoop_.post(lifetime_.whileAlive([this] { onSizeChanged(); }));
    const double all = static_cast<double>(std::max<size_t>(items_.size(), 1));
    const double height = bounds().height - 2 * kScrollerInset;
    scroller_.setFrame({bounds().width - kScrollerInset - kScrollerWidth,
                        kScrollerInset + height * static_cast<double>(firstShown()) / all, kScrollerWidth,
                        std::max(height * static_cast<double>(shownRows()) / all, kScrollerWidth)});
}

}  // namespace morvel
