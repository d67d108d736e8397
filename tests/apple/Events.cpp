// Events and menu choices, by the messages AppKit sends for them.
#include "Events.h"

#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Properties.h"

namespace morvel::mac::checked {

namespace {

struct Monitor {
    Id token;
    std::uint64_t mask;
    Block<void(NSEvent)> seenElsewhere;  // of a global one
    Block<NSEvent(NSEvent)> seenHere;    // of a local one
};
using Monitors = std::vector<Monitor>;

Monitors& monitors() {
    const Id holder = runtime().shared("NSObject", "NSEvent monitors");
    if (!payloadOf<Monitors>(holder.raw())) setPayload(holder.raw(), Monitors{});
    return *payloadOf<Monitors>(holder.raw());
}

void addMonitor(Invocation& i, Monitor monitor) {
    monitor.token = Id(objc::kAdopt, runtime().allocate(runtime().classNamed("NSObject")));
    monitor.mask = i.argument<std::uint64_t>(0);
    monitors().push_back(monitor);
    i.answerObject(monitor.token);
}

/// Whether the event is left after they have seen it.
bool passesLocalMonitors(const Id& event) {
    const auto type = property<std::uint64_t>(event.raw(), "type");
    NSEvent passed(event);
    for (const Monitor& monitor : Monitors(monitors()))
        if (passed && monitor.seenHere && monitor.mask >> type & 1) passed = monitor.seenHere(passed);
    return static_cast<bool>(passed);
}

/// What +[NSApplication currentEvent] answers while `handling` runs.
void whileCurrent(const Id& event, const std::function<void()>& handling) {
    const Id application = NSApplication::shared();
    setProperty(application.raw(), "currentEvent", event.raw());
    handling();
    setProperty(application.raw(), "currentEvent", RawObject());
}

}  // namespace

void installEvents(Runtime& runtime) {
    runtime.implement("NSEvent", "+addGlobalMonitorForEventsMatchingMask:handler:", [](Invocation& i) {
        addMonitor(i, {.seenElsewhere = Block<void(NSEvent)>(i.argument<objc::RawBlock>(1))});
    });
    runtime.implement("NSEvent", "+addLocalMonitorForEventsMatchingMask:handler:", [](Invocation& i) {
        addMonitor(i, {.seenHere = Block<NSEvent(NSEvent)>(i.argument<objc::RawBlock>(1))});
    });
    runtime.implement("NSEvent", "+removeMonitor:", [](Invocation& i) {
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
    const Id event(objc::kAdopt, runtime().allocate(runtime().classNamed("NSEvent")));
    setProperty(event.raw(), "type", type);
    setProperty(event.raw(), "locationInWindow", location);
    setProperty(event.raw(), "clickCount", clickCount);
    return event;
}

NSView viewAt(const NSView& contentView, CGPoint point) {
    return send<NSView>(contentView, "hitTest:"_sel, point);
}

void sendMouse(const NSView& contentView, const char* selector, const Id& event) {
    const objc::AutoreleasePool pool;
    setProperty(event.raw(), "window", contentView.window().raw());
    if (!passesLocalMonitors(event)) return;
    const NSView target = viewAt(contentView, send<CGPoint>(event.raw(), "locationInWindow"_sel));
    whileCurrent(event, [&] { objc::sendRaw<void, Id>(target.raw(), objc::sel_registerName(selector), event); });
}

void click(const NSView& contentView, CGPoint location) {
    const objc::AutoreleasePool pool;
    const Id down = mouseEvent(NSEventTypeLeftMouseDown, location);
    setProperty(down.raw(), "window", contentView.window().raw());
    if (!passesLocalMonitors(down)) return;
    const NSView target = viewAt(contentView, location);
    whileCurrent(down, [&] { objc::sendRaw<void, Id>(target.raw(), objc::sel_registerName("mouseDown:"), down); });
    const Id up = mouseEvent(NSEventTypeLeftMouseUp, location);
    whileCurrent(up, [&] { objc::sendRaw<void, Id>(target.raw(), objc::sel_registerName("mouseUp:"), up); });
}

void display(const NSView& view) {
    const objc::AutoreleasePool pool;
    if (property<bool>(view.raw(), "needsLayout")) {
        setProperty(view.raw(), "needsLayout", false);
        send(view, "layout"_sel);
    }
    for (const NSView& child : view.subviews().elements<NSView>()) display(child);
}

bool choose(const NSMenuItem& item) {
    const objc::AutoreleasePool pool;
    const bool isDisabled =
        item && item.raw()->properties.contains("enabled") && !property<bool>(item.raw(), "enabled");
    if (!item || isDisabled) return false;
    const Id target = send<Id>(item, "target"_sel);
    const auto action = send<Selector>(item, "action"_sel);
    if (!target || !action.raw() || !runtime().responds(target.raw(), action.raw()->name)) return false;
    objc::sendRaw<void, Id>(target.raw(), action.raw(), item);
    return true;
}

NSMenuItem itemTitled(const NSMenu& menu, const std::string& title) {
    for (const NSMenuItem& item : menu.items().elements<NSMenuItem>()) {
        if (send<NSString>(item, "title"_sel).text() == title) return item;
    }
    return {};
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
