// Whether a compositing manager blends windows over each other, and the visuals that windows are made with.
#pragma once

#include <xcb/xcb.h>

#include "Platform/Linux/System/SelectionOwner.h"

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

/// Main thread only.
class Compositing {
public:
    /// The connection outlives it.
    explicit Compositing(XConnection& connection);
    ~Compositing();
    Compositing(const Compositing&) = delete;
    Compositing& operator=(const Compositing&) = delete;

    /// Translucent while a compositing manager runs. Without one, or without a visual that has alpha, the root
    /// window's own visual: the server composites nothing then.
    WindowFormat format() const { return manager_.window() && translucent_.depth ? translucent_ : opaque_; }

    [[nodiscard]] Subscription observeChanges(std::function<void()> changed) {
        return changed_.subscribe(std::move(changed));
    }

private:
    void findTranslucentVisual();
    void managerChanged();

    XConnection& connection_;
    SelectionOwner manager_;
    WindowFormat opaque_;
    WindowFormat translucent_;
    WindowFormat told_;  // the format that listeners know
    Signal<> changed_;
    Subscription managerChanges_;
};

}  // namespace morvel::x11
