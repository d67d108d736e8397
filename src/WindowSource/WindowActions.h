// What the bar's buttons do to other programs' windows.
#pragma once

#include "Platform/Accessibility.h"
#include "Platform/Workspace.h"
#include "Util/Geometry.h"
#include "WindowSource/TrackedWindows.h"

namespace morvel {

class AXReader;

/// Where a window of this size has its origin when it is centred on the screen.
Point<AXSpace> movedPosition(const Rect<ScreenSpace>& screen, double firstScreenHeight, Size window);

enum class ClickOutcome { Raised, Minimized, NoAnswer };

/// Main thread only. A write that fails is not repeated: the window then just stays as it is. A process that does not
/// answer in time is asked nothing more within the action.
class WindowActions {
public:
    /// Both outlive this.
    WindowActions(Accessibility& accessibility, Workspace& workspace)
        : accessibility_(accessibility), workspace_(workspace) {}

    void raise(const TrackedWindow& window);
    /// Minimizes the focused window of the active application, raises any other.
    ClickOutcome click(const TrackedWindow& window);
    /// Whether it is the focused window of the active application.
    bool isFrontmost(const TrackedWindow& window);
    void minimize(const TrackedWindow& window);
    void close(const TrackedWindow& window);
    void move(const TrackedWindow& window, const Rect<ScreenSpace>& screen, double firstScreenHeight);
    /// False when the process did not answer.
    bool setFrame(const TrackedWindow& window, const Rect<AXSpace>& frame);

private:
    bool isFrontmost(const TrackedWindow& window, AXReader& reader);
    /// False when the process did not answer.
    bool set(const TrackedWindow& window, std::string_view attribute, const AXValue& value);

    Accessibility& accessibility_;
    Workspace& workspace_;
};

}  // namespace morvel
