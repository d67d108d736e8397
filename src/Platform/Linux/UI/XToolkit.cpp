#include "Platform/Linux/UI/XToolkit.h"

#include <utility>

#include "Platform/Linux/UI/PanelWindow.h"
#include "Platform/Linux/UI/PopoverWindow.h"

namespace morvel::x11 {

XToolkit::XToolkit(XConnection& connection, MainLoop& mainLoop, XScreens& screens)
    : context_(connection, mainLoop, screens), outsidePresses_(context_), dropTarget_(context_) {
    // Asked for now, so that the first large picture does not wait for the answer.
    xcb_prefetch_maximum_request_length(connection.get());
}

XToolkit::~XToolkit() = default;

void XToolkit::setAppearance(ui::Appearance appearance) {
    Palette palette = context_.palette();
    switch (appearance) {
        case ui::Appearance::System:
            palette.appearance = paletteFromEnvironment().appearance;
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

std::unique_ptr<ui::FormWindowPeer> XToolkit::makeFormWindow(ui::Form form) {
    return forms_ ? forms_->makeWindow(std::move(form), context_.palette().appearance == Appearance::Dark) : nullptr;
}

std::unique_ptr<ui::PanelPeer> XToolkit::makePanel(const ui::PanelOptions& options, ui::View& content) {
    return std::make_unique<PanelWindow>(context_, options, content);
}

std::unique_ptr<ui::PopoverPeer> XToolkit::makePopover(ui::View& content, std::function<void()> closed,
                                                           ui::PopoverFocus) {
    return std::make_unique<PopoverWindow>(context_, content, std::move(closed));
}

void XToolkit::popUpMenu(ui::Menu menu, ui::View& anchor, Point<ViewSpace> locationInRoot,
                         std::function<void()> closed) {
    if (menu_) menu_->cancel();
    const ViewWindow* window = context_.windowShowing(anchor);
    if (!window || menu.empty()) return menuEnded({nullptr, std::move(closed), nullptr});
    menu_ = std::make_unique<MenuSession>(context_, *this, std::move(menu), window->onRoot(locationInRoot),
                                          window->keptFree(),
                                          [this, closed = std::move(closed)](std::function<void()> action) {
                                              menuEnded({std::move(action), closed, std::move(menu_)});
                                          });
}

// In a turn of its own: the menu ends inside its own handling of an event.
void XToolkit::menuEnded(EndedMenu ended) {
    endedMenus_.push_back(std::move(ended));
    finish_ = context_.mainLoop().after(Duration{}, [this] { finishMenus(); });
}

void XToolkit::finishMenus() {
    for (EndedMenu& ended : std::exchange(endedMenus_, {})) {
        ended.session.reset();
        if (ended.action) ended.action();
        if (ended.closed) ended.closed();
    }
}

void XToolkit::beginDrag(ui::View& view, ui::DragItem item, std::function<void(ui::DragOperation)> ended) {
    ViewWindow* window = context_.windowShowing(view);
    if (!window || context_.isMenuOpen()) return dragEnded({ui::DragOperation::None, std::move(ended), nullptr});
    if (drag_) drag_->cancel();
    drag_ = std::make_unique<DragSession>(context_, *window, view, std::move(item),
                                          [this, ended = std::move(ended)](ui::DragOperation operation) {
                                              dragEnded({operation, ended, std::move(drag_)});
                                          });
}

// In a turn of its own: a drag ends inside its own handling of an event.
void XToolkit::dragEnded(EndedDrag ended) {
    endedDrags_.push_back(std::move(ended));
    finishDrags_ = context_.mainLoop().after(Duration{}, [this] { finishDrags(); });
}

void XToolkit::finishDrags() {
    for (EndedDrag& drag : std::exchange(endedDrags_, {})) {
        drag.session.reset();
        drag.ended(drag.operation);
    }
}

Size XToolkit::textSize(std::string_view text, const ui::Font& font) {
    return context_.layouts().lineSize(text, font);
}

Subscription XToolkit::observeOutsidePresses(std::function<void()> pressed) {
    return outsidePresses_.observe(std::move(pressed));
}

}  // namespace morvel::x11
