// The module's entry, and the reader behind it.
#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

#include <array>
#include <cstdlib>
#include <string_view>

#include "Platform/Linux/Keyboard/KeyReader.h"

namespace morvel::x11 {

namespace {

// The state field of key events: eight modifiers, the pointer's buttons, and the layout group.
constexpr uint16_t kModifiers = 0xFF;
constexpr int kGroupShift = 13;
constexpr uint16_t kGroupMask = 3;

/// As the system's own input methods look for the person's language.
const char* typingLocale() {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"})
        if (const char* value = std::getenv(name); value && *value) return value;
    return "C";
}

bool startsSequence(xkb_keysym_t symbol) {
    return symbol == XKB_KEY_Multi_key || (symbol >= XKB_KEY_dead_grave && symbol <= XKB_KEY_dead_greek);
}

xkb_keymap* keymapOf(xcb_connection_t* connection, xkb_context* context) {
    if (!context ||
        !xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                     XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr))
        return nullptr;
    const int32_t device = xkb_x11_get_core_keyboard_device_id(connection);
    return device < 0 ? nullptr
                      : xkb_x11_keymap_new_from_device(context, connection, device, XKB_KEYMAP_COMPILE_NO_FLAGS);
}

class XkbKeyReader : public KeyReader {
public:
    explicit XkbKeyReader(xcb_connection_t* connection);

    KeyStroke stroke(const xcb_key_press_event_t& event) override;

private:
    struct Free {
        void operator()(xkb_context* p) const { xkb_context_unref(p); }
        void operator()(xkb_state* p) const { xkb_state_unref(p); }
        void operator()(xkb_compose_state* p) const { xkb_compose_state_unref(p); }
    };

    /// The text that the symbol ends or is, where a sequence of dead keys may be under way.
    std::string composed(xkb_keysym_t symbol, xkb_keycode_t code);

    std::unique_ptr<xkb_context, Free> context_;
    std::unique_ptr<xkb_state, Free> state_;
    std::unique_ptr<xkb_compose_state, Free> compose_;  // once the first dead key was pressed
    bool wasComposeAsked_ = false;
};

XkbKeyReader::XkbKeyReader(xcb_connection_t* connection) : context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    xkb_keymap* keymap = keymapOf(connection, context_.get());
    if (!keymap) return;
    state_.reset(xkb_state_new(keymap));
    xkb_keymap_unref(keymap);
}

KeyStroke XkbKeyReader::stroke(const xcb_key_press_event_t& event) {
    KeyStroke stroke;
    if (!state_) return stroke;
    // The event tells the modifiers as they were when the key went down.
    xkb_state_update_mask(state_.get(), event.state & kModifiers, 0, 0, 0, 0,
                          (event.state >> kGroupShift) & kGroupMask);
    const auto isActive = [this](const char* modifier) {
        return xkb_state_mod_name_is_active(state_.get(), modifier, XKB_STATE_MODS_EFFECTIVE) > 0;
    };
    stroke.symbol = xkb_state_key_get_one_sym(state_.get(), event.detail);
    stroke.isShift = isActive(XKB_MOD_NAME_SHIFT);
    stroke.isControl = isActive(XKB_MOD_NAME_CTRL);
    stroke.isAlt = isActive(XKB_MOD_NAME_ALT) || isActive(XKB_MOD_NAME_LOGO);
    if (!stroke.isControl && !stroke.isAlt) stroke.text = composed(stroke.symbol, event.detail);
    return stroke;
}

std::string XkbKeyReader::composed(xkb_keysym_t symbol, xkb_keycode_t code) {
    // Reading the table of sequences takes ten milliseconds, and few people have dead keys.
    if (!wasComposeAsked_ && startsSequence(symbol)) {
        wasComposeAsked_ = true;
        xkb_compose_table* table =
            xkb_compose_table_new_from_locale(context_.get(), typingLocale(), XKB_COMPOSE_COMPILE_NO_FLAGS);
        if (table) compose_.reset(xkb_compose_state_new(table, XKB_COMPOSE_STATE_NO_FLAGS));
        if (table) xkb_compose_table_unref(table);
    }
    std::array<char, 64> text{};
    if (compose_ && xkb_compose_state_feed(compose_.get(), symbol) == XKB_COMPOSE_FEED_ACCEPTED) {
        switch (xkb_compose_state_get_status(compose_.get())) {
            case XKB_COMPOSE_COMPOSED:
                xkb_compose_state_get_utf8(compose_.get(), text.data(), text.size());
                return text.data();
            case XKB_COMPOSE_COMPOSING:
            case XKB_COMPOSE_CANCELLED:
                return {};
            case XKB_COMPOSE_NOTHING:
                break;
        }
    }
    xkb_state_key_get_utf8(state_.get(), code, text.data(), text.size());
    return text.data();
}

}  // namespace
}  // namespace morvel::x11

extern "C" __attribute__((visibility("default"))) morvel::x11::KeyReader* morvelMakeKeyReader(
    const char* version, xcb_connection_t* connection) {
    return std::string_view(version) == MORVEL_VERSION ? new morvel::x11::XkbKeyReader(connection) : nullptr;
}
