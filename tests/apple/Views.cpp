// Views, windows and menus: the tree, its coordinates, and the moments at which AppKit calls overrides.
#include <algorithm>

#include "Animations.h"
#include "Platform/Mac/apple/AppKit/NSScrollView.h"
#include "Properties.h"

namespace morvel::mac::checked {

namespace {

using namespace objc::literals;

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
    if (property<bool>(view, "hidden") || !contains({{}, size}, {point.x, down})) return {};
    const Elements children = list(view, "subviews");
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        if (const auto found = objc::send<NSView>(*child, "hitTest:"_sel, point)) return found;
    }
    return NSView(view);
}

void installViewTree(Runtime& target) {
    const auto view = target.implementing("NSView");
    view("addSubview:", [](Invocation& i) { attach(i.receiver(), i.object(0), nullptr); });
    view("addSubview:positioned:relativeTo:", [](Invocation& i) {
        const bool isBelowASibling = i.argument<std::int64_t>(1) == NSWindowBelow &&
                                     property<RawObject>(i.object(2), "superview") == i.receiver();
        if (isBelowASibling) return attach(i.receiver(), i.object(0), i.object(2));
        runtime().faults().add(FaultKind::BadCall, "only a place below a sibling is known here");
    });
    view("setSubviews:", [](Invocation& i) {
        const Elements wanted = *payloadOf<Elements>(i.object(0));
        for (const Id& old : Elements(list(i.receiver(), "subviews")))
            if (std::find(wanted.begin(), wanted.end(), old) == wanted.end()) detach(old.raw());
        for (const Id& child : wanted)
            if (property<RawObject>(child, "superview") != i.receiver()) attach(i.receiver(), child.raw(), nullptr);
        list(i.receiver(), "subviews") = wanted;
    });
    view("removeFromSuperview", [](Invocation& i) { detach(i.receiver()); });
    view("subviews", [](Invocation& i) { i.answerObject(makeArray(list(i.receiver(), "subviews"))); });
    view("addTrackingArea:", [](Invocation& i) { list(i.receiver(), "trackingAreas").emplace_back(i.object(0)); });
    view("removeTrackingArea:", [](Invocation& i) { remove(list(i.receiver(), "trackingAreas"), i.object(0)); });
    view("trackingAreas", [](Invocation& i) { i.answerObject(makeArray(list(i.receiver(), "trackingAreas"))); });
}

void installViewGeometry(Runtime& target) {
    const auto view = target.implementing("NSView");
    view("bounds", [](Invocation& i) {
        i.answer<CGRect>({scrolledTo(i.receiver()), property<CGRect>(i.receiver(), "frame").size});
    });
    view("convertPoint:fromView:", [](Invocation& i) {
        i.answer<CGPoint>(fromWindow(i.receiver(), toWindow(i.object(1), i.argument<CGPoint>(0))));
    });
    view("hitTest:", [](Invocation& i) { i.answerObject(hitTest(i.receiver(), i.argument<CGPoint>(0))); });
    const auto textField = target.implementing("NSTextField");
    textField("isFlipped", [](Invocation& i) { i.answer<bool>(true); });
    view("layer", [](Invocation& i) {
        const RawObject self = i.receiver();
        if (!property<bool>(self, "wantsLayer")) return;
        if (!property<RawObject>(self, "layer")) {
            setProperty(self, "layer", runtime().make("CALayer"));
        }
        i.answerObject(Id(property<RawObject>(self, "layer")));
    });
    for (const char* factory : {"+labelWithString:", "+wrappingLabelWithString:"}) {
        textField(factory, [](Invocation& i) {
            const Id label(objc::kAdopt, runtime().allocate(classOf(i.receiver())));
            setProperty(label, "stringValue", i.object(0));
            i.answerObject(label);
        });
    }
}

RawObject clipViewOf(RawObject scrollView) {
    if (!property<RawObject>(scrollView, "contentView")) {
        const Id clip = runtime().make("NSClipView");
        setProperty(scrollView, "contentView", clip);
        attach(scrollView, clip.raw(), nullptr);
    }
    const RawObject clip = property<RawObject>(scrollView, "contentView");
    setProperty(clip, "frame", CGRect{{}, property<CGRect>(scrollView, "frame").size});
    return clip;
}

void installScrollViews(Runtime& target) {
    const auto scrollView = target.implementing("NSScrollView");
    scrollView("contentView", [](Invocation& i) { i.answerObject(Id(clipViewOf(i.receiver()))); });
    scrollView("setDocumentView:", [](Invocation& i) {
        const RawObject clip = clipViewOf(i.receiver());
        for (const Id& old : Elements(list(clip, "subviews"))) detach(old.raw());
        if (i.object(0)) attach(clip, i.object(0), nullptr);
    });
    scrollView("isFlipped", [](Invocation& i) { i.answer<bool>(true); });
    const auto clipView = target.implementing("NSClipView");
    clipView("isFlipped", [](Invocation& i) {
        const Elements document = list(i.receiver(), "subviews");
        i.answer<bool>(!document.empty() && isFlipped(document.front().raw()));
    });
    clipView("scrollToPoint:", [](Invocation& i) {
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

void installWindows(Runtime& target) {
    const auto window = target.implementing("NSWindow");
    window("initWithContentRect:styleMask:backing:defer:", [](Invocation& i) {
        setProperty(i.receiver(), "frame", i.argument<CGRect>(0));
        setProperty(i.receiver(), "styleMask", i.argument<std::uint64_t>(1));
        setProperty(i.receiver(), "releasedWhenClosed", true);
        i.answer<RawObject>(i.receiver());
    });
    window("setFrame:display:", [](Invocation& i) {
        if (passToAnimatedWindow(i.receiver(), i.argument<CGRect>(0))) return;
        setProperty(i.receiver(), "frame", i.argument<CGRect>(0));
        fitContent(i.receiver());
    });
    window("setContentView:", [](Invocation& i) {
        if (const RawObject old = property<RawObject>(i.receiver(), "contentView")) setWindow(old, nullptr);
        setProperty(i.receiver(), "contentView", i.object(0));
        if (!i.object(0)) return;
        setWindow(i.object(0), i.receiver());
        fitContent(i.receiver());
    });
    for (const char* show : {"orderFrontRegardless", "makeKeyAndOrderFront:"}) {
        window(show, showWindow);
    }
    window("orderOut:", hideWindow);
    window("close", [](Invocation& i) {
        hideWindow(i);
        // Panels do not release themselves; windows do unless told otherwise.
        const bool isPanel = inherits(classOf(i.receiver()), "NSPanel");
        if (!isPanel && property<bool>(i.receiver(), "releasedWhenClosed")) runtime().release(i.receiver());
    });
}

void installMenus(Runtime& target) {
    const auto menu = target.implementing("NSMenu");
    menu("addItem:", [](Invocation& i) { list(i.receiver(), "itemArray").emplace_back(i.object(0)); });
    menu("itemArray", [](Invocation& i) { i.answerObject(makeArray(list(i.receiver(), "itemArray"))); });
    const auto statusItem = target.implementing("NSStatusItem");
    statusItem("button",
               [](Invocation& i) { i.answerObject(runtime().shared("NSStatusBarButton", "NSStatusItem button")); });
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
    const Id window = runtime().make("NSWindow");
    setProperty(self, "ownWindow", window);
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
    tell(delegate, "popoverDidClose:", runtime().make("NSNotification"));
}

void installPopovers(Runtime& target) {
    const auto popover = target.implementing("NSPopover");
    popover("showRelativeToRect:ofView:preferredEdge:", showPopover);
    popover("close", closePopover);
    popover("performClose:", closePopover);
    popover("setContentSize:", [](Invocation& i) {
        setProperty(i.receiver(), "contentSize", i.argument<CGSize>(0));
        if (!property<bool>(i.receiver(), "shown")) return;
        objc::send(popoverContent(i.receiver()), "setFrame:"_sel, CGRect{{}, i.argument<CGSize>(0)});
    });
}

}  // namespace

void installViews(Runtime& target) {
    installViewTree(target);
    installViewGeometry(target);
    installScrollViews(target);
    installWindows(target);
    installMenus(target);
    installPopovers(target);
}

}  // namespace morvel::mac::checked
