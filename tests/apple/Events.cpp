// Events and menu choices, by the messages AppKit sends for them.
#include "Events.h"

#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Properties.h"

namespace morvel::mac::checked {

namespace {

bool contains(const CGRect& frame, CGPoint point) {
    return point.x >= frame.origin.x && point.x < frame.origin.x + frame.size.width && point.y >= frame.origin.y &&
           point.y < frame.origin.y + frame.size.height;
}

}  // namespace

Id mouseEvent(std::uint64_t type, CGPoint location, std::int64_t clickCount) {
    const Id event(objc::kAdopt, runtime().allocate(runtime().classNamed("NSEvent")));
    setProperty(event.raw(), "type", type);
    setProperty(event.raw(), "locationInWindow", location);
    setProperty(event.raw(), "clickCount", clickCount);
    return event;
}

NSView viewAt(const NSView& view, CGPoint point) {
    if (!view || send<bool>(view, "isHidden"_sel) || !contains(view.frame(), point)) return {};
    const CGPoint inside{point.x - view.frame().origin.x, point.y - view.frame().origin.y};
    const auto children = view.subviews().elements<NSView>();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        if (NSView found = viewAt(*child, inside)) return found;
    }
    return view;
}

void sendMouse(const NSView& contentView, const char* selector, const Id& event) {
    const objc::AutoreleasePool pool;
    const NSView target = viewAt(contentView, send<CGPoint>(event.raw(), "locationInWindow"_sel));
    objc::sendRaw<void, Id>(target.raw(), objc::sel_registerName(selector), event);
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
    runtime().script("NSMenu", "popUpMenuPositioningItem:atLocation:inView:", [user = std::move(user)](Invocation& i) {
        user(NSMenu(i.receiver()));
        i.answer<bool>(true);
    });
}

}  // namespace morvel::mac::checked
