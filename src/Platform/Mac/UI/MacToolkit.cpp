// Making the peers, popping up menus, starting drags, measuring text, and watching for presses elsewhere.
#include "Platform/Mac/UI/MacToolkit.h"

#include <cmath>
#include <utility>

#include "Platform/Mac/UI/DisplayText.h"
#include "Platform/Mac/UI/DragSource.h"
#include "Platform/Mac/UI/MacAlert.h"
#include "Platform/Mac/UI/MacFormWindow.h"
#include "Platform/Mac/UI/MacMenu.h"
#include "Platform/Mac/UI/MacPanel.h"
#include "Platform/Mac/UI/MacPopover.h"
#include "Platform/Mac/UI/MacPrompt.h"
#include "Platform/Mac/UI/MacStatusItem.h"
#include "Platform/Mac/UI/Resolving.h"
#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Mac/apple/AppKit/NSWorkspace.h"
#include "Platform/Mac/apple/Foundation/NSRunLoop.h"

namespace morvel::mac {

namespace {

bool isPress(const NSEvent& event) {
    const NSUInteger type = event.type();
    return type == NSEventTypeLeftMouseDown || type == NSEventTypeRightMouseDown || type == NSEventTypeOtherMouseDown;
}

const ui::View& rootOf(const ui::View& view) {
    const ui::View* root = &view;
    while (root->parent()) root = root->parent();
    return *root;
}

/// Empty for the system's own.
NSAppearance nativeAppearance(ui::Appearance appearance) {
    switch (appearance) {
        case ui::Appearance::System:
            break;
        case ui::Appearance::Light:
            return NSAppearance::named(NSString(NSAppearanceNameAqua));
        case ui::Appearance::Dark:
            return NSAppearance::named(NSString(NSAppearanceNameDarkAqua));
    }
    return {};
}

}  // namespace

void MacToolkit::setAppearance(ui::Appearance appearance) {
    NSApplication::shared().setAppearance(nativeAppearance(appearance));
}

std::unique_ptr<ui::PanelPeer> MacToolkit::makePanel(const ui::PanelOptions& options, ui::View& content) {
    return std::make_unique<MacPanel>(options, content);
}

std::unique_ptr<ui::PopoverPeer> MacToolkit::makePopover(ui::View& content, std::function<void()> closed,
                                                         ui::PopoverKind kind) {
    return std::make_unique<MacPopover>(content, std::move(closed), mainLoop_, kind);
}

void MacToolkit::popUpMenu(ui::Menu menu, ui::View& anchor, Point<ViewSpace> locationInRoot,
                           std::function<void()> closed) {
    // References of our own: the anchor may leave while the menu is open.
    const NSView view = ViewTree::nativeOf(anchor);
    const NSView root = ViewTree::nativeOf(rootOf(anchor));
    if (view.window()) {
        const NSMenu native = makeMenu(menu);
        const NSEvent event = NSApplication::shared().currentEvent();
        if (event && isPress(event)) {
            native.popUpContext(event, view);
        } else {
            native.popUp({locationInRoot.x, locationInRoot.y}, root);
        }
    }
    if (closed) closed();
}

void MacToolkit::beginDrag(ui::View& view, ui::DragItem item, std::function<void(ui::DragOperation)> ended) {
    const auto endLater = lifetime_.whileAlive(
        [this, ended = std::move(ended)](ui::DragOperation done) { mainLoop_.post([ended, done] { ended(done); }); });
    const NSEvent event = NSApplication::shared().currentEvent();
    if (!startDrag(ViewTree::nativeOf(view), item, event, endLater)) endLater(ui::DragOperation::None);
}

std::unique_ptr<ui::PromptPeer> MacToolkit::showPrompt(ui::Prompt prompt) {
    return std::make_unique<MacPrompt>(std::move(prompt));
}

void MacToolkit::showAlert(ui::Alert alert, std::function<void(std::optional<size_t>)> answered) {
    // Asked from within the main queue, nothing else of it would run until the answer: no timer and no posted work.
    NSRunLoop::main().perform(std::function<void()>(lifetime_.whileAlive(
        [alert = std::move(alert), answered = std::move(answered)] { answered(runAlert(alert)); })));
}

std::unique_ptr<ui::StatusItemPeer> MacToolkit::makeStatusItem(ui::Menu menu) {
    return std::make_unique<MacStatusItem>(menu);
}

std::unique_ptr<ui::FormWindowPeer> MacToolkit::makeFormWindow(ui::Form form) {
    return std::make_unique<MacFormWindow>(std::move(form));
}

Size MacToolkit::textSize(std::string_view text, const ui::Font& font) {
    const CGSize size = sizeOf(NSString::from(displayText(text)), nsFont(font));
    // A label that is a fraction of a point short of its text shows an ellipsis.
    return {std::ceil(size.width), std::ceil(size.height)};
}

std::optional<Point<ScreenSpace>> MacToolkit::pointerLocation() {
    // The pixel's inside: its upper edge is in no rectangle that ends there, such as a bar at the top.
    constexpr double kHalfPixel = 0.5;
    const CGPoint location = NSEvent::mouseLocation();
    return Point<ScreenSpace>{location.x, location.y - kHalfPixel};
}

bool MacToolkit::isMouseButtonDown() {
    return NSEvent::pressedMouseButtons() != 0;
}

bool MacToolkit::reducesMotion() {
    return NSWorkspace::shared().accessibilityDisplayShouldReduceMotion();
}

Subscription MacToolkit::observeOutsidePresses(std::function<void()> pressed) {
    // Shared, as the handler may end the subscription and with it the monitor's block while it runs.
    auto call = std::make_shared<const std::function<void()>>(std::move(pressed));
    return NSEvent::monitorGlobally(kAnyPress, [call](const NSEvent&) {
        const auto kept = call;
        (*kept)();
    });
}

}  // namespace morvel::mac
