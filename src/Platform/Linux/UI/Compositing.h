// Whether a compositing manager blends windows over each other, and the visuals that windows are made with.
#pragma once

#include <xcb/xcb.h>

#include "Platform/Linux/System/XConnection.h"
#include "Util/Signal.h"

namespace morvel::x11 {

/// What a window is created with. Pixels are 32 bits with red in bits 16 to 23; a translucent window has
/// premultiplied alpha in the highest byte.
struct WindowFormat {
    xcb_visualid_t visual = 0;
    uint8_t depth = 0;
    xcb_colormap_t colormap = 0;  ///< owned by the Compositing
    bool isTranslucent = false;
    bool isUnseen = false;  ///< takes input and has no pixels; the rest means nothing then

    bool operator==(const WindowFormat&) const = default;
};

/// Main thread only. Asks the server once when made and is told of changes afterwards, by a server with the fixes
/// extension: compositing managers do not all announce themselves.
class Compositing {
public:
    explicit Compositing(XConnection& connection);
    ~Compositing();
    Compositing(const Compositing&) = delete;
    Compositing& operator=(const Compositing&) = delete;

    /// Translucent while a compositing manager runs. Without one, or without a visual that has alpha, the root
    /// window's own visual: the server composites nothing then.
    WindowFormat format() const { return owner_ && translucent_.depth ? translucent_ : opaque_; }

    [[nodiscard]] Subscription observeChanges(std::function<void()> changed) {
        return changed_.subscribe(std::move(changed));
    }

private:
    void findTranslucentVisual();
    void watchOwner(xcb_atom_t selection);
    void setOwner(xcb_window_t owner);

    XConnection& connection_;
    WindowFormat opaque_;
    WindowFormat translucent_;
    xcb_window_t owner_ = 0;  // 0 while nobody composites
    Signal<> changed_;
    Subscription ownerChanges_;
};

}  // namespace morvel::x11
