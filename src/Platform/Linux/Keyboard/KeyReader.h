// What presses of keys mean, under the person's keyboard layout and dead keys.
#pragma once

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <memory>
#include <string>

namespace morvel::x11 {

class XConnection;

struct KeyStroke {
    uint32_t symbol = XKB_KEY_NoSymbol;  ///< one of the XKB_KEY constants, or a character's own
    bool isShift = false, isControl = false, isAlt = false;
    std::string text;  ///< UTF-8; empty for a key that types nothing, or not yet
};

/// Implemented by the module. Main thread only.
class KeyReader {
public:
    virtual ~KeyReader() = default;
    /// Of a press. Where the server cannot tell the layout, nothing is typed.
    virtual KeyStroke stroke(const xcb_key_press_event_t& event) = 0;
};

/// For the keyboard's layout as it is now, which asks the server and waits for its answers: a millisecond or two, once
/// for each thing that opens to be typed into. The first time it also brings the libraries that know keyboards into the
/// process. Null, with a line in the log, when the module cannot be used. The connection outlives the reader.
std::unique_ptr<KeyReader> makeKeyReader(XConnection& connection);

/// The module's only entry. Null when its version is not the program's. The caller deletes the reader.
using MakeKeyReader = KeyReader*(const char* version, xcb_connection_t* connection);
inline constexpr const char* kMakeKeyReader = "morvelMakeKeyReader";

}  // namespace morvel::x11
