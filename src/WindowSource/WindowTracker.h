// Follows the windows of the attached processes: which elements are windows, what changes about them, and which went.
#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "Platform/Accessibility.h"
#include "Platform/Log.h"
#include "Platform/MainLoop.h"
#include "Platform/WindowServer.h"
#include "Platform/Workspace.h"
#include "Util/Debouncer.h"
#include "Util/Lifetime.h"
#include "Util/WindowIDMint.h"
#include "WindowSource/TrackedWindows.h"
#include "WindowSource/UnresponsiveProcesses.h"
#include "WindowSource/WindowAdmission.h"
#include "WindowSource/WindowStore.h"

namespace morvel {

class AXReader;

/// Main thread only. May be destroyed from inside a subscriber of the store. Reads nothing of a process that is listed
/// as unresponsive: `refresh` makes up for it.
class WindowTracker {
public:
    /// What the tracker works with; all outlive it.
    struct System {
        MainLoop& mainLoop;
        Log& log;
        Accessibility& accessibility;
        WindowServer& windowServer;
        Workspace& workspace;
        WindowIDMint& mint;
        WindowStore& store;
        UnresponsiveProcesses& unresponsive;
        std::function<void()> denied;  ///< called when an application's answer was that this program may not ask
    };

    /// `foundOlder` is called with each window that was found and not announced, before the store is told of it.
    WindowTracker(System system, std::function<void(ProcessID, const AXElement&)> foundOlder);

    /// A notification of the process, about itself or one of its elements.
    void handleNotice(const AXElement& element, std::string_view notification, ProcessID pid);
    /// Adds the windows that the process lists and that are not tracked yet.
    void enumerateAXWindows(ProcessID pid);
    /// Reads everything about the process's windows anew and tells what has changed.
    void refresh(ProcessID pid);

    /// Puts a placeholder into the store for a process of which no window is known; false when one is.
    bool becomeWindowless(const RunningApplication& app);
    bool isWindowless(ProcessID pid) const { return windowlessPIDs_.contains(pid); }
    /// The process has ended: everything it owned goes.
    void forget(ProcessID pid);

    /// Looks for windows that closed without a notice.
    void sweepClosedWindows();

    /// As it is now; a copy, since what is done to a window may end in its being forgotten. Nothing when it is not
    /// tracked.
    std::optional<TrackedWindow> find(WindowID id) const {
        const TrackedWindow* window = windows_.find(id);
        return window ? std::optional(*window) : std::nullopt;
    }

private:
    using Events = std::vector<WindowEvent>;
    enum class Discovery { Announced, Found };

    /// Adds to `events` what to tell the store; nothing when the element does not count as a window.
    std::optional<WindowID> registerWindow(const AXElement& element, ProcessID pid, Discovery how, AXReader& reader,
                                           Events& events);
    void unregisterWindow(WindowID id);
    void handleTitleChange(WindowID id);
    void handleFrameChange(WindowID id);
    void handleFocusChange(const AXElement& element, ProcessID pid);
    /// A process behind another one moves its focus among its windows, as when one of them closes: that can take the
    /// mark off a window of its own, never off the front process's.
    void handleBackgroundFocusChange(const AXElement& element, ProcessID pid);
    void handleAppActivated(ProcessID pid);
    WindowAttributes readAttributes(const AXElement& element, AXReader& reader);
    void readTitle(const TrackedWindow& window, AXReader& reader, Events& events);
    void readFrame(const TrackedWindow& window, AXReader& reader, Events& events);
    bool isGone(WindowID id, const std::unordered_set<WindowNumber>& listed);
    /// Hands the events to the store in order; stops when a subscriber destroys us.
    void emit(const Events& events);
    void noteOutcome(ProcessID pid, const AXReader& reader);
    void logRefusal(ProcessID pid, const WindowAttributes& window, std::string_view reason);

    System system_;
    std::function<void(ProcessID, const AXElement&)> foundOlder_;
    TrackedWindows windows_;
    std::unordered_set<ProcessID> windowlessPIDs_;  // attached ones without windows; the store holds a placeholder each
    Debouncer<WindowID> titleDebouncer_;
    Lifetime lifetime_;
};

}  // namespace morvel
