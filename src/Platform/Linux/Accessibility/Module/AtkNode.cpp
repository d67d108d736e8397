#include "Platform/Linux/Accessibility/Module/AtkNode.h"

#include <algorithm>
#include <cmath>
#include <utility>

// ATK asks through C tables of functions; GLib's macros want these names outside of any namespace.
namespace {

using morvel::Point;
using morvel::Rect;
using morvel::x11::AtkNode;
using morvel::x11::RootSpace;

struct MorvelObject {
    AtkObject parent;
    AtkNode* node;  // made and deleted with the object
};
struct MorvelObjectClass {
    AtkObjectClass parent;
};

void morvel_component_init(AtkComponentIface* interface);
void morvel_action_init(AtkActionIface* interface);
GType morvel_object_get_type();
GType morvel_view_get_type();
GType morvel_button_get_type();

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"  // the macros make more than each type needs
G_DEFINE_TYPE(MorvelObject, morvel_object, ATK_TYPE_OBJECT)

using MorvelView = MorvelObject;
using MorvelViewClass = MorvelObjectClass;
G_DEFINE_TYPE_WITH_CODE(MorvelView, morvel_view, morvel_object_get_type(),
                        G_IMPLEMENT_INTERFACE(ATK_TYPE_COMPONENT, morvel_component_init))

using MorvelButton = MorvelObject;
using MorvelButtonClass = MorvelObjectClass;
G_DEFINE_TYPE_WITH_CODE(MorvelButton, morvel_button, morvel_view_get_type(),
                        G_IMPLEMENT_INTERFACE(ATK_TYPE_ACTION, morvel_action_init))
#pragma GCC diagnostic pop

AtkNode& nodeIn(gpointer object) {
    return *static_cast<MorvelObject*>(object)->node;
}

// --- Every object ---

gint childCount(AtkObject* object) {
    const AtkNode& node = nodeIn(object);
    const gint guests = node.guests ? atk_object_get_n_accessible_children(node.guests.get()) : 0;
    return static_cast<gint>(node.children.size()) + guests;
}

AtkObject* childAt(AtkObject* object, gint index) {
    const AtkNode& node = nodeIn(object);
    const auto own = static_cast<gint>(node.children.size());
    if (index < 0) return nullptr;
    if (index < own) return ATK_OBJECT(g_object_ref(node.children[static_cast<size_t>(index)].get()));
    return node.guests ? atk_object_ref_accessible_child(node.guests.get(), index - own) : nullptr;
}

gint indexInParent(AtkObject* object) {
    AtkObject* parent = atk_object_peek_parent(object);
    if (!parent || nodeIn(object).isDefunct) return -1;
    const auto& siblings = nodeIn(parent).children;
    const auto at = std::ranges::find(siblings, object, [](const auto& sibling) { return sibling.get(); });
    return at == siblings.end() ? -1 : static_cast<gint>(at - siblings.begin());
}

AtkStateSet* states(AtkObject* object) {
    AtkStateSet* set = ATK_OBJECT_CLASS(morvel_object_parent_class)->ref_state_set(object);
    const AtkNode& node = nodeIn(object);
    if (node.isDefunct) {
        atk_state_set_add_state(set, ATK_STATE_DEFUNCT);
        return set;
    }
    for (const AtkStateType state : {ATK_STATE_ENABLED, ATK_STATE_SENSITIVE}) atk_state_set_add_state(set, state);
    // Hidden views have no object, and no window of the bar takes the keyboard's focus.
    if (node.window && node.window->isShown())
        for (const AtkStateType state : {ATK_STATE_VISIBLE, ATK_STATE_SHOWING}) atk_state_set_add_state(set, state);
    return set;
}

void finalizeObject(GObject* object) {
    delete reinterpret_cast<MorvelObject*>(object)->node;
    G_OBJECT_CLASS(morvel_object_parent_class)->finalize(object);
}

void morvel_object_init(MorvelObject* object) {
    object->node = new AtkNode;
}

void morvel_object_class_init(MorvelObjectClass* type) {
    G_OBJECT_CLASS(type)->finalize = finalizeObject;
    AtkObjectClass* atk = ATK_OBJECT_CLASS(type);
    atk->get_n_children = childCount;
    atk->ref_child = childAt;
    atk->get_index_in_parent = indexInParent;
    atk->ref_state_set = states;
}

// --- What has a place ---

void morvel_view_init(MorvelView*) {}
void morvel_view_class_init(MorvelViewClass*) {}

Point<RootSpace> originOf(AtkObject* object, AtkCoordType space) {
    const AtkNode& node = nodeIn(object);
    if (space == ATK_XY_WINDOW) return node.window->frameOnRoot().origin();
    AtkObject* parent = space == ATK_XY_PARENT ? atk_object_peek_parent(object) : nullptr;
    if (parent && nodeIn(parent).view) return node.window->onRoot(*nodeIn(parent).view).origin();
    return {};
}

void extents(AtkComponent* component, gint* x, gint* y, gint* width, gint* height, AtkCoordType space) {
    *x = *y = *width = *height = -1;  // as ATK says that there is no place
    AtkObject* object = ATK_OBJECT(component);
    const AtkNode& node = nodeIn(object);
    if (!node.view) return;
    const Rect<RootSpace> place = node.window->onRoot(*node.view);
    const Point<RootSpace> origin = originOf(object, space);
    *x = static_cast<gint>(std::lround(place.x - origin.x));
    *y = static_cast<gint>(std::lround(place.y - origin.y));
    *width = static_cast<gint>(std::lround(place.width));
    *height = static_cast<gint>(std::lround(place.height));
}

void morvel_component_init(AtkComponentIface* interface) {
    interface->get_extents = extents;
}

// --- What can be pressed ---

void morvel_button_init(MorvelButton*) {}
void morvel_button_class_init(MorvelButtonClass*) {}

gint actionCount(AtkAction* action) {
    return nodeIn(action).isDefunct ? 0 : 1;
}

const gchar* actionName(AtkAction* action, gint index) {
    return index == 0 && actionCount(action) ? "press" : nullptr;
}

gboolean press(AtkAction* action, gint index) {
    morvel::ui::View* view = nodeIn(action).view;
    return index == 0 && view && view->accessibilityPress();
}

void morvel_action_init(AtkActionIface* interface) {
    interface->get_n_actions = actionCount;
    interface->get_name = actionName;
    interface->get_localized_name = actionName;  // what assistive programs are shown
    interface->do_action = press;
}

}  // namespace

namespace morvel::x11 {

AtkNode& nodeOf(AtkObject* object) {
    return nodeIn(object);
}

AtkObjectPtr makeApplication(const char* name) {
    AtkObjectPtr object(ATK_OBJECT(g_object_new(morvel_object_get_type(), nullptr)));
    atk_object_set_role(object.get(), ATK_ROLE_APPLICATION);
    atk_object_set_name(object.get(), name);
    return object;
}

AtkObjectPtr makeAtkObject(AtkRole role, const AccessibleWindow& window, ui::View& view) {
    const bool isButton = view.accessibilityRole() == ui::AccessibilityRole::Button;
    AtkObjectPtr object(
        ATK_OBJECT(g_object_new(isButton ? morvel_button_get_type() : morvel_view_get_type(), nullptr)));
    atk_object_set_role(object.get(), role);
    nodeIn(object.get()).window = &window;
    nodeIn(object.get()).view = &view;
    return object;
}

void setName(AtkObject* object, const std::string& name) {
    const char* old = atk_object_get_name(object);
    if (!old || name != old) atk_object_set_name(object, name.c_str());
}

void setDescription(AtkObject* object, const std::string& description) {
    const char* old = atk_object_get_description(object);
    if (!old || description != old) atk_object_set_description(object, description.c_str());
}

void insertChild(AtkObject* parent, size_t index, AtkObjectPtr child) {
    auto& children = nodeIn(parent).children;
    AtkObject* added = child.get();
    atk_object_set_parent(added, parent);
    children.insert(children.begin() + static_cast<std::ptrdiff_t>(index), std::move(child));
    g_signal_emit_by_name(parent, "children-changed::add", static_cast<guint>(index), added);
}

namespace {

void guestCame(AtkObject*, guint index, AtkObject* guest, gpointer parent) {
    // Its own toolkit has just said that it belongs to that toolkit's root, which assistive programs do not know.
    if (guest) atk_object_set_parent(guest, ATK_OBJECT(parent));
    const auto own = static_cast<guint>(nodeIn(parent).children.size());
    g_signal_emit_by_name(parent, "children-changed::add", own + index, guest);
}

void guestWent(AtkObject*, guint index, AtkObject* guest, gpointer parent) {
    const auto own = static_cast<guint>(nodeIn(parent).children.size());
    g_signal_emit_by_name(parent, "children-changed::remove", own + index, guest);
}

}  // namespace

void addGuests(AtkObject* parent, AtkObject* guests) {
    nodeIn(parent).guests.reset(ATK_OBJECT(g_object_ref(guests)));
    g_signal_connect(guests, "children-changed::add", G_CALLBACK(guestCame), parent);
    g_signal_connect(guests, "children-changed::remove", G_CALLBACK(guestWent), parent);
    const gint count = atk_object_get_n_accessible_children(guests);
    for (gint i = 0; i < count; ++i) {
        const AtkObjectPtr guest(atk_object_ref_accessible_child(guests, i));
        guestCame(guests, static_cast<guint>(i), guest.get(), parent);
    }
}

void dropGuests(AtkObject* parent) {
    const AtkObjectPtr guests = std::move(nodeIn(parent).guests);
    if (guests) g_signal_handlers_disconnect_by_data(guests.get(), parent);
}

AtkObjectPtr takeChild(AtkObject* parent, size_t index) {
    auto& children = nodeIn(parent).children;
    AtkObjectPtr child = std::move(children[index]);
    children.erase(children.begin() + static_cast<std::ptrdiff_t>(index));
    g_signal_emit_by_name(parent, "children-changed::remove", static_cast<guint>(index), child.get());
    return child;
}

}  // namespace morvel::x11
