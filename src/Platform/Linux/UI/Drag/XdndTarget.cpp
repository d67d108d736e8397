#include "Platform/Linux/UI/Drag/XdndTarget.h"

namespace morvel::x11 {

XdndTarget::XdndTarget(ToolkitContext& context) : context_(context), names_(context.connection()) {
    messages_ = context_.connection().observeEventType(XCB_CLIENT_MESSAGE, [this](const xcb_generic_event_t& event) {
        handle(reinterpret_cast<const xcb_client_message_event_t&>(event));
    });
}

void XdndTarget::handle(const xcb_client_message_event_t& message) {
    const Atoms& atoms = context_.connection().atoms();
    if (message.format != 32 || !context_.windowWithID(message.window)) return;
    const uint32_t* data = message.data.data32;
    if (message.type == atoms.xdndEnter) return entered(message.window, XdndEnter::unpacked(data));
    if (!drag_ || drag_->isOver() || data[0] != drag_->source()) return;
    if (message.type == atoms.xdndPosition) return drag_->positioned(message.window, XdndPosition::unpacked(data));
    if (message.type == atoms.xdndLeave) return drag_->left(message.window);
    if (message.type == atoms.xdndDrop) return drag_->dropped(message.window, XdndDrop::unpacked(data));
}

void XdndTarget::entered(xcb_window_t target, const XdndEnter& message) {
    const XConnection& connection = context_.connection();
    if (message.version < kOldestXdndVersion || message.version > kXdndVersion) return;
    if (!message.source || message.source == connection.root() || connection.isOwnWindow(message.source)) return;
    if (drag_ && (drag_->source() != message.source || drag_->isDropping())) drag_->giveUp();
    if (!drag_ || drag_->isOver())
        drag_ = std::make_unique<ForeignDrag>(context_, names_, message.source, [this] {
            // In a turn of its own: a drag ends inside its own handling of an event.
            burial_ = context_.mainLoop().after(Duration{}, [this] {
                if (drag_ && drag_->isOver()) drag_.reset();
            });
        });
    drag_->entered(target, message);
}

}  // namespace morvel::x11
