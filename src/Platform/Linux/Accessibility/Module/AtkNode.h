// One object of ATK: the application, a window, or a view that means something to a person who does not see it.
#pragma once

#include <atk/atk.h>

#include <memory>
#include <string>
#include <vector>

#include "Platform/Linux/Accessibility/AccessibleWindow.h"

namespace morvel::x11 {

struct UnrefAtkObject {
    void operator()(AtkObject* object) const { g_object_unref(object); }
};
using AtkObjectPtr = std::unique_ptr<AtkObject, UnrefAtkObject>;

/// What an object tells about. Others may keep an object after its view is gone: it is defunct then, has no children,
/// no place and no actions.
struct AtkNode {
    const AccessibleWindow* window = nullptr;  ///< null for the application, and once defunct
    ui::View* view = nullptr;                  ///< null for the application, and once defunct
    bool isDefunct = false;
    bool wasShown = false;               ///< as was told last
    std::vector<AtkObjectPtr> children;  ///< in their order
    AtkObjectPtr guests;                 ///< of the application alone: its children follow our own; null for none
};

/// The node of an object made here; it lives as long as the object.
AtkNode& nodeOf(AtkObject* object);

AtkObjectPtr makeApplication(const char* name);
AtkObjectPtr makeAtkObject(AtkRole role, const AccessibleWindow& window, ui::View& view);

/// Each setter tells listeners when the text is another one.
void setName(AtkObject* object, const std::string& name);
void setDescription(AtkObject* object, const std::string& description);

/// Both tell listeners of the parent.
void insertChild(AtkObject* parent, size_t index, AtkObjectPtr child);
AtkObjectPtr takeChild(AtkObject* parent, size_t index);

/// Shows the children of an object that was not made here after the parent's own, and follows their coming and going
/// until `dropGuests`. Listeners of the parent are told.
void addGuests(AtkObject* parent, AtkObject* guests);
void dropGuests(AtkObject* parent);

}  // namespace morvel::x11
