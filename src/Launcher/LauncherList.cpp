#include "Launcher/LauncherList.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace morvel {

LauncherList::LauncherList(ui::Toolkit& toolkit, IconCache& icons, std::function<void(size_t)> onPick)
    : toolkit_(toolkit), icons_(icons), onPick_(std::move(onPick)) {}

void LauncherList::setEntries(std::vector<const InstalledApp*> entries, std::optional<size_t> selected) {
    entries_ = std::move(entries);
    selected_ = selected;
    intrinsicSizeChanged();
    showRows();
}

void LauncherList::select(std::optional<size_t> place) {
    if (std::exchange(selected_, place) != place) showRows();
}

void LauncherList::setVisible(const Rect<ViewSpace>& visible) {
    if (std::exchange(visible_, visible) != visible) showRows();
}

void LauncherList::showRows() {
    const auto bounded = [this](double place) {
        return static_cast<size_t>(std::clamp(place, 0.0, static_cast<double>(entries_.size())));
    };
    first_ = bounded(std::floor(visible_.minY() / LauncherRow::kHeight));
    end_ = bounded(std::ceil(visible_.maxY() / LauncherRow::kHeight));
    while (rows_.size() < end_ - first_) {
        rows_.push_back(
            std::make_unique<LauncherRow>(toolkit_, icons_, [this](const LauncherRow& row) { rowClicked(row); }));
        addSubview(*rows_.back());
    }
    for (size_t i = 0; i < rows_.size(); ++i) {
        // How many places after the first one the row's is.
        const size_t distance = (i + rows_.size() - first_ % rows_.size()) % rows_.size();
        rows_[i]->setHidden(distance >= end_ - first_);
    }
    for (size_t place = first_; place < end_; ++place) {
        LauncherRow& row = rowFor(place);
        row.setFrame({LauncherRow::kMargin, topOf(place), std::max(0.0, visible_.width - 2 * LauncherRow::kMargin),
                      LauncherRow::kHeight});
        row.show(entries_[place]->displayName, entries_[place]->bundleURL,
                 place == selected_ ? RowState::Selected : RowState::Plain);
    }
}

LauncherRow& LauncherList::rowFor(size_t place) {
    return *rows_[place % rows_.size()];
}

void LauncherList::rowClicked(const LauncherRow& row) {
    for (size_t place = first_; place < end_; ++place)
        if (&rowFor(place) == &row) return onPick_(place);
}

}  // namespace morvel
