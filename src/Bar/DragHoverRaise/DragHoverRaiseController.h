// Raises what a button stands for when something that is dragged rests on the button, so that it can be dropped there.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Bar/DragHoverRaise/ButtonKind.h"
#include "Bar/DragHoverRaise/DragHoverClock.h"
#include "Settings/SettingsEnums.h"
#include "UI/Drag.h"
#include "Util/Lifetime.h"

namespace morvel {

/// A drag that rests on a button whose time has not come yet.
struct ArmedDwell {
    WindowID buttonID;
    ButtonKind kind;
    DragHoverClock::Token token;
};

/// All are set.
struct DragHoverActions {
    std::function<DragHoverRaiseMode()> modeProvider;  ///< asked each time a drag enters a button
    std::function<void(WindowID)> raiseWindow;
    std::function<void(ProcessID)> activateApp;
    std::function<void(const std::string& bundleID)> openGroupPopover;
    std::function<void()> closeGroupPopover;
    /// Called in pairs, to keep an auto-hidden bar shown while a drag is over it.
    std::function<void()> pinReveal;
    std::function<void()> unpinReveal;
};

/// One per bar; main thread only. Buttons and the rows of a group's popover report the drags over them. A row reports
/// the identifier of its group's button, so that the way from the button to its rows does not close the popover.
class DragHoverRaiseController {
public:
    static constexpr DragHoverClock::Seconds kDwell{0.6};

    /// The clock outlives the controller.
    DragHoverRaiseController(DragHoverClock& clock, DragHoverActions actions);
    /// Ends the drag.
    ~DragHoverRaiseController();
    DragHoverRaiseController(const DragHoverRaiseController&) = delete;
    DragHoverRaiseController& operator=(const DragHoverRaiseController&) = delete;

    void dragEntered(const WindowID& buttonID, const ButtonKind& kind, const ui::DragPasteboard& pasteboard);
    void dragExited(const WindowID& buttonID);
    /// May be told more than once, and when there was no drag.
    void dragEnded();

private:
    bool shouldArm(const ui::DragPasteboard& pasteboard) const;
    void fireArmed(const WindowID& expectedButtonID);
    void disarm();
    void closeOpenPopover();

    DragHoverClock& clock_;
    DragHoverActions actions_;
    std::optional<ArmedDwell> armed_;
    std::optional<WindowID> openPopoverButtonID_;  // of the group whose popover was opened here
    bool isPinHeld_ = false;
    Lifetime lifetime_;
};

}  // namespace morvel
