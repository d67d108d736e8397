// The observer's life on the run loop, and the callback's hop to the main loop.
#include "Platform/Mac/Windows/MacObserver.h"

#include "Platform/Mac/Windows/MacElement.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Platform/Mac/objc/Guard.h"

namespace morvel::mac {

/// What the callback finds its way back with. Notices that are on their way when the observer ends only refer to it.
struct MacObserver::Context : std::enable_shared_from_this<Context> {
    Context(MainLoop& loop, Accessibility::Notice listener) : mainLoop(loop), notice(std::move(listener)) {}

    MainLoop& mainLoop;
    const Accessibility::Notice notice;
};

std::unique_ptr<morvel::AXObserver> MacObserver::make(AXMessenger& messenger, ProcessID pid,
                                                      Accessibility::Notice notice) {
    CFRef<AXObserverRef> observer;
    if (AXObserverCreate(pid.value, &received, observer.receive()) != kAXErrorSuccess || !observer) return nullptr;
    if (!AXObserverGetRunLoopSource(observer.get())) return nullptr;
    auto context = std::make_shared<Context>(messenger.mainLoop(), std::move(notice));
    return std::unique_ptr<morvel::AXObserver>(new MacObserver(messenger, std::move(context), std::move(observer)));
}

MacObserver::MacObserver(AXMessenger& messenger, std::shared_ptr<Context> context, CFRef<AXObserverRef> observer)
    : messenger_(messenger),
      context_(std::move(context)),
      observer_(std::move(observer)),
      runLoop_(CFRef<CFRunLoopRef>::retain(CFRunLoopGetCurrent())) {
    CFRunLoopAddSource(runLoop_.get(), AXObserverGetRunLoopSource(observer_.get()), kCFRunLoopDefaultMode);
}

MacObserver::~MacObserver() {
    CFRunLoopRemoveSource(runLoop_.get(), AXObserverGetRunLoopSource(observer_.get()), kCFRunLoopDefaultMode);
}

morvel::AXError MacObserver::addNotification(const AXElement& element, std::string_view name) {
    const MacElement& target = MacElement::of(element);
    const auto notification = cfString(name);
    if (!target.reference() || !notification) return morvel::AXError::InvalidElement;
    return messenger_.ask(target.pid(), [&] {
        return AXObserverAddNotification(observer_.get(), target.reference(), notification.get(), context_.get());
    });
}

void MacObserver::received(AXObserverRef, AXUIElementRef element, CFStringRef notification, void* context) {
    const objc::AutoreleasePool pool;
    objc::guarded("accessibility notice", [&] {
        const auto name = stringFrom(notification);
        if (!cfCast<AXUIElementRef>(element) || !name) return;
        auto& observed = *static_cast<Context*>(context);
        observed.mainLoop.post([about = observed.weak_from_this(), name = *name,
                                element = MacElement::wrap(CFRef<AXUIElementRef>::retain(element))] {
            if (const auto alive = about.lock()) alive->notice(element, name);
        });
    });
}

}  // namespace morvel::mac
