// Notification centres, and the names that the system exports.
#include "Platform/Mac/apple/Foundation/NSNotificationCenter.h"

#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Mac/apple/AppKit/NSScrollView.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Properties.h"
#include "SystemObjects.h"

namespace morvel::mac::checked {

namespace {

struct Observer {
    Id token;
    Id name;
    RawObject object;  // null: of any; not kept, only compared
    objc::Block<void(Id)> block;
};
using Observers = std::vector<Observer>;

Observers& observersOf(RawObject center) {
    if (!payloadOf<Observers>(center)) setPayload(center, Observers{});
    return *payloadOf<Observers>(center);
}

}  // namespace

void installNotifications(Runtime& runtime) {
    runtime.implement("NSNotificationCenter", "addObserverForName:object:queue:usingBlock:", [](Invocation& i) {
        const Id token(objc::kAdopt, checked::runtime().allocate(checked::runtime().classNamed("NSObject")));
        observersOf(i.receiver())
            .push_back({token, Id(i.object(0)), i.object(1), objc::Block<void(Id)>(i.argument<objc::RawBlock>(3))});
        i.answerObject(token);
    });
    runtime.implement("NSNotificationCenter", "removeObserver:", [](Invocation& i) {
        std::erase_if(observersOf(i.receiver()), [&](const Observer& o) { return o.token.raw() == i.object(0); });
    });
    runtime.implement("NSWorkspace", "notificationCenter", [](Invocation& i) {
        i.answerObject(checked::runtime().shared("NSNotificationCenter", "NSWorkspace notificationCenter"));
    });
}

void post(Center center, RawObject name, const Id& object, Entries userInfo) {
    const objc::AutoreleasePool pool;
    const Id target =
        center == Center::Distributed
            ? runtime().shared("NSDistributedNotificationCenter", "NSDistributedNotificationCenter defaultCenter")
            : runtime().shared("NSNotificationCenter", center == Center::Default ? "NSNotificationCenter defaultCenter"
                                                                                 : "NSWorkspace notificationCenter");
    const Id notification(objc::kAdopt, runtime().allocate(runtime().classNamed("NSNotification")));
    const Id info = makeDictionary(std::move(userInfo));
    setProperty(notification.raw(), "name", name);
    setProperty(notification.raw(), "object", object.raw());
    setProperty(notification.raw(), "userInfo", info.raw());
    // A copy: an observer may add and remove observers.
    for (const Observer& observer : Observers(observersOf(target.raw()))) {
        if (observer.object && observer.object != object.raw()) continue;
        if (areEqual(observer.name.raw(), name)) observer.block(notification);
    }
}

}  // namespace morvel::mac::checked
