#include "Animations.h"

#include "Platform/Mac/apple/AppKit/NSAnimationContext.h"
#include "Properties.h"

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
    return property<bool>(window, "isSliding");
}

CGRect slideTarget(const NSWindow& window) {
    return property<CGRect>(window, isSliding(window) ? "slidesTo" : "frame");
}

double slideDuration(const NSWindow& window) {
    return property<double>(window, "slideDuration");
}

void finishSlide(const NSWindow& window) {
    if (!isSliding(window)) return;
    setProperty(window, "isSliding", false);
    window.setFrame(property<CGRect>(window, "slidesTo"), true);
}

void installAnimations(Runtime& target) {
    const auto group = target.implementing("NSAnimationContext");
    group("+runAnimationGroup:", [](Invocation& i) {
        const Id context = runtime().make("NSAnimationContext");
        durationOfGroup = 0.25;  // AppKit's own, for those who do not say
        Block<void(NSAnimationContext)>(i.argument<objc::RawBlock>(0))(NSAnimationContext(context.raw()));
        durationOfGroup = 0;
    });
    group("setDuration:", [](Invocation& i) { durationOfGroup = i.argument<double>(0); });
    const auto window = target.implementing("NSWindow");
    window("animator", [](Invocation& i) {
        const Id proxy = runtime().make("NSPanel");
        setProperty(proxy, "animated", i.receiver());
        i.answerObject(proxy);
    });
}

}  // namespace morvel::mac::checked
