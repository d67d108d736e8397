#include "Platform/Linux/UI/Drag/DragImageWindow.h"

#include <xcb/shape.h>

#include <algorithm>

namespace morvel::x11 {

namespace {

// What is below can be made out, where windows can be seen through at all.
constexpr double kOpacity = 0.8;

}  // namespace

DragImageWindow::DragImageWindow(ToolkitContext& context, ViewWindow& window, const ui::View& view)
    : frame_(intersection(pixelsTouched(window.onRoot(view)), window.frame())) {
    frame_.width = std::max(1, frame_.width);
    frame_.height = std::max(1, frame_.height);
    XConnection& connection = context.connection();
    const WindowFormat format = context.compositing().format();
    surface_.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, frame_.width, frame_.height));
    const SurfacePtr painted = window.canvas().painted(
        {frame_.x - window.frame().x, frame_.y - window.frame().y, frame_.width, frame_.height});
    if (painted) {
        cairo_t* cr = cairo_create(surface_.get());
        cairo_set_source_surface(cr, painted.get(), 0, 0);
        cairo_paint_with_alpha(cr, format.isTranslucent ? kOpacity : 1);
        cairo_destroy(cr);
        cairo_surface_flush(surface_.get());
    }

    window_ = std::make_unique<XWindow>(connection, format, frame_, Management::Unmanaged);
    window_->setCardinals(connection.atoms().netWmWindowType, XCB_ATOM_ATOM, {connection.atoms().typeDnd});
    xcb_shape_rectangles(connection.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                         window_->id(), 0, 0, 0, nullptr);
    events_ = connection.observeWindow(window_->id(), [this](const xcb_generic_event_t& event) {
        if (typeOf(event) == XCB_EXPOSE && window_->exposed()) window_->put(surface_.get(), 0, 0);
    });
    window_->map(surface_.get());
}

void DragImageWindow::moveBy(double dx, double dy) {
    window_->setFrame({frame_.x + static_cast<int>(dx), frame_.y + static_cast<int>(dy), frame_.width, frame_.height});
}

}  // namespace morvel::x11
