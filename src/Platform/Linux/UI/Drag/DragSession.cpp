#include "Platform/Linux/UI/Drag/DragSession.h"

#include <array>
#include <ranges>
#include <utility>

#include "Platform/Linux/UI/ViewWindow.h"

namespace morvel::x11 {

namespace {

constexpr xcb_button_t kDraggingButton = 1;
constexpr uint16_t kPointerEvents = XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;

}  // namespace

// Grabs need a window that can be seen; off the screen is good enough for that.
DragSession::Holder::Holder(XConnection& connection)
    : connection_(connection), id_(xcb_generate_id(connection.get())), ownership_(connection.registerOwnWindow(id_)) {
    const std::array<uint32_t, 2> values{1, kPointerEvents | XCB_EVENT_MASK_KEY_PRESS};
    xcb_create_window(connection_.get(), 0, id_, connection_.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    xcb_map_window(connection_.get(), id_);
}

DragSession::Holder::~Holder() {
    xcb_destroy_window(connection_.get(), id_);
}

DragSession::DragSession(ToolkitContext& context, ViewWindow& window, const ui::View& view, ui::DragItem item,
                         Ended ended)
    : context_(context),
      contents_(DragContents::of(item)),
      start_(window.pointer()),
      ended_(std::move(ended)),
      moved_(start_),
      keys_(context.connection()),
      holder_(context.connection()),
      image_(context, window, view),
      others_(context.connection(), context.mainLoop(), holder_.id(), std::move(item)),
      tracker_(context) {
    grab();
    observe();
}

DragSession::~DragSession() {
    ended_ = nullptr;
    cancel();
}

void DragSession::grab() {
    XConnection& connection = context_.connection();
    const auto pointer = xcb_grab_pointer(connection.get(), 0, holder_.id(), kPointerEvents, XCB_GRAB_MODE_ASYNC,
                                          XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    connection.whenReplied<xcb_grab_pointer_reply_t>(
        pointer.sequence, lifetime_.whileAlive([this](const xcb_grab_pointer_reply_t* reply) {
            if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS) cancel();
        }));
    // Without the keyboard the drag cannot be cancelled by a key, which is no reason not to drag.
    const auto keyboard = xcb_grab_keyboard(connection.get(), 0, holder_.id(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                            XCB_GRAB_MODE_ASYNC);
    xcb_discard_reply(connection.get(), keyboard.sequence);
}

// Whatever the window: what happens before the server has granted the grab is still told to the pressed one, and a
// release among it would never be told again.
void DragSession::observe() {
    XConnection& connection = context_.connection();
    events_.push_back(connection.observeEventType(XCB_MOTION_NOTIFY, [this](const xcb_generic_event_t& event) {
        const auto& motion = reinterpret_cast<const xcb_motion_notify_event_t&>(event);
        moved_ = Point<RootSpace>{static_cast<double>(motion.root_x), static_cast<double>(motion.root_y)};
    }));
    events_.push_back(connection.observeEventType(XCB_BUTTON_RELEASE, [this](const xcb_generic_event_t& event) {
        const auto& release = reinterpret_cast<const xcb_button_release_event_t&>(event);
        if (release.detail != kDraggingButton || state_ != State::Dragging) return;
        moved_ = Point<RootSpace>{static_cast<double>(release.root_x), static_cast<double>(release.root_y)};
        drop();
    }));
    events_.push_back(connection.observeEventType(XCB_KEY_PRESS, [this](const xcb_generic_event_t& event) {
        const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
        if (keys_.meaning(key) == MenuKey::Cancel) cancel();
    }));
    events_.push_back(connection.observeBatchEnd([this] { follow(); }));
}

void DragSession::follow() {
    if (state_ != State::Dragging || !moved_) return;
    const Point<RootSpace> location = *std::exchange(moved_, std::nullopt);
    image_.moveBy(location.x - start_.x, location.y - start_.y);
    if (ViewWindow* window = windowAt(location)) {
        others_.leave();
        tracker_.moved(*window, location, contents_);
    } else {
        tracker_.exited();
        others_.movedTo(location);
    }
}

// What was shown last is in front.
ViewWindow* DragSession::windowAt(Point<RootSpace> location) const {
    for (ViewWindow* window : std::views::reverse(context_.windows()))
        if (window->takesDrags() && window->frameOnRoot().contains(location)) return window;
    return nullptr;
}

void DragSession::drop() {
    follow();
    if (state_ != State::Dragging) return;
    state_ = State::Dropped;
    release();
    if (tracker_.isInside()) return end(tracker_.dropped(contents_));
    others_.drop([this](ui::DragOperation operation) { end(operation); });
}

void DragSession::cancel() {
    if (state_ == State::Over) return;
    others_.leave();
    end(ui::DragOperation::None);
}

// The picture goes, and the person has the pointer again, whatever the destination still has to do.
void DragSession::release() {
    image_.hide();
    xcb_ungrab_pointer(context_.connection().get(), XCB_CURRENT_TIME);
    xcb_ungrab_keyboard(context_.connection().get(), XCB_CURRENT_TIME);
}

void DragSession::end(ui::DragOperation operation) {
    const State before = std::exchange(state_, State::Over);
    if (before == State::Over) return;
    if (before == State::Dragging) release();
    tracker_.ended();
    if (ended_) ended_(operation);
}

}  // namespace morvel::x11
