// One window of this program on the X server: its life, its place, its shape, and sending pixels to it.
#pragma once

#include <cairo.h>
#include <xcb/xcb.h>

#include <string_view>
#include <vector>

#include "Platform/Linux/System/XConnection.h"
#include "Platform/Linux/UI/Compositing.h"
#include "Platform/Linux/UI/DamageRegion.h"

namespace morvel::x11 {

/// Whether the window manager is asked about the window. What is unmanaged stays where it is put.
enum class Management { Managed, Unmanaged };

/// Main thread only. No call waits for the server. The pointer over it is the one of the window below, which
/// window managers keep an arrow in the person's theme.
class XWindow {
public:
    /// `frame` is in the root window's pixels.
    XWindow(XConnection& connection, const WindowFormat& format, const PixelRect& frame, Management management);
    ~XWindow();
    XWindow(const XWindow&) = delete;
    XWindow& operator=(const XWindow&) = delete;

    xcb_window_t id() const { return id_; }
    const WindowFormat& format() const { return format_; }
    bool isMapped() const { return isMapped_; }

    void setFrame(const PixelRect& frame);
    /// Shows the window above the others, with these pixels from the first moment on.
    void map(cairo_surface_t* content);
    /// Asks for the frame and the mapping once more, where the window manager has not done it.
    void askAgain();
    void unmap();
    void raise();

    /// Shows these pixels, the first of which is at this place in the window. Nothing while it is not mapped.
    void put(cairo_surface_t* pixels, int x, int y);

    /// To be called for each exposure. False when what it was mapped with was shown, and is up to date.
    [[nodiscard]] bool exposed();

    /// Cuts the window out of its rectangle; the parts are from the top, row by row.
    void setShape(const std::vector<PixelRect>& parts);

    void setCardinals(xcb_atom_t property, xcb_atom_t type, const std::vector<uint32_t>& values);
    void setText(xcb_atom_t property, xcb_atom_t type, std::string_view text);
    void removeProperty(xcb_atom_t property);

private:
    void create(Management management);
    void createUnseen();
    void configureFrame();
    void send(xcb_drawable_t target, cairo_surface_t* pixels, int x, int y);
    long maxPixelsPerRequest() const;

    XConnection& connection_;
    const xcb_window_t id_;
    const xcb_gcontext_t gc_;  // none without pixels
    const WindowFormat format_;
    PixelRect frame_;
    bool isMapped_ = false;
    bool hasBackground_ = false;         // the pixels it was mapped with
    bool isBackgroundOutdated_ = false;  // something newer was put while it may not have been on the screen yet
    Subscription ownership_;
};

}  // namespace morvel::x11
