// Keeps other programs' windows out of the strip that the bar reserves, by shrinking them, and gives them their frames
// back when that is no longer wanted.
#pragma once

#include <functional>
#include <optional>
#include <unordered_map>

#include "Clamping/ClampingBlacklist.h"
#include "Clamping/FrameDispute.h"
#include "Platform/MainLoop.h"
#include "Platform/Screens.h"
#include "Platform/Workspace.h"
#include "Settings/SettingsStore.h"
#include "Util/Geometry.h"
#include "Util/Lifetime.h"
#include "WindowSource/WindowStore.h"

namespace morvel {

/// Main thread only. Looks at the windows once per turn in which something changed, and writes a frame only when it
/// must: not in a window's first half second, not while a mouse button is held, not while the session is locked or the
/// displays are being rearranged, and not against an application that insists. What it could not write then it makes
/// up for as soon as it may. A bar that hides itself reserves nothing.
class WindowClamper {
public:
    /// What the clamper works with; all outlive it.
    struct System {
        MainLoop& mainLoop;
        Screens& screens;
        Workspace& workspace;
        std::function<bool()> isMouseButtonDown;  ///< in whatever program
        /// Fire and forget; what became of it shows in the store.
        std::function<void(WindowID, const Rect<AXSpace>&)> setWindowFrame;
    };

    WindowClamper(System system, const WindowStore& store, const ClampingBlacklist& blacklist,
                  const SettingsStore& settings);
    WindowClamper(const WindowClamper&) = delete;
    WindowClamper& operator=(const WindowClamper&) = delete;

    void start();

    /// The strip that the bar reserves on this display; nothing where it reserves none.
    std::optional<Rect<ScreenSpace>> reservedRect(const Screen& screen) const;

private:
    /// What is kept of one window until it leaves the store.
    struct Record {
        bool wasSeen = false;                           // other than exempt or in full screen
        std::optional<Instant> firstLook;               // until then the application is placing its window
        std::optional<Rect<AXSpace>> lastSeenFrame;     // when it was last examined
        std::optional<Rect<AXSpace>> originalFrame;     // before its first clamp
        std::optional<Rect<AXSpace>> lastWrittenFrame;  // by us, to recognise its echo
        bool didClamp = false;
        FrameDispute dispute;
    };

    void lookSoon();
    /// Whatever decides where windows may be has changed: all count as not examined yet.
    void reexamine();
    void applyAll();
    void apply(const WindowSnapshot& window);
    void scheduleFirstLook(Record& record);
    void takeFirstLooks();
    bool isExempt(const WindowSnapshot& window) const;
    void release(const WindowSnapshot& window, Record& record);
    void clamp(const WindowSnapshot& window, Record& record);
    /// Whether a mouse button is held; then there is another look when it is released.
    bool mustAwaitRelease();
    void awaitRelease();

    System system_;
    const WindowStore& store_;
    const ClampingBlacklist& blacklist_;
    const SettingsStore& settings_;
    std::unordered_map<WindowID, Record> records_;
    bool isLookPosted_ = false;
    Timer firstLooks_;      // while a window waits for its first look
    Timer screensSettled_;  // while displays are being rearranged
    Timer buttonReleased_;  // while a write waits for it
    Subscriptions subscriptions_;
    Lifetime lifetime_;
};

}  // namespace morvel
