// A desktop whose bars have pinned items, and words for what is seen and done there.
#pragma once

#include "App/BarDesktop.h"
#include "Bar/Drag/DragHighlightView.h"
#include "Bar/Drag/DragPlaceholderButton.h"
#include "Bar/Pinned/PinnedOverflowRow.h"
#include "Pinned/PinnedItemsCoding.h"
#include "sim/SimDrags.h"

namespace morvel {

class PinnedDesktop : public BarDesktop {
public:
    using BarDesktop::BarDesktop;

    sim::SimDrags& drags() { return toolkit().drags(); }
    PinnedAppsStore& store() { return *delegate().pinnedStore(); }
    /// Stores a folder for each letter, named by it.
    void remember(const std::string& letters) {
        std::vector<PinnedItem> items;
        for (const char c : letters) items.push_back(PinnedItem::folder("/" + std::string(1, c), std::string(1, c)));
        defaults().values["pinnedApps"] = {*PinnedItemsCoding::encode(items)};
    }
    /// From left to right: items by name, running ones with a dot, the overflow button as "^", room for a drag as "#".
    std::string pins(size_t screen = 0) {
        std::string text;
        for (const ui::View* view : launchStrip(screen).arrangedSubviews()) {
            if (const auto* button = dynamic_cast<const PinnedAppButton*>(view))
                text += button->pinnedItem().displayName + (button->runningDot().isHidden() ? "" : ".");
            if (dynamic_cast<const PinnedOverflowButton*>(view)) text += "^";
            if (dynamic_cast<const DragPlaceholderButton*>(view)) text += "#";
        }
        return text;
    }
    PinnedStackView& launchStrip(size_t screen = 0) { return *all<PinnedStackView>(bar(screen)).at(0); }
    PinnedAppButton& pin(const std::string& name, size_t screen = 0) {
        for (PinnedAppButton* button : all<PinnedAppButton>(bar(screen)))
            if (button->pinnedItem().displayName == name) return *button;
        throw std::runtime_error("no pin " + name + " among: " + pins(screen));
    }
    PinnedOverflowButton& overflowButton() { return *all<PinnedOverflowButton>(bar()).at(0); }
    std::vector<PinnedOverflowRow*> rowViews() {
        sim::SimPopover* popover = toolkit().shownPopover();
        return popover ? all<PinnedOverflowRow>(popover->surface.root()) : std::vector<PinnedOverflowRow*>{};
    }
    std::string rows() {
        std::string text;
        for (const PinnedOverflowRow* row : rowViews()) text += row->pinnedItem().displayName;
        return text;
    }
    PinnedOverflowRow& row(size_t index) { return *rowViews().at(index); }
    int placeholders(size_t screen = 0) { return int(all<DragPlaceholderButton>(bar(screen)).size()); }
    bool isHighlighted(size_t screen = 0) {
        const auto views = all<DragHighlightView>(bar(screen));
        return !views.empty() && !views[0]->isHidden();
    }
    std::string order() {
        std::string text;
        for (const PinnedItem& item : store().pinnedItems().value()) text += item.displayName;
        return text;
    }
    int held = 0;  // how many more times the bar was asked to stay shown than it was let go
    void countHolds() {
        auto& view = static_cast<MorvelView&>(bar());
        view.pinReveal = [this] { ++held; };
        view.unpinReveal = [this] { --held; };
    }
};

}  // namespace morvel
