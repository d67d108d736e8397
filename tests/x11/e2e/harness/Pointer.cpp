#include "harness/Pointer.h"

#include <xcb/xcb_keysyms.h>
#include <xcb/xtest.h>

#include <stdexcept>

namespace morvel::e2e {

void Pointer::fake(uint8_t type, uint8_t detail, Spot spot) {
    auto& connection = desktop_.connection();
    xcb_test_fake_input(connection, type, detail, XCB_CURRENT_TIME, connection.root(), static_cast<int16_t>(spot.x),
                        static_cast<int16_t>(spot.y), 0);
    connection.sync();
}

void Pointer::drag(Spot from, Spot to) {
    moveTo(from);
    press();
    constexpr int kSteps = 12;
    for (int step = 1; step <= kSteps; ++step)
        moveTo({from.x + (to.x - from.x) * step / kSteps, from.y + (to.y - from.y) * step / kSteps});
    release();
}

uint8_t Pointer::codeOf(uint32_t symbol) {
    struct Free {
        void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
    };
    const std::unique_ptr<xcb_key_symbols_t, Free> symbols(xcb_key_symbols_alloc(desktop_.connection()));
    const Owned<xcb_keycode_t> codes(xcb_key_symbols_get_keycode(symbols.get(), symbol));
    if (!codes || codes.get()[0] == XCB_NO_SYMBOL) throw std::runtime_error("no such key");
    return codes.get()[0];
}

void Pointer::key(uint32_t symbol) {
    const uint8_t code = codeOf(symbol);
    fake(XCB_KEY_PRESS, code, {});
    fake(XCB_KEY_RELEASE, code, {});
}

void Pointer::key(uint32_t symbol, uint32_t held) {
    const uint8_t code = codeOf(held);
    fake(XCB_KEY_PRESS, code, {});
    key(symbol);
    fake(XCB_KEY_RELEASE, code, {});
}

void Pointer::type(std::string_view text) {
    for (const char c : text) key(static_cast<uint32_t>(c));  // the symbols of ASCII are its codes
}

}  // namespace morvel::e2e
