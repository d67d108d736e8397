#include "Launcher/LauncherView.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Launcher/LauncherFilter.h"
#include "Util/LowerCase.h"

namespace morvel {

namespace {

constexpr double kPadding = 8;  // around the search field
constexpr const char* kPlaceholder = "Search apps…";

}  // namespace

LauncherView::LauncherView(ui::Toolkit& toolkit, IconCache& icons)
    : searchField_(kPlaceholder), list_(toolkit, icons, [this](size_t place) { launch(place); }), scrollView_(list_) {
    searchField_.onChange = [this] { applyFilter(); };
    searchField_.onCommand = [this](ui::TextCommand command) { return commanded(command); };
    scrollView_.onScroll = [this] { list_.setVisible(scrollView_.visibleRect()); };
    addSubview(searchField_);
    addSubview(scrollView_);
}

void LauncherView::setApps(std::vector<InstalledApp> apps) {
    list_.setEntries({}, std::nullopt);  // it points into the former ones
    apps_ = std::move(apps);
    names_.clear();
    for (const InstalledApp& app : apps_) names_.push_back(lowerCased(app.displayName));
    applyFilter();
}

void LauncherView::applyFilter() {
    const std::string wanted = lowerCased(query());
    const std::vector<size_t> kept = LauncherFilter::filtered(wanted, names_);
    const auto best = LauncherFilter::bestMatch(wanted, names_, kept);
    std::vector<const InstalledApp*> entries;
    for (const size_t index : kept) entries.push_back(&apps_[index]);
    list_.setEntries(std::move(entries), best);
    scrollView_.scrollTo(0);
    if (best) scrollView_.scrollToVisible(LauncherList::topOf(*best), LauncherList::topOf(*best + 1));
}

bool LauncherView::commanded(ui::TextCommand command) {
    const double page = std::max(1.0, std::floor(scrollView_.frame().height / LauncherRow::kHeight) - 1);
    switch (command) {
        case ui::TextCommand::MoveUp:
            moveSelection(-1);
            break;
        case ui::TextCommand::MoveDown:
            moveSelection(1);
            break;
        case ui::TextCommand::PageUp:
            moveSelection(-page);
            break;
        case ui::TextCommand::PageDown:
            moveSelection(page);
            break;
        case ui::TextCommand::Confirm:
            if (list_.selected()) launch(*list_.selected());
            break;
        case ui::TextCommand::Cancel:
            if (const auto cancel = onCancel) cancel();
            break;
    }
    return true;
}

void LauncherView::moveSelection(double places) {
    if (filtered().empty()) return;
    // From nothing, either way leads to the first.
    const double from = list_.selected() ? static_cast<double>(*list_.selected()) + places : 0;
    const auto place = static_cast<size_t>(std::clamp(from, 0.0, static_cast<double>(filtered().size() - 1)));
    list_.select(place);
    scrollView_.scrollToVisible(LauncherList::topOf(place), LauncherList::topOf(place + 1));
}

void LauncherView::launch(size_t place) {
    const auto call = std::exchange(onLaunch, nullptr);  // once: a popover may take its time to close
    const InstalledApp app = *filtered().at(place);      // this view may be destroyed on the way
    if (call) call(app);
}

void LauncherView::layout() {
    const double fieldHeight = searchField_.intrinsicSize().height;
    searchField_.setFrame({kPadding, kPadding, std::max(0.0, frame().width - 2 * kPadding), fieldHeight});
    const double top = searchField_.frame().maxY() + kPadding;
    scrollView_.setFrame({0, top, frame().width, std::max(0.0, frame().height - top)});
}

}  // namespace morvel
