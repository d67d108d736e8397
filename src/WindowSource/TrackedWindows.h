// Which accessibility element is which tracked window, both ways, and whose they are.
#pragma once

#include <optional>
#include <unordered_map>
#include <vector>

#include "Platform/Accessibility.h"
#include "Util/Identity.h"

namespace morvel {

/// What the window server's list said of a window's number so far.
enum class ServerListing {
    NeverListed,  ///< its absence from the list means nothing
    Listed,
    Missing,  ///< it was listed, and was not when last looked at
};

struct TrackedWindow {
    WindowID id;
    ProcessID pid;
    AXElement element;
    std::optional<WindowNumber> number;
    ServerListing listing = ServerListing::NeverListed;
};

/// Main thread only. Every operation costs the same however many windows there are, but for the ones that say so.
class TrackedWindows {
public:
    void add(TrackedWindow window);
    /// The window as it was; nothing if it is not tracked.
    std::optional<TrackedWindow> remove(WindowID id);

    /// Null when it is not tracked; good until the next change.
    TrackedWindow* find(WindowID id);
    const TrackedWindow* find(WindowID id) const;
    std::optional<WindowID> find(ProcessID pid, const AXElement& element) const;
    /// As `find`, but also where a destroyed element no longer has the hash that it had. Looks through the process's
    /// windows then.
    std::optional<WindowID> findDestroyed(ProcessID pid, const AXElement& element) const;

    bool hasWindows(ProcessID pid) const { return windowToUUID_.contains(pid); }
    /// As many as the process has.
    std::vector<WindowID> windowsOf(ProcessID pid) const;
    std::vector<WindowID> all() const;

private:
    using ElementTable = std::unordered_map<AXElement, WindowID>;

    std::unordered_map<ProcessID, ElementTable> windowToUUID_;  // no empty tables
    std::unordered_map<WindowID, TrackedWindow> uuidToWindow_;
};

}  // namespace morvel
