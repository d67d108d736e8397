// The checked runtime's checks can fail: each kind of wrongness, done on purpose, is reported as what it is.
#include "Declarations.h"
#include "Platform/Mac/apple/AppKit/NSWindow.h"
#include "Platform/Mac/apple/AppKit/NSWorkspace.h"
#include "Platform/Mac/apple/CFRef.h"
#include "Platform/Mac/apple/Foundation/NSNumber.h"
#include "Platform/Mac/apple/SystemFunction.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Platform/Mac/objc/Subclass.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

using Kinds = std::vector<FaultKind>;

class SelfTest : public RuntimeTest {
protected:
    /// Sends by name and with these types, so that the wrong message is not among the written ones.
    template <typename R, typename... Args>
    static void sendWrong(const Id& receiver, const char* selector, const Args&... arguments) {
        objc::sendRaw<R, Args...>(receiver.raw(), objc::sel_registerName(selector), arguments...);
    }
    template <typename W>
    static Id classObject() {
        return Id(reinterpret_cast<RawObject>(ClassOf<W>::get()));
    }
    NSWindow window = NSWindow::make({{0, 0}, {100, 20}}, NSWindowStyleMaskTitled);
};

TEST_F(SelfTest, RightMessagesAreNoFaults) {
    sendWrong<CGRect>(window, "frame");
    sendWrong<void, CGRect, bool>(window, "setFrame:display:", CGRect{}, true);
    EXPECT_EQ(takenKinds(), Kinds{});
}

TEST_F(SelfTest, WrongMessagesAndDeclarations) {
    using enum FaultKind;
    const NSObject workspace = NSWorkspace::shared();
    const NSView view = NSView::make({});
    const Id none;
    int notAnObject = 0;
    const auto toNoObject = [&] { tell(reinterpret_cast<RawObject>(&notAnObject), "close"); };
    const auto withoutBlock = [&] {
        sendWrong<Id, Id, Id, Id, Id>(NSNotificationCenter::defaultCenter(),
                                      "addObserverForName:object:queue:usingBlock:", none, none, none, none);
    };
    const auto written = [](const char* className, bool toClass) {
        const objc::MessageTypes types = objc::MessageEncoding<void, int>::kTypes;
        return [=] { runtime().checkWritten({className, toClass, "setLevel:", types}); };
    };
    const auto function = [](const char* name, const objc::MessageTypes& types) {
        return [=] { checkFunction({name, types}); };
    };
    const auto constant = [](const char* name, auto value) { return [=] { checkConstant(constantOf(name, value)); }; };
    const auto createsObserver = functionTypes<AXError(std::int32_t, AXObserverCallback, AXObserverRef)>();
    struct Row {
        FaultKind kind;
        const char* why;
        std::function<void()> act;
    };
    for (const Row& row : std::vector<Row>{
             {UnknownSelector, "no such method anywhere", [&] { sendWrong<void>(window, "setFarme"); }},
             {UnknownSelector, "another class's", [&] { sendWrong<void, NSInteger>(window, "setMaterial:", 6); }},
             {UnknownSelector, "not even the class has it", [&] { sendWrong<Id>(window, "sharedWorkspace"); }},
             {UnknownSelector, "a wrapper does not change the object's class",
              [&] { sendWrong<std::int32_t>(NSRunningApplication(window), "processIdentifier"); }},
             {WrongReceiver, "a class method to an instance", [&] { sendWrong<Id>(workspace, "sharedWorkspace"); }},
             {WrongReceiver, "an instance's to the class",
              [&] { sendWrong<CGRect>(classObject<NSWindow>(), "frame"); }},
             {WrongReceiver, "to no object", toNoObject},
             {UnknownClass, "of a class", [] { objc::objc_getClass("NSWindwo"); }},
             {UnknownClass, "of a protocol", [] { objc::objc_getProtocol("NSApplicationDelegat"); }},
             {UnknownFunction, "looked up", [] { systemFunction("CGSMainConnection"); }},
             {ArgumentCount, "too few", [&] { sendWrong<void>(window, "setLevel:"); }},
             {ArgumentCount, "too many", [&] { sendWrong<void, NSInteger, NSInteger>(window, "setLevel:", 9, 9); }},
             {ArgumentType, "int for NSInteger", [&] { sendWrong<void, int>(window, "setLevel:", 9); }},
             {ArgumentType, "unsigned for signed", [&] { sendWrong<void, NSUInteger>(window, "setLevel:", 9U); }},
             {ArgumentType, "integer for bool", [&] { sendWrong<void, NSInteger>(window, "setHasShadow:", 0); }},
             {ArgumentType, "float for double", [&] { sendWrong<void, float>(view, "setAlphaValue:", 0.5F); }},
             {ArgumentType, "point for rectangle", [&] { sendWrong<void, CGPoint>(view, "setFrame:", CGPoint{}); }},
             {ArgumentType, "selector for object", [&] { sendWrong<void, Selector>(window, "setTitle:", Selector()); }},
             {ArgumentType, "C text for object", [&] { sendWrong<void, const char*>(window, "setTitle:", "title"); }},
             {ArgumentType, "object for block", withoutBlock},
             {ResultType, "point for rectangle", [&] { sendWrong<CGPoint>(window, "frame"); }},
             {ResultType, "nothing for bool", [&] { sendWrong<void>(window, "isVisible"); }},
             {ArgumentType, "written but never sent", written("NSWindow", false)},
             {WrongReceiver, "written but never sent", written("NSWindow", true)},
             {UnknownClass, "written but never sent", written("NSWindwo", false)},
             {UnknownFunction, "declared", function("CFRetainn", functionTypes<decltype(CFRetain)>())},
             {WrongFunction, "result", function("CFGetTypeID", functionTypes<int(CFTypeRef)>())},
             {WrongFunction, "the reference instead of where to store it",
              function("AXObserverCreate", createsObserver)},
             {UnknownConstant, "misspelt", constant("NSTrackingActiveAlwyas", NSUInteger{128})},
             {WrongConstant, "value", constant("NSTrackingActiveAlways", NSUInteger{64})},
             {WrongConstant, "type", constant("NSTrackingActiveAlways", 128)},
         }) {
        row.act();
        EXPECT_EQ(takenKinds(), Kinds{row.kind}) << row.why;
    }
}

struct WrongOverrides {
    static constexpr const char* kClassName = "MorvelWrongOverrides";
    int canBecomeKey() { return 0; }
    void misspelt() {}
    void setTitle(NSString) {}
    bool launched(NSNotification) { return true; }
};

TEST_F(SelfTest, WrongOverrides) {
    using Class = objc::Subclass<WrongOverrides>;
    Class cls("NSPanel");
    cls.overrides<&WrongOverrides::canBecomeKey>("canBecomeKeyWindow"_sel);
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::WrongOverride}) << "another result";
    cls.overrides<&WrongOverrides::misspelt>("canBecomeKeyWindwo"_sel);
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::WrongOverride}) << "nothing to override";
    cls.adds<&WrongOverrides::setTitle>("setTitle:"_sel);
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::WrongOverride}) << "an action that hides a method";
    cls.overrides<&WrongOverrides::launched>("applicationDidFinishLaunching:"_sel);
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::WrongOverride}) << "of a protocol that the class does not adopt";
    cls.adopts("NSApplicationDelegate");
    cls.overrides<&WrongOverrides::launched>("applicationWillTerminate:"_sel);
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::WrongOverride}) << "another result than the protocol's";
    cls.adds<&WrongOverrides::misspelt>("openSettings"_sel);
    EXPECT_EQ(takenKinds(), Kinds{});
}

TEST_F(SelfTest, Leaks) {
    window = {};
    const std::pair<const char*, std::function<void()>> table[] = {
        {"an object", [] { objc::objc_retain(NSView::make({}).raw()); }},
        {"Core Foundation's", [] { CFRetain(cfString("text").get()); }},
        {"a block", [] { objc::_Block_copy(Block<void()>(std::function<void()>([] {})).raw()); }},
        {"a timer", [] { dispatch_source_create(&_dispatch_source_type_timer, 0, 0, &_dispatch_main_q); }},
        {"a queue", [] { dispatch_queue_create("test", nullptr); }},
    };
    for (const auto& [what, leak] : table) {
        runtime().begin();
        leak();
        EXPECT_EQ(kindsOf(endOfTest()), Kinds{FaultKind::Leak}) << what;
    }
    runtime().begin();
    CFRelease(CFRetain(cfString("text").get()));
    EXPECT_EQ(kindsOf(endOfTest()), Kinds{});
}

TEST_F(SelfTest, OverRelease) {
    const RawObject raw = window.giveUp();
    objc::objc_release(raw);
    EXPECT_EQ(takenKinds(), Kinds{}) << "the last reference";
    objc::objc_release(raw);
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::OverRelease});
    objc::sendRaw<void>(raw, objc::sel_registerName("close"));
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::OverRelease}) << "a message to a destroyed object";
    {
        const objc::AutoreleasePool pool;
        const NSNumber number = NSNumber::from(1.5);
        objc::objc_release(number.raw());
        // The pool and the wrapper each still hold one that is no longer there.
    }
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::OverRelease});
    Block<void()> block(std::function<void()>([] {}));
    const void* const held = block.raw();
    block = {};
    objc::_Block_release(held);
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::OverRelease}) << "a block";
}

TEST_F(SelfTest, NothingIsAutoreleasedWithoutAPool) {
    void* const outermost = reinterpret_cast<void*>(std::uintptr_t{1});  // the test's own
    objc::objc_autoreleasePoolPop(outermost);
    EXPECT_EQ(takenKinds(), Kinds{});
    const NSNumber number = NSNumber::from(1.5);
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::NoPool});
    objc::objc_autoreleasePoolPop(outermost);
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::BadCall}) << "a pool that is gone";
    objc::objc_release(number.raw());  // what the pool would have done
}

TEST_F(SelfTest, CoreFoundationCrashesAreFaults) {
    CFGetTypeID(nullptr);
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::BadCall});
    const auto text = cfString("text");
    CFArrayGetCount(reinterpret_cast<CFArrayRef>(text.get()));
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::BadCall}) << "a string is no array";
}

struct Thrower {
    static constexpr const char* kClassName = "MorvelThrower";
    NSInteger throwing() { throw std::runtime_error("on purpose"); }
};

TEST_F(SelfTest, EscapedExceptionsAreReportedAndAnswerZero) {
    using Class = objc::Subclass<Thrower>;
    Class("NSObject").adds<&Thrower::throwing>("throwing"_sel).registered();
    const auto thrower = Class::create<NSObject>(std::make_unique<Thrower>(), "init"_sel);
    const RawObject receiver = thrower.raw();
    EXPECT_EQ(send<NSInteger>(receiver, "throwing"_sel), 0);
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::EscapedException});
    ASSERT_EQ(logLines().size(), 1U);
    EXPECT_EQ(logLines()[0], "exception in callback: throwing: on purpose");
}

}  // namespace
}  // namespace morvel::mac::checked
