#include "Bar/Pinned/PinnedItemContextMenu.h"

#include <utility>

namespace morvel::PinnedItemContextMenu {

ui::Menu make(const PinnedItem& item, std::function<void()> onUnpin, std::function<void()> onLaunchNew,
              std::function<void()> onShow) {
    ui::Menu menu{{"Unpin from Morvel", std::move(onUnpin)}};
    if (item.kind == PinnedItem::Kind::App) menu.push_back({"Launch New Instance", std::move(onLaunchNew)});
    menu.push_back(ui::MenuItem::separator());
    menu.push_back({"Show in Finder", std::move(onShow)});
    return menu;
}

}  // namespace morvel::PinnedItemContextMenu
