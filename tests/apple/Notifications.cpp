// Notification centres, and the names that the system exports.
#include "Platform/Mac/apple/Foundation/NSNotificationCenter.h"

#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Mac/apple/AppKit/NSScrollView.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Properties.h"

namespace morvel::mac::checked {

namespace {

struct Observer {
    Id token;
    Id name;
    RawObject object;  // null: of any; not kept, only compared
    objc::Block<void(Id)> block;
};
using Observers = std::vector<Observer>;

}  // namespace

void installNotifications(Runtime& target) {
    const auto center = target.implementing("NSNotificationCenter");
    center("addObserverForName:object:queue:usingBlock:", [](Invocation& i) {
        const Id token = runtime().make("NSObject");
        ensured<Observers>(i.receiver())
            .push_back({token, Id(i.object(0)), i.object(1), objc::Block<void(Id)>(i.argument<objc::RawBlock>(3))});
        i.answerObject(token);
    });
    center("removeObserver:", [](Invocation& i) {
        std::erase_if(ensured<Observers>(i.receiver()),
                      [&](const Observer& o) { return o.token.raw() == i.object(0); });
    });
    const auto sharedWorkspace = target.implementing("NSWorkspace");
    sharedWorkspace("notificationCenter", [](Invocation& i) {
        i.answerObject(runtime().shared("NSNotificationCenter", "NSWorkspace notificationCenter"));
    });
}

void post(Center center, RawObject name, const Id& object, Entries userInfo) {
    const objc::AutoreleasePool pool;
    const Id target =
        center == Center::Distributed
            ? runtime().shared("NSDistributedNotificationCenter", "NSDistributedNotificationCenter defaultCenter")
            : runtime().shared("NSNotificationCenter", center == Center::Default ? "NSNotificationCenter defaultCenter"
                                                                                 : "NSWorkspace notificationCenter");
    const Id notification = runtime().make("NSNotification");
    const Id info = makeDictionary(std::move(userInfo));
    setProperty(notification, "name", name);
    setProperty(notification, "object", object);
    setProperty(notification, "userInfo", info);
    // A copy: an observer may add and remove observers.
    for (const Observer& observer : Observers(ensured<Observers>(target.raw()))) {
        if (observer.object && observer.object != object.raw()) continue;
        if (areEqual(observer.name.raw(), name)) observer.block(notification);
    }
}

}  // namespace morvel::mac::checked
