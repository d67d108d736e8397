// Building the items, and the object that their actions are sent to.
#include "Platform/Mac/UI/MacMenu.h"

#include "Platform/Mac/UI/DisplayText.h"
#include "Platform/Mac/apple/AppKit/Selectors.h"
#include "Platform/Mac/objc/Associated.h"
#include "Platform/Mac/objc/Subclass.h"

namespace morvel::mac {

namespace {

constexpr objc::AssociationKey kTargetKey{};

/// The target of all items of one menu and its submenus. An item's tag is the index of its action.
struct MenuTarget {
    static constexpr const char* kClassName = "MorvelMenuTarget";
    std::vector<std::function<void()>> actions;

    void choose(NSMenuItem item) {
        const auto index = static_cast<std::size_t>(item.tag());
        if (index >= actions.size()) return;
        const auto action = actions[index];
        action();
    }

    static NSObject make() {
        using Class = objc::Subclass<MenuTarget>;
        [[maybe_unused]] static const objc::RawClass registered =
            Class("NSObject").adds<&MenuTarget::choose>(selectors::menuItemChosen).registered();
        return Class::create<NSObject>(std::make_unique<MenuTarget>(), selectors::init);
    }
};

NSMenu build(const ui::Menu& items, const NSObject& target);

NSMenuItem buildItem(const ui::MenuItem& item, const NSObject& target) {
    if (item.isSeparator) return NSMenuItem::separator();
    const bool isChoosable = item.action && item.submenu.empty();
    const Selector action = isChoosable ? Selector(selectors::menuItemChosen) : Selector();
    const NSMenuItem made = NSMenuItem::make(NSString::from(displayText(item.title)), action,
                                             NSString::from(displayText(item.keyEquivalent)));
    if (isChoosable) {
        auto& actions = objc::Subclass<MenuTarget>::of(target)->actions;
        made.setTag(static_cast<NSInteger>(actions.size()));
        made.setTarget(target);
        actions.push_back(item.action);
    }
    if (!item.submenu.empty()) made.setSubmenu(build(item.submenu, target));
    made.setEnabled(isChoosable || !item.submenu.empty());
    return made;
}

NSMenu build(const ui::Menu& items, const NSObject& target) {
    const NSMenu menu = NSMenu::make(NSString::from({}));
    menu.setAutoenablesItems(false);
    for (const ui::MenuItem& item : items) menu.addItem(buildItem(item, target));
    return menu;
}

}  // namespace

NSMenu makeMenu(const ui::Menu& items) {
    const NSObject target = MenuTarget::make();
    const NSMenu menu = build(items, target);
    objc::setAssociated(menu, kTargetKey, target);  // items do not keep their target
    return menu;
}

}  // namespace morvel::mac
