#include "WindowSource/WindowTracker.h"

#include <utility>

#include "Platform/AXNames.h"
#include "WindowSource/AXReader.h"
#include "WindowSource/ApplicationName.h"

namespace morvel {

namespace {

using namespace std::chrono_literals;

constexpr Duration kTitleQuiet = 200ms;

/// Whether the store knows already what the event tells of a title or a frame.
bool isStored(const WindowMap& stored, const WindowEvent& event) {
    if (const auto* change = std::get_if<event::TitleChanged>(&event)) {
        const auto record = stored.find(change->id);
        return record != stored.end() && record->second.title == change->title;
    }
    if (const auto* change = std::get_if<event::FrameChanged>(&event)) {
        const auto record = stored.find(change->id);
        return record != stored.end() && record->second.frame == change->frame;
    }
    return false;
}

}  // namespace

WindowTracker::WindowTracker(System system, std::function<void(ProcessID, const AXElement&)> foundOlder)
    : system_(system), foundOlder_(std::move(foundOlder)), titleDebouncer_(kTitleQuiet, system.mainLoop) {}

void WindowTracker::handleNotice(const AXElement& element, std::string_view notification, ProcessID pid) {
    if (notification == ax::kUIElementDestroyed) {
        if (const auto id = windows_.findDestroyed(pid, element)) unregisterWindow(*id);
        return;
    }
    if (system_.unresponsive.contains(pid)) return;
    const auto known = windows_.find(pid, element);
    if (notification == ax::kWindowCreated) {
        AXReader reader(system_.accessibility);
        Events events;
        registerWindow(element, pid, Discovery::Announced, reader, events);
        emit(events);
    } else if (notification == ax::kTitleChanged) {
        if (known) handleTitleChange(*known);
    } else if (notification == ax::kWindowMoved || notification == ax::kWindowResized) {
        if (known) handleFrameChange(*known);
    } else if (notification == ax::kFocusedWindowChanged || notification == ax::kMainWindowChanged) {
        const auto frontmost = system_.workspace.frontmostApplication();
        frontmost.value_or(pid) == pid ? handleFocusChange(element, pid) : handleBackgroundFocusChange(element, pid);
    } else if (notification == ax::kApplicationActivated) {
        handleAppActivated(pid);
    }
}

void WindowTracker::enumerateAXWindows(ProcessID pid) {
    if (system_.unresponsive.contains(pid)) return;
    AXReader reader(system_.accessibility);
    Events events;
    const auto listed = reader.readElements(system_.accessibility.applicationElement(pid), ax::kWindows);
    noteOutcome(pid, reader);
    for (const AXElement& element : listed.value_or(std::vector<AXElement>{}))
        registerWindow(element, pid, Discovery::Found, reader, events);
    emit(events);
}

void WindowTracker::refresh(ProcessID pid) {
    const auto watch = lifetime_.watch();
    AXReader reader(system_.accessibility);
    Events events;
    for (const WindowID id : windows_.windowsOf(pid)) {
        readTitle(*windows_.find(id), reader, events);
        readFrame(*windows_.find(id), reader, events);
    }
    const WindowMap& stored = *system_.store.windows().value();
    std::erase_if(events, [&](const WindowEvent& event) { return isStored(stored, event); });
    emit(events);
    if (watch.isAlive()) enumerateAXWindows(pid);
    if (watch.isAlive() && system_.workspace.frontmostApplication() == pid) handleAppActivated(pid);
}

bool WindowTracker::becomeWindowless(const RunningApplication& app) {
    if (windows_.hasWindows(app.pid)) return false;
    windowlessPIDs_.insert(app.pid);
    emit({event::AppBecameWindowless{app.pid, app.bundleID, applicationName(app)}});
    return true;
}

void WindowTracker::forget(ProcessID pid) {
    for (const WindowID id : windows_.windowsOf(pid)) {
        windows_.remove(id);
        titleDebouncer_.cancel(id);
    }
    windowlessPIDs_.erase(pid);
    emit({event::AppTerminated{pid}});
}

void WindowTracker::sweepClosedWindows() {
    const auto watch = lifetime_.watch();
    std::unordered_set<WindowNumber> listed;
    for (const ListedWindow& window : system_.windowServer.windowList(WindowListScope::All))
        listed.insert(window.number);
    for (const WindowID id : windows_.all()) {
        if (isGone(id, listed)) unregisterWindow(id);
        if (!watch.isAlive()) return;
    }
}

std::optional<WindowID> WindowTracker::registerWindow(const AXElement& element, ProcessID pid, Discovery how,
                                                      AXReader& reader, Events& events) {
    if (const auto known = windows_.find(pid, element)) return known;
    WindowAttributes read = readAttributes(element, reader);
    noteOutcome(pid, reader);
    if (reader.hasTimedOut()) return std::nullopt;
    if (const auto reason = refusalReason(read)) {
        logRefusal(pid, read, *reason);
        return std::nullopt;
    }
    const WindowID id = system_.mint.next();
    windows_.add({id, pid, element, read.number, read.layer ? ServerListing::Listed : ServerListing::NeverListed});
    if (how == Discovery::Found) foundOlder_(pid, element);
    const auto app = system_.workspace.runningApplication(pid);
    events.push_back(event::Added{{.id = id,
                                   .pid = pid,
                                   .cgWindowID = read.number,
                                   .bundleID = app ? app->bundleID : std::nullopt,
                                   .appName = applicationName(app),
                                   .title = std::move(read.title).value_or(""),
                                   .frame = *read.frame,
                                   .isFullscreen = read.isFullscreen.value_or(false),
                                   .isWindowless = false}});
    if (windowlessPIDs_.erase(pid)) events.push_back(event::AppGotFirstWindow{pid});
    return id;
}

void WindowTracker::unregisterWindow(WindowID id) {
    const auto window = windows_.remove(id);
    if (!window) return;
    titleDebouncer_.cancel(id);
    const ProcessID pid = window->pid;
    const auto app = system_.workspace.runningApplication(pid);
    if (!windows_.hasWindows(pid) && app && windowlessPIDs_.insert(pid).second) {
        emit({event::AppLostLastWindow{id, pid, app->bundleID, applicationName(app)}});
    } else {
        emit({event::Removed{id}});
    }
}

void WindowTracker::handleTitleChange(WindowID id) {
    titleDebouncer_.schedule(id, [this, id] {
        const TrackedWindow* window = windows_.find(id);
        if (!window || system_.unresponsive.contains(window->pid)) return;
        AXReader reader(system_.accessibility);
        Events events;
        readTitle(*window, reader, events);
        emit(events);
    });
}

void WindowTracker::handleFrameChange(WindowID id) {
    AXReader reader(system_.accessibility);
    Events events;
    readFrame(*windows_.find(id), reader, events);
    emit(events);
}

void WindowTracker::handleFocusChange(const AXElement& element, ProcessID pid) {
    AXReader reader(system_.accessibility);
    Events events;
    const auto id = registerWindow(element, pid, Discovery::Found, reader, events);
    // Silence does not mean that the focus left our windows.
    if (id || !reader.hasTimedOut()) events.push_back(event::Focused{id});
    emit(events);
}

void WindowTracker::handleBackgroundFocusChange(const AXElement& element, ProcessID pid) {
    AXReader reader(system_.accessibility);
    Events events;
    const auto id = registerWindow(element, pid, Discovery::Found, reader, events);
    const auto marked = system_.store.focusedID().value();
    const TrackedWindow* window = marked ? windows_.find(*marked) : nullptr;
    if (!id && !reader.hasTimedOut() && window && window->pid == pid) events.push_back(event::Focused{});
    emit(events);
}

void WindowTracker::handleAppActivated(ProcessID pid) {
    AXReader reader(system_.accessibility);
    const auto focused = reader.readElement(system_.accessibility.applicationElement(pid), ax::kFocusedWindow);
    noteOutcome(pid, reader);
    if (focused) handleFocusChange(*focused, pid);
}

WindowAttributes WindowTracker::readAttributes(const AXElement& element, AXReader& reader) {
    WindowAttributes window;
    window.role = reader.readString(element, ax::kRole);
    if (window.role != ax::kWindowRole) return window;  // most notices are about buttons and texts: ask no more
    window.subrole = reader.readString(element, ax::kSubrole);
    window.frame = reader.readFrame(element);
    window.number = system_.accessibility.windowNumber(element);
    if (window.number) window.layer = system_.windowServer.layerOf(*window.number);
    window.isFullscreen = reader.readBool(element, ax::kFullScreen);
    window.hasCloseButton = reader.hasCloseButton(element);
    window.title = reader.readString(element, ax::kTitle);
    return window;
}

void WindowTracker::readTitle(const TrackedWindow& window, AXReader& reader, Events& events) {
    const auto title = reader.readString(window.element, ax::kTitle);
    noteOutcome(window.pid, reader);
    if (title) events.push_back(event::TitleChanged{window.id, *title});
}

void WindowTracker::readFrame(const TrackedWindow& window, AXReader& reader, Events& events) {
    const auto frame = reader.readFrame(window.element);
    const auto isFullscreen = reader.readBool(window.element, ax::kFullScreen);
    noteOutcome(window.pid, reader);
    if (frame) events.push_back(event::FrameChanged{window.id, *frame});
    const WindowMap& stored = *system_.store.windows().value();
    const auto record = stored.find(window.id);
    if (isFullscreen && record != stored.end() && record->second.isFullscreen != *isFullscreen)
        events.push_back(event::FullscreenChanged{window.id, *isFullscreen});
}

bool WindowTracker::isGone(WindowID id, const std::unordered_set<WindowNumber>& listed) {
    TrackedWindow* window = windows_.find(id);
    if (!window) return false;
    if (window->number && listed.contains(*window->number)) {
        window->listing = ServerListing::Listed;
    } else if (window->number && !listed.empty() && window->listing != ServerListing::NeverListed) {
        // Twice, because the list is short for a moment while a window manager restarts or displays come and go.
        if (window->listing == ServerListing::Missing) return true;
        window->listing = ServerListing::Missing;
    }
    if (system_.unresponsive.contains(window->pid)) return false;
    AXReader reader(system_.accessibility);
    reader.readString(window->element, ax::kRole);
    noteOutcome(window->pid, reader);
    return reader.hasMetDeadElement();
}

void WindowTracker::emit(const Events& events) {
    const auto watch = lifetime_.watch();
    WindowStore& store = system_.store;
    for (const WindowEvent& event : events) {
        store.apply(event);
        if (!watch.isAlive()) return;
    }
}

void WindowTracker::noteOutcome(ProcessID pid, const AXReader& reader) {
    if (reader.hasTimedOut()) system_.unresponsive.add(pid);
    if (reader.wasDenied()) system_.denied();
}

void WindowTracker::logRefusal(ProcessID pid, const WindowAttributes& window, std::string_view reason) {
    if (!system_.log.isDebugWanted()) return;
    std::string line = "not shown: \"" + window.title.value_or("") + "\" of ";
    line += applicationName(system_.workspace.runningApplication(pid)) + " (" + std::to_string(pid.value) + "): ";
    system_.log.debug(line.append(reason));
}

}  // namespace morvel
