#include "Bar/Pinned/PinnedOverflowList.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Bar/Pinned/ReusedViews.h"

namespace morvel {

namespace {

constexpr double kWidth = 240;
constexpr double kRowHeight = PinnedOverflowRow::kHeight;

double heightOf(size_t rows) {
    return kRowHeight * static_cast<double>(rows);
}

}  // namespace

PinnedOverflowList::PinnedOverflowList(MainLoop& mainLoop, DraggedItem draggedItem, MakeRow makeRow, Drop onDrop)
    : mainLoop_(mainLoop),
      makeRow_(std::move(makeRow)),
      onDrop_(std::move(onDrop)),
      stack_(mainLoop, hooks(std::move(draggedItem)),
             [this](double rows) { scrollView_.scrollTo(scrollView_.offset() + rows * kRowHeight); }),
      scrollView_(stack_) {
    scrollView_.onScroll = [this] { scrolled(); };
    addSubview(scrollView_);
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
    showRows(visibleItems());
}

PinnedOverflowList::Range PinnedOverflowList::visibleItems() const {
    const auto bounded = [this](double place) {
        return static_cast<size_t>(std::clamp(place, 0.0, static_cast<double>(items_.size())));
    };
    const Rect<ViewSpace> visible = scrollView_.visibleRect();
    return {bounded(std::floor(visible.minY() / kRowHeight)), bounded(std::ceil(visible.maxY() / kRowHeight))};
}

void PinnedOverflowList::scrolled() {
    if (const Range visible = visibleItems(); visible != shown_) showRows(visible);
    if (intrinsicSize().height != bounds().height) mainLoop_.post(lifetime_.whileAlive([this] { onSizeChanged(); }));
}

void PinnedOverflowList::showRows(Range shown) {
    shown_ = shown;
    reuseViews(rows_, std::span(items_).subspan(shown.first, shown.end - shown.first), makeRow_);
    std::vector<ui::View*> views;
    for (const auto& row : rows_) views.push_back(row.get());
    // In place of the rows that there are not.
    stack_.setInsets(heightOf(shown.first), heightOf(items_.size() - shown.end));
    stack_.arrange(views, 0, 0);
}

bool PinnedOverflowList::dropped(const PinnedItem& item, size_t indexAmongShown) {
    const auto above = std::span(items_).first(shown_.first);
    const auto isOther = [&](const PinnedItem& other) { return other.id() != item.id(); };
    const auto drop = onDrop_;
    return drop(item, static_cast<size_t>(std::ranges::count_if(above, isOther)) + indexAmongShown);
}

Size PinnedOverflowList::intrinsicSize() const {
    // With the room that is made for something that is dragged here from elsewhere.
    return {kWidth, std::min(stack_.intrinsicSize().height, heightOf(kMaxRows))};
}

void PinnedOverflowList::layout() {
    scrollView_.setFrame(bounds());
}

}  // namespace morvel
