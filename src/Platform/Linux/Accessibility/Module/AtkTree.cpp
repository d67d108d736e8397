#include "Platform/Linux/Accessibility/Module/AtkTree.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "Platform/Linux/Accessibility/AccessibleViews.h"

namespace morvel::x11 {

namespace {

constexpr const char* kApplicationName = "Morvel";

AtkRole roleOf(const ui::View& view) {
    switch (view.accessibilityRole()) {
        case ui::AccessibilityRole::Button:
            return ATK_ROLE_PUSH_BUTTON;
        case ui::AccessibilityRole::List:
            return ATK_ROLE_LIST;
        case ui::AccessibilityRole::ListItem:
            return ATK_ROLE_LIST_ITEM;
        case ui::AccessibilityRole::None:
            break;
    }
    switch (view.kind()) {
        case ui::View::Kind::Label:
            return ATK_ROLE_LABEL;
        case ui::View::Kind::Image:
            return ATK_ROLE_IMAGE;
        default:
            return ATK_ROLE_PANEL;
    }
}

/// Where the parent has the view's object, at `from` or behind.
std::optional<size_t> indexOf(AtkObject* parent, const ui::View* view, size_t from) {
    const auto& children = nodeOf(parent).children;
    for (size_t i = from; i < children.size(); ++i)
        if (nodeOf(children[i].get()).view == view) return i;
    return std::nullopt;
}

}  // namespace

AtkTree::AtkTree() : application_(makeApplication(kApplicationName)) {}

AtkTree::~AtkTree() {
    dropGuests(application_.get());
    auto& windows = nodeOf(application_.get()).children;
    while (!windows.empty()) forget(takeChild(application_.get(), windows.size() - 1));
}

void AtkTree::windowChanged(AccessibleWindow& window) {
    update(windowObject(window));
}

void AtkTree::windowRemoved(AccessibleWindow& window) {
    const auto found = windows_.find(&window);
    if (found == windows_.end()) return;
    AtkObject* object = found->second;
    windows_.erase(found);
    const auto& all = nodeOf(application_.get()).children;
    const auto at = std::ranges::find(all, object, [](const auto& each) { return each.get(); });
    forget(takeChild(application_.get(), static_cast<size_t>(at - all.begin())));
}

// Its parent lets go of the object when the window is told to have changed.
void AtkTree::viewWillDetach(const ui::View& view) {
    const auto found = objects_.find(&view);
    if (found == objects_.end()) return;
    AtkNode& node = nodeOf(found->second);
    node.view = nullptr;
    node.window = nullptr;
    node.isDefunct = true;
    objects_.erase(found);
}

void AtkTree::addWindowsOf(void* otherRoot) {
    addGuests(application_.get(), ATK_OBJECT(otherRoot));
}

AtkObject* AtkTree::windowObject(AccessibleWindow& window) {
    AtkObject*& known = windows_[&window];
    if (known) return known;
    AtkObjectPtr object = makeAtkObject(ATK_ROLE_FRAME, window, window.rootView());
    known = object.get();
    objects_[&window.rootView()] = known;
    insertChild(application_.get(), nodeOf(application_.get()).children.size(), std::move(object));
    return known;
}

void AtkTree::update(AtkObject* object) {
    const AtkNode& node = nodeOf(object);
    if (!node.view) return;
    const std::string name = accessibleName(*node.view);
    const bool isWindow = atk_object_get_role(object) == ATK_ROLE_FRAME;
    setName(object, isWindow && name.empty() ? kApplicationName : name);
    setDescription(object, accessibleDescription(*node.view));
    updateChildren(object);
    tellWhetherShown(object);
}

void AtkTree::updateChildren(AtkObject* object) {
    const AtkNode& node = nodeOf(object);
    const std::vector<ui::View*> wanted = accessibleSubviews(*node.view);
    for (size_t i = node.children.size(); i-- > 0;)
        if (!std::ranges::count(wanted, nodeOf(node.children[i].get()).view)) forget(takeChild(object, i));
    for (size_t i = 0; i < wanted.size(); ++i) {
        const auto at = indexOf(object, wanted[i], i);
        if (!at) {
            AtkObjectPtr child = makeAtkObject(roleOf(*wanted[i]), *node.window, *wanted[i]);
            objects_[wanted[i]] = child.get();
            insertChild(object, i, std::move(child));
        } else if (*at != i) {
            insertChild(object, i, takeChild(object, *at));
        }
        update(node.children[i].get());
    }
}

void AtkTree::tellWhetherShown(AtkObject* object) {
    AtkNode& node = nodeOf(object);
    const bool isShown = node.window->isShown();
    if (std::exchange(node.wasShown, isShown) == isShown) return;
    for (const AtkStateType state : {ATK_STATE_VISIBLE, ATK_STATE_SHOWING})
        atk_object_notify_state_change(object, state, isShown);
}

// Whoever still has the object or one below it learns that there is nothing behind it any more.
void AtkTree::forget(AtkObjectPtr object) {
    AtkNode& node = nodeOf(object.get());
    const auto known = objects_.find(node.view);
    // A view that has moved to another parent may have another object by now.
    if (known != objects_.end() && known->second == object.get()) objects_.erase(known);
    node.view = nullptr;
    node.window = nullptr;
    node.isDefunct = true;
    for (AtkObjectPtr& child : std::exchange(node.children, {})) forget(std::move(child));
    atk_object_notify_state_change(object.get(), ATK_STATE_DEFUNCT, TRUE);
}

}  // namespace morvel::x11
