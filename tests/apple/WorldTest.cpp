// The scripted worlds behind the C functions, and the host's entry into them: launching, timers, elements, Spaces.
#include "Application.h"
#include "Platform/Mac/AppDelegate.h"
#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Mac/apple/AppKit/NSStatusItem.h"
#include "Platform/Mac/apple/CFRef.h"
#include "Platform/Mac/apple/CoreGraphics.h"
#include "Platform/Mac/apple/Foundation/NSNumber.h"
#include "Platform/Mac/apple/Foundation/NSUserDefaults.h"
#include "Platform/Mac/apple/SystemFunction.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

using namespace std::chrono_literals;

class World : public RuntimeTest {};

TEST_F(World, TheDelegateHearsOfLaunchAndQuit) {
    std::vector<std::string> heard;
    const NSApplication application = NSApplication::shared();
    const NSObject delegate = AppDelegate::make(
        {.launched = [&] { heard.push_back("launched"); }, .quitting = [&] { heard.push_back("quitting"); }});
    application.setDelegate(delegate);
    EXPECT_TRUE(application.setActivationPolicy(NSApplicationActivationPolicyAccessory));
    whileRunning([&] {
        heard.push_back("running");
        application.terminate();
    });
    application.run();
    EXPECT_EQ(heard, (std::vector<std::string>{"launched", "running", "quitting"}));
    const auto names = runtime().callNames();
    const auto policy = std::ranges::find(names, "NSApplication setActivationPolicy:");
    const auto run = std::ranges::find(names, "NSApplication run");
    EXPECT_LT(policy, run);
    EXPECT_NE(run, names.end());
}

TEST_F(World, TimersAndQueuesFollowTheClock) {
    std::vector<std::int64_t> fired;
    const auto tick = [](void* context) {
        static_cast<std::vector<std::int64_t>*>(context)->push_back(dispatch().now() / 1ms);
    };
    const auto begin = dispatch().now() / 1ms;
    const auto timer = dispatch_source_create(&_dispatch_source_type_timer, 0, 0, &_dispatch_main_q);
    dispatch_set_context(dispatchObject(timer), &fired);
    dispatch_source_set_event_handler_f(timer, tick);
    constexpr std::uint64_t kSecond = 1'000'000'000;
    dispatch_source_set_timer(timer, dispatch_time(DISPATCH_TIME_NOW, kSecond), kSecond, 0);
    dispatch().runFor(5s);
    EXPECT_TRUE(fired.empty()) << "not resumed yet";
    dispatch_resume(dispatchObject(timer));
    fired.clear();
    dispatch().runFor(2500ms);
    EXPECT_EQ(fired, (std::vector<std::int64_t>{begin + 5000, begin + 6000, begin + 7000}));
    dispatch_source_cancel(timer);
    dispatch_async_f(&_dispatch_main_q, &fired, tick);
    dispatch().runFor(10s);
    EXPECT_EQ(fired.size(), 4U) << "only the posted work";
    EXPECT_EQ(fired.back(), begin + 7500);
    dispatch_release(dispatchObject(timer));
}

TEST_F(World, ElementsAnswerFailAndNotify) {
    const Id window = accessibility().makeElement(42);
    accessibility().set(window, "AXTitle", makeString("Notes"));
    accessibility().setSize(window, "AXSize", {640, 480});
    accessibility().setWindowNumber(window, 7);
    const auto element = reinterpret_cast<AXUIElementRef>(window.raw());

    CFRef<CFTypeRef> value;
    EXPECT_EQ(AXUIElementCopyAttributeValue(element, cfString("AXTitle").get(), value.receive()), kAXErrorSuccess);
    EXPECT_EQ(stringFrom(value.get()), "Notes");
    EXPECT_EQ(integerFrom(value.get()), std::nullopt) << "a string is no number";
    CGSize size;
    ASSERT_EQ(AXUIElementCopyAttributeValue(element, cfString("AXSize").get(), value.receive()), kAXErrorSuccess);
    EXPECT_TRUE(AXValueGetValue(cfCast<AXValueRef>(value.get()), kAXValueTypeCGSize, &size));
    EXPECT_EQ(size, (CGSize{640, 480}));
    EXPECT_EQ(AXUIElementCopyAttributeValue(element, cfString("AXRole").get(), value.receive()), kAXErrorNoValue);
    EXPECT_FALSE(value) << "a failed read leaves nothing of the last";

    const auto getWindow = systemFunctionAs<AXError (*)(AXUIElementRef, std::uint32_t*)>("_AXUIElementGetWindow");
    std::uint32_t number = 0;
    EXPECT_EQ(getWindow(element, &number), kAXErrorSuccess);
    EXPECT_EQ(number, 7U);

    accessibility().failProcess(42, kAXErrorCannotComplete);
    EXPECT_EQ(AXUIElementSetAttributeValue(element, cfString("AXMinimized").get(), kCFBooleanTrue),
              kAXErrorCannotComplete);
    accessibility().failProcess(42, kAXErrorSuccess);
    EXPECT_EQ(AXUIElementSetAttributeValue(element, cfString("AXMinimized").get(), kCFBooleanTrue), kAXErrorSuccess);
    EXPECT_EQ(boolFrom(referenceTo(accessibility().value(window, "AXMinimized").raw())), true);
    accessibility().performed = [&](const ElementIdentity&, const std::string& action) {
        if (action == "AXPress") accessibility().destroy(window);
    };
    EXPECT_EQ(AXUIElementPerformAction(element, cfString("AXPress").get()), kAXErrorSuccess);
    EXPECT_EQ(AXUIElementCopyAttributeValue(element, cfString("AXTitle").get(), value.receive()),
              kAXErrorInvalidUIElement);
    EXPECT_EQ(accessibility().log, (std::vector<std::string>{"set AXMinimized", "perform AXPress"}));
}

TEST_F(World, ObserversHearWhatTheySubscribedTo) {
    struct Heard {
        std::vector<std::string> names;
    } heard;
    const AXObserverCallback callback = [](AXObserverRef, AXUIElementRef element, CFStringRef name, void* context) {
        std::int32_t pid = 0;
        AXUIElementGetPid(element, &pid);
        static_cast<Heard*>(context)->names.push_back(*stringFrom(name) + " " + std::to_string(pid));
    };
    CFRef<AXObserverRef> observer;
    ASSERT_EQ(AXObserverCreate(42, callback, observer.receive()), kAXErrorSuccess);
    const auto application = CFRef<AXUIElementRef>::adopt(AXUIElementCreateApplication(42));
    const auto again = CFRef<AXUIElementRef>::adopt(AXUIElementCreateApplication(42));
    EXPECT_NE(application.get(), again.get());
    EXPECT_TRUE(CFEqual(application.get(), again.get()));

    accessibility().refuseSubscription(42, "AXWindowCreated", kAXErrorCannotComplete, 1);
    const auto created = cfString("AXWindowCreated");
    const auto add = [&] {
        return AXObserverAddNotification(observer.get(), application.get(), created.get(), &heard);
    };
    EXPECT_EQ(add(), kAXErrorCannotComplete);
    EXPECT_EQ(add(), kAXErrorSuccess);
    EXPECT_EQ(add(), kAXErrorNotificationAlreadyRegistered);

    const Id window = accessibility().makeElement(42);
    accessibility().post(window, "AXWindowCreated");
    EXPECT_TRUE(heard.names.empty()) << "its source is on no run loop";
    const auto source = AXObserverGetRunLoopSource(observer.get());
    CFRunLoopAddSource(CFRunLoopGetCurrent(), source, kCFRunLoopDefaultMode);
    accessibility().post(window, "AXWindowCreated");
    accessibility().post(window, "AXWindowMoved");
    accessibility().post(accessibility().makeElement(43), "AXWindowCreated");
    EXPECT_EQ(heard.names, std::vector<std::string>{"AXWindowCreated 42"});
    observer = {};
    accessibility().post(window, "AXWindowCreated");
    EXPECT_EQ(heard.names.size(), 1U) << "the observer is gone";
}

TEST_F(World, TheWindowServerMayLackFunctionsAndRefuseMoves) {
    using Move = void (*)(std::int32_t, CFArrayRef, std::uint64_t);
    const Id windows = makeArray({makeNumber(std::int64_t{7})});
    const auto array = static_cast<CFArrayRef>(referenceTo(windows.raw()));
    systemFunctionAs<Move>("CGSMoveWindowsToManagedSpace")(77, array, 3);
    EXPECT_EQ(windowServer().spacesOfWindow[7], std::set<std::uint64_t>{3});
    windowServer().refusesMoves = true;
    systemFunctionAs<Move>("CGSMoveWindowsToManagedSpace")(77, array, 4);
    EXPECT_EQ(windowServer().spacesOfWindow[7], std::set<std::uint64_t>{3});
    windowServer().hide("CGSCopySpacesForWindows");
    EXPECT_EQ(systemFunction("CGSCopySpacesForWindows"), nullptr);

    windowServer().windows = {{.number = 7, .layer = 25, .pid = 42, .bounds = {}}};
    const auto info = CFRef<CFArrayRef>::adopt(CGWindowListCopyWindowInfo(kCGWindowListOptionIncludingWindow, 7));
    const auto elements = elementsOf(info.get());
    ASSERT_EQ(elements.size(), 1U);
    EXPECT_EQ(integerFrom(valueIn(elements[0], kCGWindowLayer)), 25);
}

TEST_F(World, DefaultsKeepValuesOfAnyType) {
    const NSUserDefaults defaults = NSUserDefaults::standard();
    const NSString key = NSString::from("showMenuBarIcon");
    EXPECT_FALSE(defaults.at(key));
    defaults.set(key, NSNumber::from(true));
    EXPECT_TRUE(objc::as<NSNumber>(defaults.at(key)).boolValue());
    EXPECT_FALSE(objc::as<NSString>(defaults.at(key)));
    defaults.remove(key);
    EXPECT_FALSE(defaults.at(key));
}

TEST_F(World, ScriptsAnswerForTheUser) {
    runtime().script("NSAlert", "runModal", [](Invocation& i) { i.answer<NSInteger>(NSAlertFirstButtonReturn + 1); });
    const NSAlert alert = create<NSAlert>();
    alert.setMessageText(NSString::from("Hide and shrink the macOS Dock?"));
    alert.addButton(NSString::from("Skip"));
    EXPECT_EQ(alert.runModal(), NSAlertFirstButtonReturn + 1);
    const NSStatusItem item = NSStatusBar::system().statusItem(NSVariableStatusItemLength);
    ASSERT_TRUE(item);
    item.button().setImagePosition(NSImageOnly);
    item.setMenu(NSMenu::make(NSString::from("Morvel")));
    NSStatusBar::system().remove(item);
    EXPECT_EQ(runtime().callNames(),
              (std::vector<std::string>{
                  "NSAlert setMessageText:", "NSAlert addButtonWithTitle:", "NSAlert runModal",
                  "NSStatusBar systemStatusBar", "NSStatusBar statusItemWithLength:", "NSStatusItem button",
                  "NSStatusBarButton setImagePosition:", "NSMenu initWithTitle:", "NSStatusItem setMenu:",
                  "NSStatusBar systemStatusBar", "NSStatusBar removeStatusItem:"}));
}

TEST_F(World, ApplicationsAndScreensComeAndGoWithTheirNotices) {
    std::vector<std::string> heard;
    const auto note = [&](RawObject name) {
        return NSWorkspace::shared().notificationCenter().observe(NSString(name), [&](const NSNotification& notice) {
            const Id application = notice.userInfo().at(NSString(NSWorkspaceApplicationKey));
            heard.push_back(notice.name().text() + " " +
                            std::to_string(objc::as<NSRunningApplication>(application).processIdentifier()));
        });
    };
    const Subscription launches = note(NSWorkspaceDidLaunchApplicationNotification);
    const Subscription quits = note(NSWorkspaceDidTerminateApplicationNotification);
    workspace().launch({.pid = 42, .bundleIdentifier = "org.example.notes", .name = "Notes"});
    const auto silent = workspace().launch({.pid = 43, .bundleIdentifier = "", .name = "Agent", .activationPolicy = 1});
    EXPECT_FALSE(silent.bundleIdentifier());
    EXPECT_TRUE(NSRunningApplication::withPid(42).activate(NSApplicationActivateIgnoringOtherApps));
    EXPECT_EQ(NSWorkspace::shared().frontmostApplication().localizedName().text(), "Notes");
    workspace().quit(43, WorkspaceWorld::Notice::Missed);
    EXPECT_TRUE(silent.isTerminated());
    EXPECT_TRUE(NSRunningApplication::withPid(42).terminate());
    EXPECT_FALSE(NSRunningApplication::withPid(42));
    EXPECT_EQ(NSWorkspace::shared().runningApplications().count(), 0U);
    EXPECT_EQ(heard, (std::vector<std::string>{"NSWorkspaceDidLaunchApplicationNotification 42",
                                               "NSWorkspaceDidLaunchApplicationNotification 43",
                                               "NSWorkspaceDidTerminateApplicationNotification 42"}));

    workspace().setScreens({{.display = 5, .name = "Built-in", .frame = {{0, 0}, {1440, 900}}, .visibleFrame = {}}});
    const auto screens = NSScreen::screens().elements<NSScreen>();
    ASSERT_EQ(screens.size(), 1U);
    EXPECT_EQ(screens[0].frame().size, (CGSize{1440, 900}));
    EXPECT_EQ(screens[0].deviceDescription().at<NSNumber>("NSScreenNumber").integerValue(), 5);
}

}  // namespace
}  // namespace morvel::mac::checked
