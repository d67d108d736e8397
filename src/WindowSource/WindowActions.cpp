#include "WindowSource/WindowActions.h"

#include "Platform/AXNames.h"
#include "WindowSource/AXReader.h"

namespace morvel {

Point<AXSpace> movedPosition(const Rect<ScreenSpace>& screen, double firstScreenHeight, Size window) {
    return {screen.midX() - window.width / 2, firstScreenHeight - screen.midY() - window.height / 2};
}

void WindowActions::raise(const TrackedWindow& window) {
    workspace_.activate(window.pid);
    const bool answers =
        set(window, ax::kMinimized, false) && set(window, ax::kMain, true) && set(window, ax::kFocused, true);
    if (answers) accessibility_.performAction(window.element, ax::kRaise);
}

ClickOutcome WindowActions::click(const TrackedWindow& window) {
    AXReader reader(accessibility_);
    const bool isMinimized = reader.readBool(window.element, ax::kMinimized).value_or(false);
    if (!isMinimized && isFrontmost(window, reader)) {
        minimize(window);
        return ClickOutcome::Minimized;
    }
    if (reader.hasTimedOut()) {
        // It would not take the writes either; activating it is the system's to do, when the process comes back.
        workspace_.activate(window.pid);
        return ClickOutcome::NoAnswer;
    }
    raise(window);
    return ClickOutcome::Raised;
}

bool WindowActions::isFrontmost(const TrackedWindow& window) {
    AXReader reader(accessibility_);
    return isFrontmost(window, reader);
}

bool WindowActions::isFrontmost(const TrackedWindow& window, AXReader& reader) {
    return workspace_.frontmostApplication() == window.pid &&
           reader.readElement(accessibility_.applicationElement(window.pid), ax::kFocusedWindow) == window.element;
}

void WindowActions::minimize(const TrackedWindow& window) {
    set(window, ax::kMinimized, true);
}

void WindowActions::close(const TrackedWindow& window) {
    // An application that asks whether to save answers only once the person has decided.
    if (const auto button = AXReader(accessibility_).readElement(window.element, ax::kCloseButton))
        accessibility_.startAction(*button, ax::kPress);
}

void WindowActions::move(const TrackedWindow& window, const Rect<ScreenSpace>& screen, double firstScreenHeight) {
    if (const auto size = AXReader(accessibility_).readSize(window.element, ax::kSize))
        set(window, ax::kPosition, movedPosition(screen, firstScreenHeight, *size));
}

bool WindowActions::setFrame(const TrackedWindow& window, const Rect<AXSpace>& frame) {
    return set(window, ax::kPosition, frame.origin()) && set(window, ax::kSize, frame.size());
}

bool WindowActions::set(const TrackedWindow& window, std::string_view attribute, const AXValue& value) {
    return accessibility_.setAttribute(window.element, attribute, value) != AXError::CannotComplete;
}

}  // namespace morvel
