// Asks another program for the contents of a selection under one type.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Platform/Linux/System/XConnection.h"
#include "Util/Lifetime.h"

namespace morvel::x11 {

/// Larger contents count as none.
inline constexpr size_t kMaxFetchedBytes = 1 << 20;

/// Main thread only. Destroying it gives the question up; whoever does not want to wait for ever does so.
class SelectionFetch {
public:
    /// Nothing: there are no such contents, or they are not bytes, or too many.
    using Fetched = std::function<void(std::optional<std::string> bytes)>;

    /// `time` is that of what the person did. The connection outlives it. `fetched` is called once, in a later turn,
    /// and may destroy the object.
    SelectionFetch(XConnection& connection, xcb_atom_t selection, xcb_atom_t type, xcb_timestamp_t time,
                   Fetched fetched);
    ~SelectionFetch();
    SelectionFetch(const SelectionFetch&) = delete;
    SelectionFetch& operator=(const SelectionFetch&) = delete;

private:
    void handle(const xcb_generic_event_t& event);
    void read();
    void arrived(const xcb_get_property_reply_t* reply);
    void finish(std::optional<std::string> bytes);

    XConnection& connection_;
    const xcb_window_t window_;  // receives the contents as a property
    const xcb_atom_t selection_, type_;
    Fetched fetched_;
    bool isInPieces_ = false;
    std::string bytes_;
    Subscription ownership_;
    Subscription events_;
    Lifetime lifetime_;
};

}  // namespace morvel::x11
