// The X server's numbers for the names this host uses, asked for in one batch when the connection opens.
#pragma once

#include <xcb/xcb.h>

namespace morvel::x11 {

/// Each member is named after its atom: `_NET_WM_NAME` is `netWmName`. The table in Atoms.cpp joins the two; a name
/// that is missing there stays 0, which no property has.
struct Atoms {
    // Text and connection
    xcb_atom_t utf8String = 0, compoundText = 0, clipboard = 0, manager = 0;
    xcb_atom_t morvelInstance = 0;       ///< the selection of the display's bar, and the message that wakes it
    xcb_atom_t compositorSelection = 0;  ///< whose owner blends translucent windows of the connection's screen
    xcb_atom_t settingsSelection = 0;    ///< whose owner publishes the desktop's settings in `xsettingsSettings`
    xcb_atom_t xsettingsSettings = 0;

    // The window manager's root properties
    xcb_atom_t netSupported = 0, netSupportingWmCheck = 0, netClientList = 0, netClientListStacking = 0;
    xcb_atom_t netActiveWindow = 0, netCurrentDesktop = 0, netNumberOfDesktops = 0, netWorkarea = 0;

    // A client's properties
    xcb_atom_t netWmName = 0, netWmPid = 0, netWmDesktop = 0, netWmIcon = 0, netFrameExtents = 0, wmState = 0;
    xcb_atom_t netWmWindowType = 0, netWmState = 0, netWmUserTime = 0, netWmUserTimeWindow = 0;
    xcb_atom_t gtkFrameExtents = 0, netWmWindowOpacity = 0, netWmStrut = 0, netWmStrutPartial = 0, motifWmHints = 0;

    // Requests to the window manager and to clients
    xcb_atom_t netCloseWindow = 0, netMoveresizeWindow = 0, wmChangeState = 0, wmProtocols = 0, wmDeleteWindow = 0;
    xcb_atom_t wmTakeFocus = 0, netWmPing = 0;

    // Window types
    xcb_atom_t typeDesktop = 0, typeDock = 0, typeToolbar = 0, typeMenu = 0, typeUtility = 0, typeSplash = 0;
    xcb_atom_t typeDialog = 0, typeDropdownMenu = 0, typePopupMenu = 0, typeTooltip = 0, typeNotification = 0;
    xcb_atom_t typeCombo = 0, typeDnd = 0, typeNormal = 0;

    // Window states
    xcb_atom_t stateModal = 0, stateSticky = 0, stateMaximizedVert = 0, stateMaximizedHorz = 0, stateSkipTaskbar = 0;
    xcb_atom_t stateSkipPager = 0, stateHidden = 0, stateFullscreen = 0, stateAbove = 0, stateBelow = 0;

    // Drag and drop
    xcb_atom_t xdndAware = 0, xdndEnter = 0, xdndPosition = 0, xdndStatus = 0, xdndLeave = 0, xdndDrop = 0;
    xcb_atom_t xdndFinished = 0, xdndSelection = 0, xdndTypeList = 0, xdndActionCopy = 0, xdndActionMove = 0;
    xcb_atom_t xdndActionLink = 0, xdndActionPrivate = 0, xdndProxy = 0, textUriList = 0, incr = 0;
};

/// One round trip. Whatever the server does not answer stays 0.
Atoms internAtoms(xcb_connection_t* connection, int screenNumber);

}  // namespace morvel::x11
