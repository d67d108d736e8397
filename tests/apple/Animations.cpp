#include "Animations.h"

#include "Platform/Mac/apple/AppKit/NSAnimationContext.h"
#include "Properties.h"
#include "SystemObjects.h"

namespace morvel::mac::checked {

namespace {

using namespace objc::literals;

double durationOfGroup = 0;

/// What is set through the animator is reached at the end of the group's duration, or at once without one.
void setFrameThroughAnimator(RawObject window, CGRect frame) {
    setProperty(window, "isSliding", durationOfGroup > 0);
    setProperty(window, "slidesTo", frame);
    setProperty(window, "slideDuration", durationOfGroup);
    if (durationOfGroup <= 0) objc::send(window, "setFrame:display:"_sel, frame, true);
}

}  // namespace

bool passToAnimatedWindow(RawObject animator, CGRect frame) {
    const RawObject window = property<RawObject>(animator, "animated");
    if (window) setFrameThroughAnimator(window, frame);
    return window != nullptr;
}

bool isSliding(const NSWindow& window) {
    return property<bool>(window.raw(), "isSliding");
}

CGRect slideTarget(const NSWindow& window) {
    return property<CGRect>(window.raw(), isSliding(window) ? "slidesTo" : "frame");
}

double slideDuration(const NSWindow& window) {
    return property<double>(window.raw(), "slideDuration");
}

void finishSlide(const NSWindow& window) {
    if (!isSliding(window)) return;
    setProperty(window.raw(), "isSliding", false);
    window.setFrame(property<CGRect>(window.raw(), "slidesTo"), true);
}

void installAnimations(Runtime& runtime) {
    runtime.implement("NSAnimationContext", "+runAnimationGroup:", [](Invocation& i) {
        const Id context(objc::kAdopt,
                         checked::runtime().allocate(checked::runtime().classNamed("NSAnimationContext")));
        durationOfGroup = 0.25;  // AppKit's own, for those who do not say
        Block<void(NSAnimationContext)>(i.argument<objc::RawBlock>(0))(NSAnimationContext(context.raw()));
        durationOfGroup = 0;
    });
    runtime.implement("NSAnimationContext",
                      "setDuration:", [](Invocation& i) { durationOfGroup = i.argument<double>(0); });
    runtime.implement("NSWindow", "animator", [](Invocation& i) {
        const Id proxy(objc::kAdopt, checked::runtime().allocate(checked::runtime().classNamed("NSPanel")));
        setProperty(proxy.raw(), "animated", i.receiver());
        i.answerObject(proxy);
    });
}

}  // namespace morvel::mac::checked
