// The application object: launching, running and quitting as AppKit tells the delegate.
#include "Application.h"

#include "FakeDispatch.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Platform/Mac/objc/Block.h"
#include "Platform/Mac/objc/Send.h"
#include "SystemObjects.h"

namespace morvel::mac::checked {

namespace {

using namespace objc::literals;

void tellDelegate(RawObject application, const std::string& selector) {
    const objc::AutoreleasePool pool;
    const Id delegate = objc::send<Id>(application, "delegate"_sel);
    if (!runtime().responds(delegate.raw(), selector)) return;
    const Id notification(objc::kAdopt, runtime().allocate(runtime().classNamed("NSNotification")));
    objc::sendRaw<void, Id>(delegate.raw(), runtime().selectorNamed(selector), notification);
}

}  // namespace

void whileRunning(std::function<void()> script) {
    runtime().script("NSApplication", "run", [script = std::move(script)](Invocation& i) {
        tellDelegate(i.receiver(), "applicationWillFinishLaunching:");
        tellDelegate(i.receiver(), "applicationDidFinishLaunching:");
        script();
    });
}

void installApplication(Runtime& runtime) {
    // What is performed in the loop's next pass runs between two pieces of the main queue.
    runtime.implement("NSRunLoop", "performBlock:", [](Invocation& i) {
        using Work = objc::Block<void()>;
        dispatch().enqueue(dispatch().resolve(DISPATCH_TIME_NOW), &_dispatch_main_q,
                           new Work(i.argument<objc::RawBlock>(0)), [](void* context) {
                               const std::unique_ptr<Work> work(static_cast<Work*>(context));
                               (*work)();
                           });
    });
    runtime.implement("NSApplication", "run",
                      [](Invocation& i) { tellDelegate(i.receiver(), "applicationDidFinishLaunching:"); });
    runtime.implement("NSApplication",
                      "terminate:", [](Invocation& i) { tellDelegate(i.receiver(), "applicationWillTerminate:"); });
}

void installSystemObjects(Runtime& runtime) {
    installValues(runtime);
    installViews(runtime);
    installForms(runtime);
    installAnimations(runtime);
    installDrags(runtime);
    installEvents(runtime);
    installAppearance(runtime);
    installNotifications(runtime);
    installWorkspace(runtime);
    installApplication(runtime);
}

}  // namespace morvel::mac::checked
