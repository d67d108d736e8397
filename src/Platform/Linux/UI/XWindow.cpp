#include "Platform/Linux/UI/XWindow.h"

#include <unistd.h>
#include <xcb/shape.h>

#include <array>
#include <utility>

#include "Platform/Linux/System/HostName.h"

namespace morvel::x11 {

namespace {

// Larger images go in several requests, so that the server serves others in between.
constexpr long kMaxPixelsPerRequest = 64 * 1024;
constexpr uint32_t kEvents = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_BUTTON_PRESS |
                             XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION |
                             XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW | XCB_EVENT_MASK_KEY_PRESS;

constexpr std::string_view kInstanceAndClass("morvel\0Morvel\0", 14);

uint16_t extent(int length) {
    return static_cast<uint16_t>(std::clamp(length, 1, 32767));
}

}  // namespace

XWindow::XWindow(XConnection& connection, const WindowFormat& format, const PixelRect& frame, Management management)
    : connection_(connection),
      id_(xcb_generate_id(connection.get())),
      gc_(format.isUnseen ? XCB_NONE : xcb_generate_id(connection.get())),
      format_(format),
      frame_(frame) {
    format_.isUnseen ? createUnseen() : create(management);
    ownership_ = connection_.registerOwnWindow(id_);
    // A process id means something only together with the machine it is on.
    setText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, kInstanceAndClass);
    setText(XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING, hostName());
    setCardinals(connection_.atoms().netWmPid, XCB_ATOM_CARDINAL, {static_cast<uint32_t>(getpid())});
}

void XWindow::create(Management management) {
    // No background: the server would show it for a moment wherever the window grows or is uncovered.
    const uint32_t mask = XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_BIT_GRAVITY | XCB_CW_OVERRIDE_REDIRECT |
                          XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
    const std::array<uint32_t, 6> values{
        XCB_BACK_PIXMAP_NONE, 0, XCB_GRAVITY_NORTH_WEST, management == Management::Unmanaged, kEvents,
        format_.colormap};
    xcb_create_window(connection_.get(), format_.depth, id_, connection_.root(), static_cast<int16_t>(frame_.x),
                      static_cast<int16_t>(frame_.y), extent(frame_.width), extent(frame_.height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, format_.visual, mask, values.data());
    xcb_create_gc(connection_.get(), gc_, id_, 0, nullptr);
}

// Always unmanaged: window managers have no use for a window that cannot be seen.
void XWindow::createUnseen() {
    const std::array<uint32_t, 2> values{1, kEvents};
    xcb_create_window(connection_.get(), 0, id_, connection_.root(), static_cast<int16_t>(frame_.x),
                      static_cast<int16_t>(frame_.y), extent(frame_.width), extent(frame_.height), 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values.data());
}

XWindow::~XWindow() {
    if (gc_) xcb_free_gc(connection_.get(), gc_);
    xcb_destroy_window(connection_.get(), id_);
}

void XWindow::setFrame(const PixelRect& frame) {
    if (std::exchange(frame_, frame) != frame) configureFrame();
}

void XWindow::configureFrame() {
    const std::array<uint32_t, 4> values{static_cast<uint32_t>(frame_.x), static_cast<uint32_t>(frame_.y),
                                         extent(frame_.width), extent(frame_.height)};
    xcb_configure_window(connection_.get(), id_,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
}

void XWindow::map(cairo_surface_t* content) {
    if (std::exchange(isMapped_, true)) return;
    if (format_.isUnseen) return askAgain();
    const xcb_pixmap_t pixmap = xcb_generate_id(connection_.get());
    xcb_create_pixmap(connection_.get(), format_.depth, pixmap, id_, extent(frame_.width), extent(frame_.height));
    send(pixmap, content, 0, 0);
    xcb_change_window_attributes(connection_.get(), id_, XCB_CW_BACK_PIXMAP, &pixmap);
    raise();
    xcb_map_window(connection_.get(), id_);
    // The server keeps the pixmap until it is no background any more, which is at the first exposure: a window
    // manager maps later than it is asked to.
    xcb_free_pixmap(connection_.get(), pixmap);
    hasBackground_ = true;
    isBackgroundOutdated_ = false;
}

void XWindow::askAgain() {
    configureFrame();
    raise();
    xcb_map_window(connection_.get(), id_);
}

void XWindow::unmap() {
    if (std::exchange(isMapped_, false)) xcb_unmap_window(connection_.get(), id_);
}

void XWindow::raise() {
    const uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection_.get(), id_, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

void XWindow::put(cairo_surface_t* pixels, int x, int y) {
    if (!isMapped_ || format_.isUnseen) return;
    isBackgroundOutdated_ = hasBackground_;
    send(id_, pixels, x, y);
}

bool XWindow::exposed() {
    if (!std::exchange(hasBackground_, false)) return true;
    const uint32_t none = XCB_BACK_PIXMAP_NONE;
    xcb_change_window_attributes(connection_.get(), id_, XCB_CW_BACK_PIXMAP, &none);
    return isBackgroundOutdated_;
}

// Cairo's rows of whole words have no padding, so that stripes of them are sent as they are.
void XWindow::send(xcb_drawable_t target, cairo_surface_t* pixels, int x, int y) {
    const auto stride = static_cast<size_t>(cairo_image_surface_get_stride(pixels));
    const uint8_t* data = cairo_image_surface_get_data(pixels);
    const PixelRect all{0, 0, cairo_image_surface_get_width(pixels), cairo_image_surface_get_height(pixels)};
    for (const PixelRect& stripe : splitByRows(all, maxPixelsPerRequest()))
        xcb_put_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, target, gc_, extent(stripe.width),
                      extent(stripe.height), static_cast<int16_t>(x), static_cast<int16_t>(y + stripe.y), 0,
                      format_.depth, static_cast<uint32_t>(stride * static_cast<size_t>(stripe.height)),
                      data + stride * static_cast<size_t>(stripe.y));
}

long XWindow::maxPixelsPerRequest() const {
    // The limit is in units of four bytes and includes the request's header.
    const long units = static_cast<long>(xcb_get_maximum_request_length(connection_.get())) - 8;
    return std::min(kMaxPixelsPerRequest, units);
}

void XWindow::setShape(const std::vector<PixelRect>& parts) {
    std::vector<xcb_rectangle_t> rectangles;
    for (const PixelRect& part : parts)
        rectangles.push_back(
            {static_cast<int16_t>(part.x), static_cast<int16_t>(part.y), extent(part.width), extent(part.height)});
    xcb_shape_rectangles(connection_.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_YX_BANDED, id_,
                         0, 0, static_cast<uint32_t>(rectangles.size()), rectangles.data());
}

void XWindow::setCardinals(xcb_atom_t property, xcb_atom_t type, const std::vector<uint32_t>& values) {
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, id_, property, type, 32,
                        static_cast<uint32_t>(values.size()), values.data());
}

void XWindow::setText(xcb_atom_t property, xcb_atom_t type, std::string_view text) {
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, id_, property, type, 8,
                        static_cast<uint32_t>(text.size()), text.data());
}

void XWindow::removeProperty(xcb_atom_t property) {
    xcb_delete_property(connection_.get(), id_, property);
}

}  // namespace morvel::x11
