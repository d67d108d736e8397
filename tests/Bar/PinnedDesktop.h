// A desktop whose bars have pinned items, and words for what is seen and done there.
#pragma once

#include "Bar/DragDesktop.h"
#include "Bar/Pinned/PinnedOverflowRow.h"
#include "Pinned/PinnedItemsCoding.h"

namespace morvel {

class PinnedDesktop : public DragDesktop {
public:
    using DragDesktop::DragDesktop;

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
    std::string rows() {
        std::string text;
        for (const PinnedOverflowRow* row : listed<PinnedOverflowRow>()) text += row->pinnedItem().displayName;
        return text;
    }
    PinnedOverflowRow& row(size_t index) { return *listed<PinnedOverflowRow>().at(index); }
    std::string order() {
        std::string text;
        for (const PinnedItem& item : store().pinnedItems().value()) text += item.displayName;
        return text;
    }
};

}  // namespace morvel
