// One window of another program: what its properties say, and what follows from them.
#pragma once

#include <xcb/xcb.h>

#include <optional>
#include <string>

#include "Platform/Linux/Screens/Monitor.h"
#include "Platform/Linux/Screens/RootGeometry.h"
#include "Util/Identity.h"

namespace morvel::x11 {

enum class ClientType { Normal, Dialog, Utility, Dock, Desktop, Other };

/// Pixels at the four sides.
struct Extents {
    double left = 0, right = 0, top = 0, bottom = 0;
    bool operator==(const Extents&) const = default;
};

/// What a window manager's _NET_WM_DESKTOP says of a window that is on all workspaces.
inline constexpr uint32_t kAllDesktops = 0xFFFFFFFF;

struct ClientWindow {
    xcb_window_t window = XCB_WINDOW_NONE;
    /// Tells two windows apart that had the same number after one another.
    uint64_t serial = 0;
    ProcessID pid;  ///< negative where the process cannot be told; then one per X client

    std::optional<std::string> netName;  ///< the UTF-8 title
    std::string legacyName;
    std::string classInstance, className;  ///< empty where it has none
    std::optional<ClientType> declaredType;
    std::optional<xcb_window_t> transientFor;
    bool skipsTaskbar = false, isFullscreen = false;
    bool saysHidden = false, isIconic = false;  ///< by _NET_WM_STATE and by WM_STATE
    bool takesDeleteRequests = false;
    std::optional<uint32_t> desktop;  ///< kAllDesktops for all; nothing where it is not told
    Rect<RootSpace> content;          ///< without the window manager's decorations and the X border
    Extents decorations;              ///< around the content, by the window manager
    Extents shadow;                   ///< part of the content that is drawn as a shadow, by the client
    std::optional<Strut> strut;

    const std::string& title() const { return netName && !netName->empty() ? *netName : legacyName; }
    ClientType type() const;
    /// What the person sees of it: with decorations, without shadow. Its size is never negative.
    Rect<RootSpace> frame() const;
    /// Where the decorations' corner (the content's, where there are none) is when the person sees `frame`.
    Point<RootSpace> cornerFor(const Rect<RootSpace>& frame) const;
    /// The content's size when the person sees `frame`; at least one pixel each way.
    Size contentSizeFor(const Rect<RootSpace>& frame) const;
    /// Whether it is a window that the person works with, as opposed to desktop furniture.
    bool isAdmissible() const;
};

/// The process of a window. The server knows the process of a local client, and a window may say anything: `told` is
/// believed only where the server does not answer, the window says that it is of this machine, and the process exists.
/// `clientIndex` is the X client's number on the server, which stands in where no process is known.
ProcessID resolvePid(std::optional<int32_t> server, std::optional<int32_t> told, bool isLocal, uint32_t clientIndex,
                     bool (*isAlive)(ProcessID));

}  // namespace morvel::x11
