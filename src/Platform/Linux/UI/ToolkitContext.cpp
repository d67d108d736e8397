#include "Platform/Linux/UI/ToolkitContext.h"

#include <cstdlib>
#include <string_view>
#include <utility>

#include "Platform/Linux/UI/TooltipWindow.h"
#include "Platform/Linux/UI/ViewWindow.h"

namespace morvel::x11 {

namespace {

constexpr std::string_view kInspectionProperty = "_MORVEL_VIEWS";

xcb_atom_t inspectionAtom(XConnection& connection) {
    const char* wanted = std::getenv("MORVEL_INSPECT");
    if (!wanted || std::string_view(wanted) != "1") return 0;
    const XPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection.get(), xcb_intern_atom(connection.get(), 0, kInspectionProperty.size(), kInspectionProperty.data()),
        nullptr));
    return reply ? reply->atom : 0;
}

}  // namespace

ToolkitContext::ToolkitContext(XConnection& connection, MainLoop& mainLoop, XScreens& screens)
    : connection_(connection),
      mainLoop_(mainLoop),
      screens_(screens),
      compositing_(connection),
      root_{0, 0, static_cast<double>(connection.screen().width_in_pixels),
            static_cast<double>(connection.screen().height_in_pixels)},
      inspectionProperty_(inspectionAtom(connection)),
      tooltip_(std::make_unique<TooltipWindow>(*this)) {
    connection_.addRootEvents(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    subscriptions_.push_back(connection_.observeRoot([this](const xcb_generic_event_t& event) {
        if (typeOf(event) != XCB_CONFIGURE_NOTIFY) return;
        const auto& configured = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        if (configured.window != connection_.root()) return;
        root_ = {0, 0, static_cast<double>(configured.width), static_cast<double>(configured.height)};
        geometryChanged_.emit();
    }));
    subscriptions_.push_back(screens_.observeChanges([this] { geometryChanged_.emit(); }));
}

ToolkitContext::~ToolkitContext() = default;

void ToolkitContext::setPalette(const Palette& palette) {
    if (palette_ == palette) return;
    palette_ = palette;
    for (ViewWindow* window : windows_) window->canvas().damageAll();
}

std::vector<Rect<RootSpace>> ToolkitContext::monitors() {
    std::vector<Rect<RootSpace>> frames;
    for (const Screen& screen : screens_.screens()) frames.push_back(toRoot(screen.frame));
    return frames;
}

Subscription ToolkitContext::registerWindow(ViewWindow& window) {
    windows_.push_back(&window);
    return Subscription([this, &window] {
        std::erase(windows_, &window);
        if (accessibility_) accessibility_->windowRemoved(window);
    });
}

void ToolkitContext::setAccessibilityBridge(AccessibilityBridge* bridge) {
    accessibility_ = bridge;
    if (!accessibility_) return;
    for (ViewWindow* window : windows_) accessibility_->windowChanged(*window);
}

ViewWindow* ToolkitContext::windowShowing(const ui::View& view) const {
    const auto found = std::ranges::find_if(
        windows_, [&](ViewWindow* window) { return view.host() && &window->canvas() == view.host(); });
    return found == windows_.end() ? nullptr : *found;
}

ViewWindow* ToolkitContext::windowWithID(xcb_window_t id) const {
    const auto found = std::ranges::find_if(windows_, [&](ViewWindow* window) { return window->window().id() == id; });
    return found == windows_.end() ? nullptr : *found;
}

bool ToolkitContext::isPointerInside() const {
    return std::ranges::any_of(windows_, [](const ViewWindow* window) { return window->isPointerInside(); });
}

void ToolkitContext::retire(std::unique_ptr<ViewWindow> window) {
    if (!window) return;
    window->retire();
    retired_.push_back(std::move(window));
    burial_ = mainLoop_.after(Duration{}, [this] { retired_.clear(); });
}

void ToolkitContext::popoverOpened(const ViewWindow& window) {
    openPopover_ = &window;
    tooltip_->hide();
}

void ToolkitContext::popoverWillClose(const ViewWindow* window) {
    if (openPopover_ == window) openPopover_ = nullptr;
}

void ToolkitContext::setMenuOpen(bool isOpen) {
    if (std::exchange(isMenuOpen_, isOpen) == isOpen) return;
    if (isOpen) return tooltip_->hide();
    for (ViewWindow* window : std::vector(windows_)) window->menuClosed();
}

}  // namespace morvel::x11
