#include "Platform/Linux/UI/TooltipWindow.h"

#include <pango/pangocairo.h>

#include "Platform/Linux/UI/Bubble.h"
#include "Platform/Linux/UI/Placement.h"

namespace morvel::x11 {

namespace {

constexpr double kMaxTextWidth = 400;
constexpr double kPaddingX = 8;
constexpr double kPaddingY = 5;
constexpr double kRadius = 5;
constexpr ui::Font kFont{11};

}  // namespace

void TooltipWindow::show(const std::string& text, Point<RootSpace> pointer, const Rect<RootSpace>& avoid) {
    hide();
    const LayoutPtr layout = context_.layouts().paragraph(text, kFont, kMaxTextWidth);
    PangoRectangle logical;
    pango_layout_get_pixel_extents(layout.get(), nullptr, &logical);
    const Size size{logical.width + 2 * kPaddingX, logical.height + 2 * kPaddingY};
    const PixelRect frame =
        pixelsTouched(placeTooltip(pointer.x, avoid, size, monitorAt(pointer, context_.monitors())));

    XConnection& connection = context_.connection();
    window_ = std::make_unique<XWindow>(connection, context_.compositing().format(), frame, Management::Unmanaged);
    const Atoms& atoms = connection.atoms();
    window_->setCardinals(atoms.netWmWindowType, XCB_ATOM_ATOM, {atoms.typeTooltip});

    surface_.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, frame.width, frame.height));
    cairo_t* cr = cairo_create(surface_.get());
    const bool isTranslucent = window_->format().isTranslucent;
    const Bubble bubble{{0, 0, frame.width, frame.height}, kRadius};
    bubble.paint(cr, context_.palette().bubble(isTranslucent), context_.palette().bubbleBorder(), isTranslucent);
    if (!isTranslucent) window_->setShape(bubble.coverage(frame.width, frame.height));
    const ui::RGBA color = context_.palette().resolve(ui::kLabelColor);
    cairo_set_source_rgba(cr, color.red, color.green, color.blue, color.alpha);
    cairo_move_to(cr, kPaddingX - logical.x, kPaddingY);
    pango_cairo_show_layout(cr, layout.get());
    cairo_destroy(cr);
    cairo_surface_flush(surface_.get());

    events_ = connection.observeWindow(window_->id(), [this](const xcb_generic_event_t& event) {
        if (typeOf(event) == XCB_EXPOSE && window_ && window_->exposed()) window_->put(surface_.get(), 0, 0);
    });
    window_->map(surface_.get());
}

void TooltipWindow::hide() {
    events_.reset();
    window_.reset();
    surface_.reset();
}

}  // namespace morvel::x11
