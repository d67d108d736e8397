// The notices of one process, from the system's observer to the main loop.
#pragma once

#include "Platform/Mac/Windows/AXMessenger.h"

namespace morvel::mac {

class MacObserver : public morvel::AXObserver {
public:
    /// Null when the system makes no observer for the process. The messenger outlives the observer, which lives and
    /// dies on the main thread.
    static std::unique_ptr<morvel::AXObserver> make(AXMessenger& messenger, ProcessID pid,
                                                    Accessibility::Notice notice);
    ~MacObserver() override;

    morvel::AXError addNotification(const AXElement& element, std::string_view name) override;

private:
    struct Context;

    MacObserver(AXMessenger& messenger, std::shared_ptr<Context> context, CFRef<AXObserverRef> observer);
    static void received(AXObserverRef observer, AXUIElementRef element, CFStringRef notification, void* context);

    AXMessenger& messenger_;
    // The system is given its address with each notification, and uses it until the observer is gone; so it is
    // declared first and goes last.
    const std::shared_ptr<Context> context_;
    const CFRef<AXObserverRef> observer_;
    const CFRef<CFRunLoopRef> runLoop_;
};

}  // namespace morvel::mac
