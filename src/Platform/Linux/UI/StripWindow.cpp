#include "Platform/Linux/UI/StripWindow.h"

#include <utility>

namespace morvel::x11 {

StripWindow::StripWindow(ToolkitContext& context, const Rect<ScreenSpace>& frame, ui::View& content)
    : context_(context),
      frame_(frame),
      window_(std::make_unique<ViewWindow>(context, content, ViewWindowOptions{.isUnseen = true})) {
    place();
    geometry_ = context_.observeGeometry([this] { place(); });
    context_.connection().addRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE);
    restacking_ = context_.connection().observeRoot([this](const xcb_generic_event_t& event) {
        if (typeOf(event) != XCB_PROPERTY_NOTIFY) return;
        const auto& changed = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (changed.atom != context_.connection().atoms().netClientListStacking) return;
        if (window_->window().isMapped()) window_->window().raise();
    });
}

StripWindow::~StripWindow() {
    context_.retire(std::move(window_));
}

void StripWindow::setFrame(const Rect<ScreenSpace>& frame) {
    if (std::exchange(frame_, frame) != frame) place();
}

void StripWindow::place() {
    window_->setFrame(pixelsTouched(context_.toRoot(frame_)));
}

}  // namespace morvel::x11
