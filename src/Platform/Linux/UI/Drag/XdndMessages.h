// The messages of the drag-and-drop protocol between programs on X, as values.
#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>

#include "Platform/Linux/Screens/RootGeometry.h"

namespace morvel::x11 {

/// The version that we speak, and the oldest in which the messages mean what they mean here.
inline constexpr uint32_t kXdndVersion = 5;
inline constexpr uint32_t kOldestXdndVersion = 3;

/// The five 32-bit items of a client message.
using MessageData = std::array<uint32_t, 5>;

/// Each message names the window of its sender, so that it can be told from a stranger's. What is read from a message
/// is what another program wrote.
struct XdndEnter {
    xcb_window_t source = 0;
    uint32_t version = kXdndVersion;
    bool hasTypeList = false;           ///< more types than three: they are in a property of the source
    std::array<xcb_atom_t, 3> types{};  ///< 0 where there are fewer

    MessageData packed() const;
    static XdndEnter unpacked(const uint32_t* data);
    bool operator==(const XdndEnter&) const = default;
};

struct XdndPosition {
    xcb_window_t source = 0;
    Point<RootSpace> location;
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    xcb_atom_t action = 0;  ///< what the source would like

    MessageData packed() const;
    static XdndPosition unpacked(const uint32_t* data);
    bool operator==(const XdndPosition&) const = default;
};

struct XdndStatus {
    xcb_window_t target = 0;
    bool accepts = false;
    xcb_atom_t action = 0;  ///< what would be done; 0 when it is not accepted

    /// Always asks for each further position: a bar is many small targets side by side.
    MessageData packed() const;
    static XdndStatus unpacked(const uint32_t* data);
    bool operator==(const XdndStatus&) const = default;
};

struct XdndLeave {
    xcb_window_t source = 0;

    MessageData packed() const { return {source}; }
    static XdndLeave unpacked(const uint32_t* data) { return {data[0]}; }
};

struct XdndDrop {
    xcb_window_t source = 0;
    xcb_timestamp_t time = XCB_CURRENT_TIME;  ///< with which the contents are to be asked for

    MessageData packed() const { return {source, 0, time}; }
    static XdndDrop unpacked(const uint32_t* data) { return {data[0], data[2]}; }
};

struct XdndFinished {
    xcb_window_t target = 0;
    bool isAccepted = false;
    xcb_atom_t action = 0;  ///< what was done; 0 when it was not accepted

    MessageData packed() const;
    static XdndFinished unpacked(const uint32_t* data);
    bool operator==(const XdndFinished&) const = default;
};

}  // namespace morvel::x11
