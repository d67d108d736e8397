#include "Platform/Linux/UI/ViewDamage.h"

namespace morvel::x11 {

namespace {

bool isSeen(const ui::View& view) {
    return !view.isHidden() && view.alpha() > 0;
}

PixelRect pixelsAt(const ui::View& view, Point<ViewSpace> corner) {
    return pixelsTouched(Rect<ViewSpace>{corner.x, corner.y, view.frame().width, view.frame().height});
}

struct Place {
    Point<ViewSpace> corner;
    PixelRect clip;  ///< by ancestors and the window
    bool isSeen = true;
};

Place placeOf(const ui::View& view, Point<ViewSpace> rootCorner, const PixelRect& bounds) {
    if (!view.parent()) return {rootCorner, bounds, isSeen(view)};
    const ui::View& parent = *view.parent();
    Place place = placeOf(parent, rootCorner, bounds);
    if (parent.clipsToBounds()) place.clip = intersection(place.clip, pixelsAt(parent, place.corner));
    place.corner = {place.corner.x + view.frame().x, place.corner.y + view.frame().y};
    place.isSeen = place.isSeen && isSeen(view);
    return place;
}

}  // namespace

void ViewDamage::viewWillDetach(ui::View& view) {
    changed_.erase(&view);
    // Its subviews, if any are left, were told before it.
    damageShown(view, Extent::View);
}

void ViewDamage::viewChanged(ui::View& view, ui::ViewChange change) {
    if (change == ui::ViewChange::Texts) return;
    note(view, change == ui::ViewChange::Content ? Extent::View : Extent::Subtree);
}

void ViewDamage::note(ui::View& view, Extent extent) {
    damageShown(view, extent);
    const auto [known, isNew] = changed_.try_emplace(&view, extent);
    if (!isNew && extent == Extent::Subtree) known->second = extent;
}

void ViewDamage::damageShown(ui::View& view, Extent extent) {
    if (ViewNode* node = nodeOf(view); node && node->shownIn) {
        region_.add(*node->shownIn);
        node->shownIn.reset();
    }
    if (extent == Extent::View) return;
    for (ui::View* subview : view.subviews()) damageShown(*subview, extent);
}

DamageRegion ViewDamage::take(ui::View& root, Point<ViewSpace> origin, const PixelRect& bounds) {
    if (isAllDamaged_) {
        changed_.clear();
        changed_.emplace(&root, Extent::Subtree);
        region_.add(bounds);
    }
    for (const auto& [view, extent] : std::exchange(changed_, {})) {
        const Place place = placeOf(*view, origin, bounds);
        if (place.isSeen) damageCurrent(*view, extent, place.corner, place.clip);
    }
    isAllDamaged_ = false;
    return std::exchange(region_, {}).clippedTo(bounds);
}

void ViewDamage::damageCurrent(ui::View& view, Extent extent, Point<ViewSpace> corner, const PixelRect& clip) {
    const PixelRect pixels = pixelsAt(view, corner);
    const PixelRect shown = intersection(pixels, clip);
    if (ViewNode* node = nodeOf(view); node && !shown.isEmpty()) {
        node->shownIn = shown;
        region_.add(shown);
    }
    if (extent == Extent::View) return;
    const PixelRect inner = view.clipsToBounds() ? shown : clip;
    for (ui::View* subview : view.subviews())
        if (isSeen(*subview))
            damageCurrent(*subview, extent, {corner.x + subview->frame().x, corner.y + subview->frame().y}, inner);
}

}  // namespace morvel::x11
