#include "Platform/Linux/UI/Text/KeyboardGrab.h"

namespace morvel::x11 {

namespace {

constexpr int kTries = 10;
constexpr Duration kRetryDelay = std::chrono::milliseconds(100);

}  // namespace

KeyboardGrab::~KeyboardGrab() {
    if (window_ != XCB_NONE) xcb_ungrab_keyboard(context_.connection().get(), XCB_CURRENT_TIME);
}

void KeyboardGrab::take(xcb_window_t window) {
    window_ = window;
    ask(kTries);
}

void KeyboardGrab::ask(int triesLeft) {
    XConnection& connection = context_.connection();
    const auto cookie =
        xcb_grab_keyboard(connection.get(), 0, window_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    connection.whenReplied<xcb_grab_keyboard_reply_t>(
        cookie.sequence, lifetime_.whileAlive([this, triesLeft](const xcb_grab_keyboard_reply_t* reply) {
            if (!reply || reply->status == XCB_GRAB_STATUS_SUCCESS || triesLeft <= 1) return;
            retry_ = context_.mainLoop().after(kRetryDelay, [this, triesLeft] { ask(triesLeft - 1); });
        }));
}

}  // namespace morvel::x11
