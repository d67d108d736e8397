#include "Platform/Linux/UI/XToolkit.h"

#include <utility>

#include "Platform/Linux/UI/PanelWindow.h"
#include "Platform/Linux/UI/PopoverWindow.h"
#include "Platform/Linux/UI/StripWindow.h"

namespace morvel::x11 {

XToolkit::XToolkit(XConnection& connection, MainLoop& mainLoop, XScreens& screens)
    : context_(connection, mainLoop, screens),
      desktopSettings_(connection),
      outsidePresses_(context_),
      dropTarget_(context_),
      desktopChanges_(desktopSettings_.observeChanges([this] { applyAppearance(); })) {
    // Asked for now, so that the first large picture does not wait for the answer.
    xcb_prefetch_maximum_request_length(connection.get());
}

void XToolkit::setAppearance(ui::Appearance appearance) {
    appearance_ = appearance;
    applyAppearance();
}

void XToolkit::applyAppearance() {
    Palette palette = context_.palette();
    switch (appearance_) {
        case ui::Appearance::System:
            palette.appearance = systemAppearance();
            break;
        case ui::Appearance::Light:
            palette.appearance = Appearance::Light;
            break;
        case ui::Appearance::Dark:
            palette.appearance = Appearance::Dark;
            break;
    }
    context_.setPalette(palette);
    if (forms_) forms_->setDark(palette.appearance == Appearance::Dark);
}

Appearance XToolkit::systemAppearance() const {
    if (const auto chosen = appearanceFromEnvironment()) return *chosen;
    const auto theme = desktopSettings_.theme();
    return theme ? appearanceOfTheme(*theme) : Appearance::Light;
}

void XToolkit::setAccessibilityBridge(AccessibilityBridge* bridge) {
    context_.setAccessibilityBridge(bridge);
    if (forms_) forms_->setAccessibilityBridge(bridge);
}

std::unique_ptr<ui::FormWindowPeer> XToolkit::makeFormWindow(ui::Form form) {
    return forms_ ? forms_->makeWindow(std::move(form), context_.palette().appearance == Appearance::Dark) : nullptr;
}

std::unique_ptr<ui::PanelPeer> XToolkit::makePanel(const ui::PanelOptions& options, ui::View& content) {
    if (options.kind == ui::PanelKind::Strip) return std::make_unique<StripWindow>(context_, options.frame, content);
    return std::make_unique<PanelWindow>(context_, options, content);
}

std::unique_ptr<ui::PopoverPeer> XToolkit::makePopover(ui::View& content, std::function<void()> closed,
                                                       ui::PopoverKind kind) {
    return std::make_unique<PopoverWindow>(context_, content, std::move(closed), kind);
}

void XToolkit::popUpMenu(ui::Menu menu, ui::View& anchor, Point<ViewSpace> locationInRoot,
                         std::function<void()> closed) {
    if (menu_) menu_->cancel();
    const ViewWindow* window = context_.windowShowing(anchor);
    if (!window || menu.empty()) return finishLater({nullptr, std::move(closed)});
    const auto ended = [this, closed = std::move(closed)](std::function<void()> action) {
        finishLater({std::move(menu_), [action = std::move(action), closed] {
                         if (action) action();
                         if (closed) closed();
                     }});
    };
    menu_ = std::make_unique<MenuSession>(context_, *this, std::move(menu), window->onRoot(locationInRoot),
                                          window->keptFree(), ended);
}

void XToolkit::beginDrag(ui::View& view, ui::DragItem item, std::function<void(ui::DragOperation)> ended) {
    ViewWindow* window = context_.windowShowing(view);
    if (!window || context_.isMenuOpen())
        return finishLater({nullptr, [ended = std::move(ended)] { ended(ui::DragOperation::None); }});
    if (drag_) drag_->cancel();
    drag_ = std::make_unique<DragSession>(context_, *window, view, std::move(item),
                                          [this, ended = std::move(ended)](ui::DragOperation operation) {
                                              finishLater({std::move(drag_), [ended, operation] { ended(operation); }});
                                          });
}

// In a turn of its own: a menu or drag ends inside its own handling of an event.
void XToolkit::finishLater(Ended ended) {
    ended_.push_back(std::move(ended));
    finish_ = context_.mainLoop().after(Duration{}, [this] { finish(); });
}

void XToolkit::finish() {
    for (Ended& ended : std::exchange(ended_, {})) {
        ended.session.reset();
        if (ended.consequences) ended.consequences();
    }
}

Size XToolkit::textSize(std::string_view text, const ui::Font& font) {
    return context_.layouts().lineSize(text, font);
}

XPtr<xcb_query_pointer_reply_t> XToolkit::queryPointer() {
    xcb_connection_t* c = context_.connection().get();
    return XPtr<xcb_query_pointer_reply_t>(
        xcb_query_pointer_reply(c, xcb_query_pointer(c, context_.connection().root()), nullptr));
}

std::optional<Point<ScreenSpace>> XToolkit::pointerLocation() {
    const auto pointer = queryPointer();
    if (!pointer || !pointer->same_screen) return std::nullopt;
    const Rect<RootSpace> pixel{static_cast<double>(pointer->root_x), static_cast<double>(pointer->root_y), 1, 1};
    return context_.toScreen(pixel).center();
}

bool XToolkit::isMouseButtonDown() {
    constexpr uint16_t kButtons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    const auto pointer = queryPointer();
    return pointer && (pointer->mask & kButtons) != 0;
}

bool XToolkit::reducesMotion() {
    return desktopSettings_.animationsAreOff();
}

Subscription XToolkit::observeOutsidePresses(std::function<void()> pressed) {
    return outsidePresses_.observe(std::move(pressed));
}

}  // namespace morvel::x11
