// Views, windows and menus: the tree, its coordinates, and the moments at which AppKit calls overrides.
#include "Platform/Mac/apple/CGGeometry.h"
#include "Platform/Mac/objc/Send.h"
#include "Properties.h"
#include "SystemObjects.h"

namespace morvel::mac::checked {

namespace {

using namespace objc::literals;

/// The elements kept under a name, as an array object that can be changed in place.
Elements& list(RawObject object, const std::string& name) {
    if (!property<RawObject>(object, name)) setProperty(object, name, makeArray({}).raw());
    return *payloadOf<Elements>(property<RawObject>(object, name));
}

void remove(Elements& elements, RawObject gone) {
    std::erase_if(elements, [&](const Id& element) { return element.raw() == gone; });
}

void setWindow(RawObject view, RawObject window) {
    setProperty(view, "window", window);
    for (const Id& child : Elements(list(view, "subviews"))) setWindow(child.raw(), window);
    objc::send(view, "viewDidMoveToWindow"_sel);
    if (window) objc::send(view, "updateTrackingAreas"_sel);
}

void detach(RawObject view) {
    const Id alive(view);
    if (const RawObject parent = property<RawObject>(view, "superview")) remove(list(parent, "subviews"), view);
    setProperty(view, "superview", RawObject());
    if (property<RawObject>(view, "window")) setWindow(view, nullptr);
}

void attach(RawObject parent, RawObject child, bool atBottom) {
    const Id alive(child);
    detach(child);
    Elements& siblings = list(parent, "subviews");
    siblings.insert(atBottom ? siblings.begin() : siblings.end(), Id(child));
    setProperty(child, "superview", parent);
    if (const RawObject window = property<RawObject>(parent, "window")) setWindow(child, window);
}

/// The offset of a view's coordinates in its window's, or nothing to add for the window itself.
CGPoint originInWindow(RawObject view) {
    CGPoint origin;
    for (; view; view = property<RawObject>(view, "superview")) {
        const CGPoint own = property<CGRect>(view, "frame").origin;
        origin = {origin.x + own.x, origin.y + own.y};
    }
    return origin;
}

void installViewTree(Runtime& runtime) {
    runtime.implement("NSView", "addSubview:", [](Invocation& i) { attach(i.receiver(), i.object(0), false); });
    runtime.implement("NSView", "addSubview:positioned:relativeTo:", [](Invocation& i) {
        constexpr std::int64_t kBelow = -1;
        attach(i.receiver(), i.object(0), i.argument<std::int64_t>(1) == kBelow);
    });
    runtime.implement("NSView", "removeFromSuperview", [](Invocation& i) { detach(i.receiver()); });
    runtime.implement("NSView", "subviews",
                      [](Invocation& i) { i.answerObject(makeArray(list(i.receiver(), "subviews"))); });
    runtime.implement("NSView", "addTrackingArea:", [](Invocation& i) {
        list(i.receiver(), "trackingAreas").emplace_back(i.object(0));
    });
    runtime.implement("NSView", "removeTrackingArea:", [](Invocation& i) {
        remove(list(i.receiver(), "trackingAreas"), i.object(0));
    });
    runtime.implement("NSView", "trackingAreas",
                      [](Invocation& i) { i.answerObject(makeArray(list(i.receiver(), "trackingAreas"))); });
}

void installViewGeometry(Runtime& runtime) {
    runtime.implement("NSView", "bounds", [](Invocation& i) {
        i.answer<CGRect>({{}, property<CGRect>(i.receiver(), "frame").size});
    });
    runtime.implement("NSView", "setFrameSize:", [](Invocation& i) {
        CGRect frame = property<CGRect>(i.receiver(), "frame");
        frame.size = i.argument<CGSize>(0);
        setProperty(i.receiver(), "frame", frame);
    });
    runtime.implement("NSView", "convertPoint:fromView:", [](Invocation& i) {
        const CGPoint point = i.argument<CGPoint>(0);
        const CGPoint from = originInWindow(i.object(1));
        const CGPoint to = originInWindow(i.receiver());
        i.answer<CGPoint>({point.x + from.x - to.x, point.y + from.y - to.y});
    });
    runtime.implement("NSView", "layer", [](Invocation& i) {
        const RawObject self = i.receiver();
        if (!property<bool>(self, "wantsLayer")) return;
        if (!property<RawObject>(self, "layer")) {
            setProperty(self, "layer",
                        Id(objc::kAdopt, checked::runtime().allocate(checked::runtime().classNamed("CALayer"))).raw());
        }
        i.answerObject(Id(property<RawObject>(self, "layer")));
    });
    for (const char* factory : {"+labelWithString:", "+wrappingLabelWithString:"}) {
        runtime.implement("NSTextField", factory, [](Invocation& i) {
            const Id label(objc::kAdopt, checked::runtime().allocate(classOf(i.receiver())));
            setProperty(label.raw(), "stringValue", i.object(0));
            i.answerObject(label);
        });
    }
    runtime.implement("NSTextField", "intrinsicContentSize", [](Invocation& i) {
        // A fixed advance per byte: enough to tell a long title from a short one.
        constexpr double kAdvance = 7;
        constexpr double kLine = 15;
        i.answer<CGSize>(
            {kAdvance * static_cast<double>(textOf(property<RawObject>(i.receiver(), "stringValue")).size()), kLine});
    });
}

void showWindow(Invocation& i) {
    setProperty(i.receiver(), "visible", true);
}
void hideWindow(Invocation& i) {
    setProperty(i.receiver(), "visible", false);
}

void installWindows(Runtime& runtime) {
    runtime.implement("NSWindow", "initWithContentRect:styleMask:backing:defer:", [](Invocation& i) {
        setProperty(i.receiver(), "frame", i.argument<CGRect>(0));
        setProperty(i.receiver(), "styleMask", i.argument<std::uint64_t>(1));
        setProperty(i.receiver(), "releasedWhenClosed", true);
        i.answer<RawObject>(i.receiver());
    });
    runtime.implement("NSWindow", "setFrame:display:", [](Invocation& i) {
        setProperty(i.receiver(), "frame", i.argument<CGRect>(0));
    });
    runtime.implement("NSWindow", "setContentView:", [](Invocation& i) {
        if (const RawObject old = property<RawObject>(i.receiver(), "contentView")) setWindow(old, nullptr);
        setProperty(i.receiver(), "contentView", i.object(0));
        if (i.object(0)) setWindow(i.object(0), i.receiver());
    });
    for (const char* show : {"orderFrontRegardless", "makeKeyAndOrderFront:", "orderFront:"}) {
        runtime.implement("NSWindow", show, showWindow);
    }
    runtime.implement("NSWindow", "orderOut:", hideWindow);
    runtime.implement("NSWindow", "close", [](Invocation& i) {
        hideWindow(i);
        // Panels do not release themselves; windows do unless told otherwise.
        const bool isPanel = inherits(classOf(i.receiver()), "NSPanel");
        if (!isPanel && property<bool>(i.receiver(), "releasedWhenClosed")) checked::runtime().release(i.receiver());
    });
}

void installMenus(Runtime& runtime) {
    runtime.implement("NSMenu",
                      "addItem:", [](Invocation& i) { list(i.receiver(), "itemArray").emplace_back(i.object(0)); });
    runtime.implement("NSMenu", "itemArray",
                      [](Invocation& i) { i.answerObject(makeArray(list(i.receiver(), "itemArray"))); });
    runtime.implement("NSStatusItem", "button", [](Invocation& i) {
        i.answerObject(checked::runtime().shared("NSStatusBarButton", "NSStatusItem button"));
    });
    runtime.implement("NSPopover", "showRelativeToRect:ofView:preferredEdge:", [](Invocation& i) {
        setProperty(i.receiver(), "shown", true);
    });
    runtime.implement("NSPopover", "close", [](Invocation& i) { setProperty(i.receiver(), "shown", false); });
}

}  // namespace

void installViews(Runtime& runtime) {
    installViewTree(runtime);
    installViewGeometry(runtime);
    installWindows(runtime);
    installMenus(runtime);
}

}  // namespace morvel::mac::checked
