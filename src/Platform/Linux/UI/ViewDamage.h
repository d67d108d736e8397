// Works out which pixels of a window changed from what happened to the views shown in it.
#pragma once

#include <unordered_map>

#include "Platform/Linux/UI/DamageRegion.h"
#include "Platform/Linux/UI/ViewNode.h"
#include "UI/View.h"

namespace morvel::x11 {

/// Main thread only. A change damages where the view was at once and where it is when damage is taken, since by then
/// layout is done. Views have a ViewNode while they are known here.
class ViewDamage {
public:
    void viewAttached(ui::View& view) { note(view, Extent::Subtree); }
    void viewWillDetach(ui::View& view);
    void viewChanged(ui::View& view, ui::ViewChange change);
    void damageAll() { isAllDamaged_ = true; }
    void damage(const PixelRect& part) { region_.add(part); }

    /// What is to be painted in a window of these bounds, in which the root view's corner lies at `origin`; nothing is
    /// damaged afterwards.
    DamageRegion take(ui::View& root, Point<ViewSpace> origin, const PixelRect& bounds);

private:
    enum class Extent { View, Subtree };

    void note(ui::View& view, Extent extent);
    void damageShown(ui::View& view, Extent extent);
    void damageCurrent(ui::View& view, Extent extent, Point<ViewSpace> corner, const PixelRect& clip);

    DamageRegion region_;
    std::unordered_map<ui::View*, Extent> changed_;
    bool isAllDamaged_ = true;
};

}  // namespace morvel::x11
