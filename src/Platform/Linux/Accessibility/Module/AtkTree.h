// Keeps the objects of ATK in line with the windows and views that the toolkit tells of.
#pragma once

#include <map>
#include <unordered_map>

#include "Platform/Linux/Accessibility/AccessibilityBridge.h"
#include "Platform/Linux/Accessibility/Module/AtkNode.h"

namespace morvel::x11 {

/// An application whose children are the windows. An object stays the same as long as its view is told about, so that
/// a screen reader does not lose its place.
class AtkTree : public AccessibilityBridge {
public:
    AtkTree();
    ~AtkTree() override;

    AtkObject* application() const { return application_.get(); }

    void windowChanged(AccessibleWindow& window) override;
    void windowRemoved(AccessibleWindow& window) override;
    void viewWillDetach(const ui::View& view) override;
    void addWindowsOf(void* otherRoot) override;

private:
    AtkObject* windowObject(AccessibleWindow& window);
    void update(AtkObject* object);
    void updateChildren(AtkObject* object);
    void tellWhetherShown(AtkObject* object);
    void forget(AtkObjectPtr object);

    AtkObjectPtr application_;
    std::map<const AccessibleWindow*, AtkObject*> windows_;
    std::unordered_map<const ui::View*, AtkObject*> objects_;  // all that have a view
};

}  // namespace morvel::x11
