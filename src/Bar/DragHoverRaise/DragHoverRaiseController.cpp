#include "Bar/DragHoverRaise/DragHoverRaiseController.h"

#include <utility>

#include "Bar/Drag/RunningWindowDrag.h"

namespace morvel {

DragHoverRaiseController::DragHoverRaiseController(DragHoverClock& clock, DragHoverActions actions)
    : clock_(clock), actions_(std::move(actions)) {}

DragHoverRaiseController::~DragHoverRaiseController() {
    dragEnded();
}

bool DragHoverRaiseController::shouldArm(const ui::DragPasteboard& pasteboard) const {
    switch (actions_.modeProvider()) {
        case DragHoverRaiseMode::Off:
            return false;
        case DragHoverRaiseMode::FileOnly:
            return pasteboard.hasFileURLs() || pasteboard.hasType(ui::kLegacyFilenamesType);
        case DragHoverRaiseMode::Any:
            return !RunningWindowDrag::isIn(pasteboard);
    }
    return false;
}

void DragHoverRaiseController::dragEntered(const WindowID& buttonID, const ButtonKind& kind,
                                           const ui::DragPasteboard& pasteboard) {
    if (!shouldArm(pasteboard)) return;
    if (armed_ && armed_->buttonID == buttonID) return;
    if (openPopoverButtonID_ && *openPopoverButtonID_ != buttonID) closeOpenPopover();
    disarm();
    if (!std::exchange(isPinHeld_, true)) actions_.pinReveal();
    const auto token = clock_.schedule(kDwell, lifetime_.whileAlive([this, id = buttonID] { fireArmed(id); }));
    armed_ = ArmedDwell{buttonID, kind, token};
}

void DragHoverRaiseController::fireArmed(const WindowID& expectedButtonID) {
    if (!armed_ || armed_->buttonID != expectedButtonID) return;
    const ArmedDwell fired = *std::exchange(armed_, std::nullopt);
    if (const auto* grouped = std::get_if<GroupedTarget>(&fired.kind)) {
        openPopoverButtonID_ = fired.buttonID;
        return actions_.openGroupPopover(grouped->bundleID);
    }
    if (const auto* window = std::get_if<WindowTarget>(&fired.kind)) actions_.raiseWindow(window->id);
    if (const auto* windowless = std::get_if<WindowlessTarget>(&fired.kind)) actions_.activateApp(windowless->pid);
    closeOpenPopover();
}

void DragHoverRaiseController::dragExited(const WindowID& buttonID) {
    if (armed_ && armed_->buttonID == buttonID) disarm();
}

void DragHoverRaiseController::dragEnded() {
    disarm();
    closeOpenPopover();
    if (std::exchange(isPinHeld_, false)) actions_.unpinReveal();
}

void DragHoverRaiseController::disarm() {
    if (const auto armed = std::exchange(armed_, std::nullopt)) clock_.cancel(armed->token);
}

void DragHoverRaiseController::closeOpenPopover() {
    if (std::exchange(openPopoverButtonID_, std::nullopt)) actions_.closeGroupPopover();
}

}  // namespace morvel
