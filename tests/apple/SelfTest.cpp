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
    /// Sends by name, so that the wrong message is not among the written ones.
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

TEST_F(SelfTest, UnknownNames) {
    sendWrong<void>(window, "setFarme");
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::UnknownSelector}) << "no such method anywhere";
    sendWrong<void, NSInteger>(window, "setMaterial:", NSInteger{6});
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::UnknownSelector}) << "a method of another class";
    objc::objc_getClass("NSWindwo");
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::UnknownClass});
    objc::objc_getProtocol("NSApplicationDelegat");
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::UnknownClass});
    systemFunction("CGSMainConnection");
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::UnknownFunction});
}

TEST_F(SelfTest, ClassAndInstanceMixedUp) {
    sendWrong<Id>(window, "sharedWorkspace");
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::UnknownSelector}) << "not even the class has it";
    const NSObject workspace = NSWorkspace::shared();
    sendWrong<Id>(workspace, "sharedWorkspace");
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::WrongReceiver}) << "a class method sent to an instance";
    sendWrong<CGRect>(classObject<NSWindow>(), "frame");
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::WrongReceiver}) << "an instance method sent to the class";
    int notAnObject = 0;
    objc::sendRaw<void>(reinterpret_cast<RawObject>(&notAnObject), objc::sel_registerName("close"));
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::WrongReceiver});
}

TEST_F(SelfTest, WrongArguments) {
    sendWrong<void>(window, "setLevel:");
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::ArgumentCount}) << "too few";
    sendWrong<void, NSInteger, NSInteger>(window, "setLevel:", NSInteger{9}, NSInteger{9});
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::ArgumentCount}) << "too many";
    struct Row {
        const char* why;
        std::function<void()> send;
    };
    const std::vector<Row> rows = {
        {"int for NSInteger", [&] { sendWrong<void, int>(window, "setLevel:", 9); }},
        {"unsigned for signed", [&] { sendWrong<void, NSUInteger>(window, "setLevel:", NSUInteger{9}); }},
        {"integer for bool", [&] { sendWrong<void, NSInteger>(window, "setHasShadow:", NSInteger{0}); }},
        {"float for double", [&] { sendWrong<void, float>(NSView::make({}), "setAlphaValue:", 0.5F); }},
        {"point for rectangle", [&] { sendWrong<void, CGPoint>(NSView::make({}), "setFrame:", CGPoint{}); }},
        {"selector for object", [&] { sendWrong<void, Selector>(window, "setTitle:", Selector()); }},
        {"C text for object", [&] { sendWrong<void, const char*>(window, "setTitle:", "title"); }},
        {"object for block",
         [&] {
             const Id none;
             sendWrong<Id, Id, Id, Id, Id>(NSNotificationCenter::defaultCenter(),
                                           "addObserverForName:object:queue:usingBlock:", none, none, none, none);
         }},
    };
    for (const Row& row : rows) {
        row.send();
        EXPECT_EQ(takenKinds(), Kinds{FaultKind::ArgumentType}) << row.why;
    }
}

TEST_F(SelfTest, WrongResults) {
    sendWrong<CGPoint>(window, "frame");
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::ResultType}) << "point for rectangle";
    sendWrong<void>(window, "isVisible");
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::ResultType}) << "nothing for bool";
    sendWrong<std::int32_t>(NSRunningApplication(window), "processIdentifier");
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::UnknownSelector}) << "a wrapper does not change the object's class";
}

TEST_F(SelfTest, WrittenButNeverSent) {
    using Types = objc::MessageEncoding<void, int>;
    runtime().checkWritten({"NSWindow", false, "setLevel:", Types::kTypes});
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::ArgumentType});
    runtime().checkWritten({"NSWindow", true, "setLevel:", Types::kTypes});
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::WrongReceiver});
    runtime().checkWritten({"NSWindwo", false, "setLevel:", Types::kTypes});
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::UnknownClass});
}

TEST_F(SelfTest, WrongDeclarations) {
    checkFunction({"CFRetainn", functionTypes<decltype(CFRetain)>()});
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::UnknownFunction});
    checkFunction({"CFGetTypeID", functionTypes<int(CFTypeRef)>()});
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::WrongFunction}) << "result";
    checkFunction({"AXObserverCreate", functionTypes<AXError(std::int32_t, AXObserverCallback, AXObserverRef)>()});
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::WrongFunction}) << "the reference instead of where to store it";
    checkConstant(constantOf("NSTrackingActiveAlwyas", NSUInteger{128}));
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::UnknownConstant});
    checkConstant(constantOf("NSTrackingActiveAlways", NSUInteger{64}));
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::WrongConstant}) << "value";
    checkConstant(constantOf("NSTrackingActiveAlways", 128));
    EXPECT_EQ(takenKinds(), Kinds{FaultKind::WrongConstant}) << "type";
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

TEST_F(SelfTest, ReferencesTakenAndGivenBack) {
    Id extra = window;
    objc::objc_retain(extra.giveUp());
    window = NSWindow();
    const auto faults = endOfTest();
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].kind, FaultKind::Leak);
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

TEST_F(SelfTest, CoreFoundationReferencesAreCounted) {
    CFRelease(CFRetain(cfString("text").get()));
    EXPECT_EQ(takenKinds(), Kinds{});
    CFRetain(cfString("text").get());
    window = NSWindow();
    const auto faults = endOfTest();
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].kind, FaultKind::Leak);
}

TEST_F(SelfTest, BlocksAreCounted) {
    Block<void()> block(std::function<void()>([] {}));
    objc::_Block_copy(block.raw());
    block = Block<void()>();
    window = NSWindow();
    const auto faults = endOfTest();
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].kind, FaultKind::Leak);
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
