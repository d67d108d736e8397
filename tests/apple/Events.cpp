// Events and menu choices, by the messages AppKit sends for them.
#include "Events.h"

#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Properties.h"

namespace morvel::mac::checked {

namespace {

struct Monitor {
    Id token = {};
    std::uint64_t mask = 0;
    Block<void(NSEvent)> seenElsewhere = {};  // of a global one
    Block<NSEvent(NSEvent)> seenHere = {};    // of a local one
};
using Monitors = std::vector<Monitor>;

Monitors& monitors() {
    return runtime().known<Monitors>();
}

void addMonitor(Invocation& i, Monitor monitor) {
    monitor.token = runtime().make("NSObject");
    monitor.mask = i.argument<std::uint64_t>(0);
    monitors().push_back(monitor);
    i.answerObject(monitor.token);
}

/// Whether the event is left after they have seen it.
bool passesLocalMonitors(const Id& event) {
    const auto type = property<std::uint64_t>(event, "type");
    NSEvent passed(event);
    for (const Monitor& monitor : Monitors(monitors()))
        if (passed && monitor.seenHere && monitor.mask >> type & 1) passed = monitor.seenHere(passed);
    return static_cast<bool>(passed);
}

/// Hands the event over while it is the application's current one.
void hand(const NSView& view, const char* selector, const Id& event) {
    const Id application = NSApplication::shared();
    setProperty(application, "currentEvent", event);
    tell(view, selector, event);
    setProperty(application, "currentEvent", RawObject());
}

}  // namespace

void installEvents(Runtime& target) {
    const auto event = target.implementing("NSEvent");
    event("+addGlobalMonitorForEventsMatchingMask:handler:",
          [](Invocation& i) { addMonitor(i, {.seenElsewhere = Block<void(NSEvent)>(i.argument<objc::RawBlock>(1))}); });
    event("+addLocalMonitorForEventsMatchingMask:handler:",
          [](Invocation& i) { addMonitor(i, {.seenHere = Block<NSEvent(NSEvent)>(i.argument<objc::RawBlock>(1))}); });
    event("+removeMonitor:", [](Invocation& i) {
        const Id token(i.object(0));
        std::erase_if(monitors(), [&](const Monitor& monitor) { return monitor.token == token; });
    });
}

void pressElsewhere(std::uint64_t type) {
    const objc::AutoreleasePool pool;
    for (const Monitor& monitor : Monitors(monitors())) {
        if (monitor.seenElsewhere && monitor.mask >> type & 1) monitor.seenElsewhere(NSEvent(mouseEvent(type, {})));
    }
}

std::size_t monitorCount() {
    return monitors().size();
}

Id mouseEvent(std::uint64_t type, CGPoint location, std::int64_t clickCount) {
    const Id event = runtime().make("NSEvent");
    setProperty(event, "type", type);
    setProperty(event, "locationInWindow", location);
    setProperty(event, "clickCount", clickCount);
    return event;
}

NSView viewAt(const NSView& contentView, CGPoint point) {
    return send<NSView>(contentView, "hitTest:"_sel, point);
}

NSView sendMouse(const NSView& contentView, const char* selector, const Id& event) {
    const objc::AutoreleasePool pool;
    setProperty(event, "window", contentView.window());
    if (!passesLocalMonitors(event)) return {};
    const NSView target = viewAt(contentView, property<CGPoint>(event, "locationInWindow"));
    hand(target, selector, event);
    return target;
}

void click(const NSView& contentView, CGPoint location) {
    const objc::AutoreleasePool pool;
    const NSView pressed = sendMouse(contentView, "mouseDown:", mouseEvent(NSEventTypeLeftMouseDown, location));
    hand(pressed, "mouseUp:", mouseEvent(NSEventTypeLeftMouseUp, location));
}

void display(const NSView& view) {
    const objc::AutoreleasePool pool;
    if (property<bool>(view, "needsLayout")) {
        setProperty(view, "needsLayout", false);
        send(view, "layout"_sel);
    }
    for (const NSView& child : view.subviews().elements<NSView>()) display(child);
}

bool use(const Id& control) {
    const objc::AutoreleasePool pool;
    const bool isDisabled =
        control && control.raw()->properties.contains("enabled") && !property<bool>(control, "enabled");
    const Id target = property<Id>(control, "target");
    const auto action = property<RawSelector>(control, "action");
    if (isDisabled || !target || !action) return false;
    tell(target, action->name, control);
    return true;
}

NSMenuItem itemTitled(const NSMenu& menu, const std::string& title) {
    for (const NSMenuItem& item : menu.items().elements<NSMenuItem>())
        if (textProperty(item, "title") == title) return item;
    return {};
}

bool choose(const NSMenu& menu, const std::string& title) {
    return use(itemTitled(menu, title));
}

void whenMenuPopsUp(std::function<void(const NSMenu&)> user) {
    runtime().script("NSMenu",
                     "+popUpContextMenu:withEvent:forView:", [user](Invocation& i) { user(NSMenu(i.object(0))); });
    runtime().script("NSMenu", "popUpMenuPositioningItem:atLocation:inView:", [user = std::move(user)](Invocation& i) {
        user(NSMenu(i.receiver()));
        i.answer<bool>(true);
    });
}

}  // namespace morvel::mac::checked
