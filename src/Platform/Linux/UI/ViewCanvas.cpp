#include "Platform/Linux/UI/ViewCanvas.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "Platform/Linux/UI/ViewNode.h"
#include "Platform/Linux/UI/ViewPainter.h"

namespace morvel::x11 {

namespace {

// Of a display at 60 Hz. A faster display would show more frames, but nothing in a bar moves that fast.
constexpr Duration kDisplayPeriod = std::chrono::milliseconds(16);

}  // namespace

ViewCanvas::ViewCanvas(MainLoop& mainLoop, const Palette& palette, TextLayouts& layouts, ui::View& root,
                       Delegate delegate)
    : mainLoop_(mainLoop),
      palette_(palette),
      layouts_(layouts),
      root_(root),
      delegate_(std::move(delegate)),
      filledUntil_(mainLoop.now()) {
    root_.setHost(this);
}

ViewCanvas::~ViewCanvas() {
    release();
}

void ViewCanvas::release() {
    if (isReleased_) return;
    // Another window may show the tree by now.
    if (root_.host() == this) root_.setHost(nullptr);
    isReleased_ = true;
    frame_.reset();
}

void ViewCanvas::setGeometry(int width, int height, Point<ViewSpace> origin) {
    if (width == width_ && height == height_ && origin == origin_) return;
    width_ = width;
    height_ = height;
    origin_ = origin;
    damageAll();
}

void ViewCanvas::setComposited(bool isComposited) {
    if (std::exchange(isComposited_, isComposited) != isComposited) damageAll();
}

void ViewCanvas::damageAll() {
    damage_.damageAll();
    schedule();
}

void ViewCanvas::damage(const PixelRect& part) {
    damage_.damage(part);
    schedule();
}

void ViewCanvas::viewAttached(ui::View& view) {
    view.setPeer(std::make_unique<ViewNode>());
    damage_.viewAttached(view);
    textsChanged_ = true;
    schedule();
}

void ViewCanvas::viewWillDetach(ui::View& view) {
    damage_.viewWillDetach(view);
    delegate_.willDetach(view);
    textsChanged_ = true;
    schedule();
}

void ViewCanvas::viewChanged(ui::View& view, ui::ViewChange change) {
    damage_.viewChanged(view, change);
    textsChanged_ = true;
    schedule();
}

void ViewCanvas::schedule() {
    if (frame_ || isReleased_) return;
    const Duration ahead = filledUntil_ - mainLoop_.now() - kDisplayPeriod;
    frame_ = mainLoop_.after(std::max(ahead, Duration{}), [this] { paintNow(); });
}

bool ViewCanvas::layOut() {
    if (isReleased_) return false;
    root_.layoutIfNeeded();
    // Hover follows the views that moved, and its handlers may ask for layout again, or for the window's end.
    delegate_.laidOut();
    if (isReleased_) return false;
    root_.layoutIfNeeded();
    frame_.reset();  // whatever asked for a frame up to here is in this one
    return !bounds().isEmpty();
}

void ViewCanvas::paintNow() {
    if (!layOut()) return;
    std::vector<PaintedPart> parts;
    const DamageRegion damage = damage_.take(root_, origin_, bounds());
    for (const PixelRect& rect : damage.rects())
        if (SurfacePtr pixels = painted(rect)) parts.push_back({rect, std::move(pixels)});
    if (!parts.empty()) {
        countFrame();
        delegate_.present(parts);
    }
    tellTexts();
}

SurfacePtr ViewCanvas::picture() {
    if (!layOut()) return nullptr;
    static_cast<void>(damage_.take(root_, origin_, bounds()));
    countFrame();
    SurfacePtr pixels = painted(bounds());
    tellTexts();
    return pixels;
}

SurfacePtr ViewCanvas::painted(const PixelRect& part) {
    SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, part.width, part.height));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
    cairo_t* cr = cairo_create(surface.get());
    cairo_translate(cr, -part.x, -part.y);
    if (delegate_.paintBackdrop) delegate_.paintBackdrop(cr);
    ViewPainter(cr, part, palette_, layouts_, shapes_, isComposited_).paint(root_, origin_);
    cairo_destroy(cr);
    cairo_surface_flush(surface.get());
    return surface;
}

void ViewCanvas::countFrame() {
    const Instant now = mainLoop_.now();
    filledUntil_ = std::min(std::max(filledUntil_, now), now + kDisplayPeriod) + kDisplayPeriod;
}

void ViewCanvas::tellTexts() {
    if (std::exchange(textsChanged_, false)) delegate_.changedTexts();
}

}  // namespace morvel::x11
