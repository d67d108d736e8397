// Views, windows and menus: the tree, its coordinates, and the moments at which AppKit calls overrides.
#include <algorithm>

#include "Animations.h"
#include "Platform/Mac/apple/AppKit/NSScrollView.h"
#include "Platform/Mac/apple/AppKit/NSView.h"
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

/// Behind `sibling`; in front of all when that is nil.
void attach(RawObject parent, RawObject child, RawObject sibling) {
    const Id alive(child);
    detach(child);
    Elements& siblings = list(parent, "subviews");
    siblings.insert(std::find(siblings.begin(), siblings.end(), Id(sibling)), alive);
    setProperty(child, "superview", parent);
    if (const RawObject window = property<RawObject>(parent, "window")) setWindow(child, window);
}

bool isFlipped(RawObject view) {
    return view && objc::send<bool>(view, "isFlipped"_sel);
}

/// Where a clip view's document is scrolled to; nowhere in other views.
CGPoint scrolledTo(RawObject view) {
    return property<CGPoint>(view, "scrolledTo");
}

/// A point of the view's coordinates in its superview's, or in its window's when it has none.
CGPoint toSuperview(RawObject view, CGPoint point) {
    const auto frame = property<CGRect>(view, "frame");
    point.y -= scrolledTo(view).y;
    const bool isTurned = isFlipped(view) != isFlipped(property<RawObject>(view, "superview"));
    return {point.x + frame.origin.x, frame.origin.y + (isTurned ? frame.size.height - point.y : point.y)};
}

CGPoint fromSuperview(RawObject view, CGPoint point) {
    const auto frame = property<CGRect>(view, "frame");
    const bool isTurned = isFlipped(view) != isFlipped(property<RawObject>(view, "superview"));
    const double y = point.y - frame.origin.y;
    return {point.x - frame.origin.x, (isTurned ? frame.size.height - y : y) + scrolledTo(view).y};
}

CGPoint toWindow(RawObject view, CGPoint point) {
    for (; view; view = property<RawObject>(view, "superview")) point = toSuperview(view, point);
    return point;
}

CGPoint fromWindow(RawObject view, CGPoint point) {
    if (!view) return point;
    return fromSuperview(view, fromWindow(property<RawObject>(view, "superview"), point));
}

/// As NSView's own hitTest: the deepest visible view under a point of the superview's coordinates.
NSView hitTest(RawObject view, CGPoint inSuperview) {
    const auto size = property<CGRect>(view, "frame").size;
    const CGPoint point = fromSuperview(view, inSuperview);
    const double down = point.y - scrolledTo(view).y;
    const bool isInside = point.x >= 0 && point.x < size.width && down >= 0 && down < size.height;
    if (property<bool>(view, "hidden") || !isInside) return {};
    const Elements children = list(view, "subviews");
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        if (const auto found = objc::send<NSView>(*child, "hitTest:"_sel, point)) return found;
    }
    return NSView(view);
}

void installViewTree(Runtime& runtime) {
    runtime.implement("NSView", "addSubview:", [](Invocation& i) { attach(i.receiver(), i.object(0), nullptr); });
    runtime.implement("NSView", "addSubview:positioned:relativeTo:", [](Invocation& i) {
        Elements& siblings = list(i.receiver(), "subviews");
        auto at = std::find(siblings.begin(), siblings.end(), Id(i.object(2)));
        const bool isBelow = i.argument<std::int64_t>(1) == NSWindowBelow;
        if (at == siblings.end())
            at = isBelow ? siblings.begin() : siblings.end();
        else if (!isBelow)
            ++at;
        attach(i.receiver(), i.object(0), at == siblings.end() ? nullptr : at->raw());
    });
    runtime.implement("NSView", "setSubviews:", [](Invocation& i) {
        const Elements wanted = *payloadOf<Elements>(i.object(0));
        for (const Id& old : Elements(list(i.receiver(), "subviews"))) {
            if (std::find(wanted.begin(), wanted.end(), old) == wanted.end()) detach(old.raw());
        }
        for (const Id& view : wanted) {
            if (property<RawObject>(view.raw(), "superview") != i.receiver()) attach(i.receiver(), view.raw(), nullptr);
        }
        list(i.receiver(), "subviews") = wanted;
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
        i.answer<CGRect>({scrolledTo(i.receiver()), property<CGRect>(i.receiver(), "frame").size});
    });
    runtime.implement("NSView", "setFrameSize:", [](Invocation& i) {
        CGRect frame = property<CGRect>(i.receiver(), "frame");
        frame.size = i.argument<CGSize>(0);
        setProperty(i.receiver(), "frame", frame);
    });
    runtime.implement("NSView", "convertPoint:fromView:", [](Invocation& i) {
        i.answer<CGPoint>(fromWindow(i.receiver(), toWindow(i.object(1), i.argument<CGPoint>(0))));
    });
    runtime.implement("NSView",
                      "hitTest:", [](Invocation& i) { i.answerObject(hitTest(i.receiver(), i.argument<CGPoint>(0))); });
    runtime.implement("NSTextField", "isFlipped", [](Invocation& i) { i.answer<bool>(true); });
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

RawObject clipViewOf(RawObject scrollView) {
    if (!property<RawObject>(scrollView, "contentView")) {
        const Id clip = runtime().make("NSClipView", 0);
        setProperty(scrollView, "contentView", clip.raw());
        attach(scrollView, clip.raw(), nullptr);
    }
    const RawObject clip = property<RawObject>(scrollView, "contentView");
    setProperty(clip, "frame", CGRect{{}, property<CGRect>(scrollView, "frame").size});
    return clip;
}

void installScrollViews(Runtime& runtime) {
    runtime.implement("NSScrollView", "contentView",
                      [](Invocation& i) { i.answerObject(Id(clipViewOf(i.receiver()))); });
    runtime.implement("NSScrollView", "setDocumentView:", [](Invocation& i) {
        const RawObject clip = clipViewOf(i.receiver());
        for (const Id& old : Elements(list(clip, "subviews"))) detach(old.raw());
        if (i.object(0)) attach(clip, i.object(0), nullptr);
    });
    runtime.implement("NSScrollView", "isFlipped", [](Invocation& i) { i.answer<bool>(true); });
    runtime.implement("NSClipView", "isFlipped", [](Invocation& i) {
        const Elements document = list(i.receiver(), "subviews");
        i.answer<bool>(!document.empty() && isFlipped(document.front().raw()));
    });
    runtime.implement("NSClipView", "scrollToPoint:", [](Invocation& i) {
        setProperty(i.receiver(), "scrolledTo", i.argument<CGPoint>(0));
        if (property<bool>(i.receiver(), "postsBoundsChangedNotifications"))
            post(Center::Default, NSViewBoundsDidChangeNotification, Id(i.receiver()));
    });
}

/// Content that may be resized fills its window.
void fitContent(RawObject window) {
    const RawObject content = property<RawObject>(window, "contentView");
    const bool isResizable =
        property<std::uint64_t>(content, "autoresizingMask") == (NSViewWidthSizable | NSViewHeightSizable);
    if (!isResizable) return;
    objc::send(content, "setFrame:"_sel, CGRect{{}, property<CGRect>(window, "frame").size});
    objc::send(content, "updateTrackingAreas"_sel);
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
        if (passToAnimatedWindow(i.receiver(), i.argument<CGRect>(0))) return;
        setProperty(i.receiver(), "frame", i.argument<CGRect>(0));
        fitContent(i.receiver());
    });
    runtime.implement("NSWindow", "setContentView:", [](Invocation& i) {
        if (const RawObject old = property<RawObject>(i.receiver(), "contentView")) setWindow(old, nullptr);
        setProperty(i.receiver(), "contentView", i.object(0));
        if (!i.object(0)) return;
        setWindow(i.object(0), i.receiver());
        fitContent(i.receiver());
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
}

RawObject popoverContent(RawObject popover) {
    return property<RawObject>(property<RawObject>(popover, "contentViewController"), "view");
}

void showPopover(Invocation& i) {
    const RawObject self = i.receiver();
    const RawObject anchor = i.object(1);
    if (!property<RawObject>(anchor, "window")) {
        runtime().faults().add(FaultKind::BadCall, "a popover is shown beside a view that is in no window");
        return;
    }
    setProperty(self, "positioningView", anchor);
    setProperty(self, "preferredEdge", i.argument<std::uint64_t>(2));
    if (property<bool>(self, "shown")) return;
    setProperty(self, "shown", true);
    const Id window = runtime().make("NSWindow", 0);
    setProperty(self, "ownWindow", window.raw());
    objc::send(popoverContent(self), "setFrame:"_sel, CGRect{{}, property<CGSize>(self, "contentSize")});
    setWindow(popoverContent(self), window.raw());
}

void closePopover(Invocation& i) {
    const RawObject self = i.receiver();
    if (!property<bool>(self, "shown")) return;
    setProperty(self, "shown", false);
    setWindow(popoverContent(self), nullptr);
    setProperty(self, "ownWindow", RawObject());
    setProperty(self, "positioningView", RawObject());
    const Id delegate(property<RawObject>(self, "delegate"));
    if (!runtime().responds(delegate.raw(), "popoverDidClose:")) return;
    const Id notification(objc::kAdopt, runtime().allocate(runtime().classNamed("NSNotification")));
    objc::sendRaw<void, Id>(delegate.raw(), runtime().selectorNamed("popoverDidClose:"), notification);
}

void installPopovers(Runtime& runtime) {
    runtime.implement("NSPopover", "showRelativeToRect:ofView:preferredEdge:", showPopover);
    runtime.implement("NSPopover", "close", closePopover);
    runtime.implement("NSPopover", "performClose:", closePopover);
    runtime.implement("NSPopover", "setContentSize:", [](Invocation& i) {
        setProperty(i.receiver(), "contentSize", i.argument<CGSize>(0));
        if (!property<bool>(i.receiver(), "shown")) return;
        objc::send(popoverContent(i.receiver()), "setFrame:"_sel, CGRect{{}, i.argument<CGSize>(0)});
    });
}

}  // namespace

void installViews(Runtime& runtime) {
    installViewTree(runtime);
    installViewGeometry(runtime);
    installScrollViews(runtime);
    installWindows(runtime);
    installMenus(runtime);
    installPopovers(runtime);
}

}  // namespace morvel::mac::checked
