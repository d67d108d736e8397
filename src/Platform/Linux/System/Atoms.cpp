#include "Platform/Linux/System/Atoms.h"

#include <array>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace morvel::x11 {

namespace {

constexpr std::string_view kCompositorOfScreen = "_NET_WM_CM_S";  // and the screen's number
constexpr std::string_view kSettingsOfScreen = "_XSETTINGS_S";    // likewise

struct Row {
    xcb_atom_t Atoms::*atom;
    std::string_view name;
};

constexpr auto kTable = std::to_array<Row>({
    {&Atoms::utf8String, "UTF8_STRING"},
    {&Atoms::clipboard, "CLIPBOARD"},
    {&Atoms::compoundText, "COMPOUND_TEXT"},
    {&Atoms::manager, "MANAGER"},
    {&Atoms::xsettingsSettings, "_XSETTINGS_SETTINGS"},
    {&Atoms::netSupported, "_NET_SUPPORTED"},
    {&Atoms::netSupportingWmCheck, "_NET_SUPPORTING_WM_CHECK"},
    {&Atoms::netClientList, "_NET_CLIENT_LIST"},
    {&Atoms::netClientListStacking, "_NET_CLIENT_LIST_STACKING"},
    {&Atoms::netActiveWindow, "_NET_ACTIVE_WINDOW"},
    {&Atoms::netCurrentDesktop, "_NET_CURRENT_DESKTOP"},
    {&Atoms::netNumberOfDesktops, "_NET_NUMBER_OF_DESKTOPS"},
    {&Atoms::netWorkarea, "_NET_WORKAREA"},
    {&Atoms::netWmName, "_NET_WM_NAME"},
    {&Atoms::netWmPid, "_NET_WM_PID"},
    {&Atoms::netWmDesktop, "_NET_WM_DESKTOP"},
    {&Atoms::netWmIcon, "_NET_WM_ICON"},
    {&Atoms::morvelInstance, "_MORVEL_INSTANCE"},
    {&Atoms::netFrameExtents, "_NET_FRAME_EXTENTS"},
    {&Atoms::wmState, "WM_STATE"},
    {&Atoms::netWmWindowType, "_NET_WM_WINDOW_TYPE"},
    {&Atoms::netWmState, "_NET_WM_STATE"},
    {&Atoms::netWmUserTime, "_NET_WM_USER_TIME"},
    {&Atoms::netWmUserTimeWindow, "_NET_WM_USER_TIME_WINDOW"},
    {&Atoms::gtkFrameExtents, "_GTK_FRAME_EXTENTS"},
    {&Atoms::netWmWindowOpacity, "_NET_WM_WINDOW_OPACITY"},
    {&Atoms::netWmStrut, "_NET_WM_STRUT"},
    {&Atoms::netWmStrutPartial, "_NET_WM_STRUT_PARTIAL"},
    {&Atoms::motifWmHints, "_MOTIF_WM_HINTS"},
    {&Atoms::netCloseWindow, "_NET_CLOSE_WINDOW"},
    {&Atoms::netMoveresizeWindow, "_NET_MOVERESIZE_WINDOW"},
    {&Atoms::wmChangeState, "WM_CHANGE_STATE"},
    {&Atoms::wmProtocols, "WM_PROTOCOLS"},
    {&Atoms::wmDeleteWindow, "WM_DELETE_WINDOW"},
    {&Atoms::wmTakeFocus, "WM_TAKE_FOCUS"},
    {&Atoms::netWmPing, "_NET_WM_PING"},
    {&Atoms::typeDesktop, "_NET_WM_WINDOW_TYPE_DESKTOP"},
    {&Atoms::typeDock, "_NET_WM_WINDOW_TYPE_DOCK"},
    {&Atoms::typeToolbar, "_NET_WM_WINDOW_TYPE_TOOLBAR"},
    {&Atoms::typeMenu, "_NET_WM_WINDOW_TYPE_MENU"},
    {&Atoms::typeUtility, "_NET_WM_WINDOW_TYPE_UTILITY"},
    {&Atoms::typeSplash, "_NET_WM_WINDOW_TYPE_SPLASH"},
    {&Atoms::typeDialog, "_NET_WM_WINDOW_TYPE_DIALOG"},
    {&Atoms::typeDropdownMenu, "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU"},
    {&Atoms::typePopupMenu, "_NET_WM_WINDOW_TYPE_POPUP_MENU"},
    {&Atoms::typeTooltip, "_NET_WM_WINDOW_TYPE_TOOLTIP"},
    {&Atoms::typeNotification, "_NET_WM_WINDOW_TYPE_NOTIFICATION"},
    {&Atoms::typeCombo, "_NET_WM_WINDOW_TYPE_COMBO"},
    {&Atoms::typeDnd, "_NET_WM_WINDOW_TYPE_DND"},
    {&Atoms::typeNormal, "_NET_WM_WINDOW_TYPE_NORMAL"},
    {&Atoms::stateModal, "_NET_WM_STATE_MODAL"},
    {&Atoms::stateSticky, "_NET_WM_STATE_STICKY"},
    {&Atoms::stateMaximizedVert, "_NET_WM_STATE_MAXIMIZED_VERT"},
    {&Atoms::stateMaximizedHorz, "_NET_WM_STATE_MAXIMIZED_HORZ"},
    {&Atoms::stateSkipTaskbar, "_NET_WM_STATE_SKIP_TASKBAR"},
    {&Atoms::stateSkipPager, "_NET_WM_STATE_SKIP_PAGER"},
    {&Atoms::stateHidden, "_NET_WM_STATE_HIDDEN"},
    {&Atoms::stateFullscreen, "_NET_WM_STATE_FULLSCREEN"},
    {&Atoms::stateAbove, "_NET_WM_STATE_ABOVE"},
    {&Atoms::stateBelow, "_NET_WM_STATE_BELOW"},
    {&Atoms::xdndAware, "XdndAware"},
    {&Atoms::xdndEnter, "XdndEnter"},
    {&Atoms::xdndPosition, "XdndPosition"},
    {&Atoms::xdndStatus, "XdndStatus"},
    {&Atoms::xdndLeave, "XdndLeave"},
    {&Atoms::xdndDrop, "XdndDrop"},
    {&Atoms::xdndFinished, "XdndFinished"},
    {&Atoms::xdndSelection, "XdndSelection"},
    {&Atoms::xdndTypeList, "XdndTypeList"},
    {&Atoms::xdndActionCopy, "XdndActionCopy"},
    {&Atoms::xdndActionMove, "XdndActionMove"},
    {&Atoms::xdndActionLink, "XdndActionLink"},
    {&Atoms::xdndActionPrivate, "XdndActionPrivate"},
    {&Atoms::xdndProxy, "XdndProxy"},
    {&Atoms::textUriList, "text/uri-list"},
    {&Atoms::incr, "INCR"},
});

}  // namespace

Atoms internAtoms(xcb_connection_t* connection, int screenNumber) {
    const auto ask = [connection](std::string_view name) {
        return xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name.data());
    };
    const auto answer = [connection](xcb_intern_atom_cookie_t cookie, xcb_atom_t& atom) {
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(connection, cookie, nullptr), &std::free);
        if (reply) atom = reply->atom;
    };
    std::array<xcb_intern_atom_cookie_t, kTable.size()> cookies;
    for (size_t i = 0; i < kTable.size(); ++i) cookies[i] = ask(kTable[i].name);
    const auto compositor = ask(std::string(kCompositorOfScreen) + std::to_string(screenNumber));
    const auto settings = ask(std::string(kSettingsOfScreen) + std::to_string(screenNumber));
    Atoms atoms;
    for (size_t i = 0; i < kTable.size(); ++i) answer(cookies[i], atoms.*kTable[i].atom);
    answer(compositor, atoms.compositorSelection);
    answer(settings, atoms.settingsSelection);
    return atoms;
}

}  // namespace morvel::x11
