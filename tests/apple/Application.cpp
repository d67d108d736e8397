// The application object: launching, running and quitting as AppKit tells the delegate.
#include "Events.h"
#include "FakeDispatch.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Platform/Mac/objc/Block.h"
#include "Properties.h"

namespace morvel::mac::checked {

namespace {

void tellDelegate(RawObject application, const std::string& selector) {
    const objc::AutoreleasePool pool;
    const Id delegate = property<Id>(application, "delegate");
    if (runtime().responds(delegate.raw(), selector)) tell(delegate, selector, runtime().make("NSNotification"));
}

}  // namespace

void whileRunning(std::function<void()> script) {
    runtime().script("NSApplication", "run", [script = std::move(script)](Invocation& i) {
        tellDelegate(i.receiver(), "applicationWillFinishLaunching:");
        tellDelegate(i.receiver(), "applicationDidFinishLaunching:");
        script();
    });
}

void installApplication(Runtime& target) {
    // What is performed in the loop's next pass runs between two pieces of the main queue.
    const auto runLoop = target.implementing("NSRunLoop");
    runLoop("performBlock:", [](Invocation& i) {
        using Work = objc::Block<void()>;
        dispatch().enqueue(dispatch().resolve(DISPATCH_TIME_NOW), &_dispatch_main_q,
                           new Work(i.argument<objc::RawBlock>(0)), [](void* context) {
                               const std::unique_ptr<Work> work(static_cast<Work*>(context));
                               (*work)();
                           });
    });
    const auto application = target.implementing("NSApplication");
    application("terminate:", [](Invocation& i) { tellDelegate(i.receiver(), "applicationWillTerminate:"); });
}

void installSystemObjects(Runtime& target) {
    installValues(target);
    installViews(target);
    installForms(target);
    installAnimations(target);
    installDrags(target);
    installEvents(target);
    installAppearance(target);
    installNotifications(target);
    installWorkspace(target);
    installApplication(target);
}

}  // namespace morvel::mac::checked
