// The accessibility seam: values of every type, the order of writes, observers and their ends, applications that hang.
#include "Platform/Mac/Windows/MacAccessibility.h"

#include <cmath>

#include "Declarations.h"
#include "Platform/AXNames.h"
#include "Platform/Mac/System/MacMainLoop.h"
#include "Platform/Mac/Windows/MacElement.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

using namespace std::chrono_literals;

using Error = morvel::AXError;
using Log = std::vector<std::string>;

constexpr ProcessID kPid(42);

class AccessibilityOfTheMac : public RuntimeTest {
protected:
    /// The seam's handle of an element of the scripted world.
    static AXElement handle(const Id& element) {
        return MacElement::wrap(CFRef<AXUIElementRef>::retain(reinterpret_cast<AXUIElementRef>(element.raw())));
    }
    template <typename T>
    std::optional<T> read(const Id& element, std::string_view attribute) {
        const AXAnswer answer = seam_.attribute(handle(element), attribute);
        EXPECT_EQ(answer.value.has_value(), answer.error == Error::Success);
        if (!answer.value || !std::holds_alternative<T>(*answer.value)) return std::nullopt;
        return std::get<T>(*answer.value);
    }
    /// What was done since the last call, without the time-outs.
    static Log done() {
        Log log = std::exchange(accessibility().log, {});
        std::erase_if(log, [](const std::string& line) { return line.starts_with("time-out"); });
        return log;
    }
    static int questions() { return std::exchange(accessibility().questions, 0); }

    MacMainLoop loop_;
    MacAccessibility seam_{loop_};
};

TEST_F(AccessibilityOfTheMac, EveryTypeOfValueIsRead) {
    const Id window = accessibility().makeElement(42);
    const Id button = accessibility().makeElement(42);
    accessibility().set(window, "AXTitle", makeString("Notes — été"));
    accessibility().set(window, "AXMinimized", makeNumber(true));
    accessibility().set(window, "AXLevel", makeNumber(2.5));
    accessibility().setPoint(window, "AXPosition", {-10, 20});
    accessibility().setSize(window, "AXSize", {640, 480});
    accessibility().set(window, "AXCloseButton", button);
    accessibility().set(window, "AXChildren", makeArray({button, makeString("no element"), window}));
    accessibility().set(window, "AXNothing", makeArray({}));
    EXPECT_EQ(read<std::string>(window, "AXTitle"), "Notes — été");
    EXPECT_EQ(read<bool>(window, "AXMinimized"), true);
    EXPECT_EQ(read<double>(window, "AXLevel"), 2.5);
    EXPECT_EQ(read<Point<AXSpace>>(window, "AXPosition"), (Point<AXSpace>{-10, 20}));
    EXPECT_EQ(read<Size>(window, "AXSize"), (Size{640, 480}));
    EXPECT_EQ(read<AXElement>(window, "AXCloseButton"), handle(button));
    EXPECT_EQ(read<std::vector<AXElement>>(window, "AXChildren"), (std::vector{handle(button), handle(window)}));
    EXPECT_EQ(read<std::vector<AXElement>>(window, "AXNothing"), std::vector<AXElement>{});
}

TEST_F(AccessibilityOfTheMac, WhatIsNoKnownValueIsNone) {
    const Id window = accessibility().makeElement(42);
    const CGRect frame{{1, 2}, {3, 4}};
    accessibility().set(window, "AXFrame", Id(objc::kAdopt, objectOf(AXValueCreate(kAXValueTypeCGRect, &frame))));
    accessibility().set(window, "AXRole", runtime().make("NSObject", 0));
    accessibility().setPoint(window, "AXPosition", {std::nan(""), 0});
    accessibility().setSize(window, "AXSize", {HUGE_VAL, 1});
    for (const char* attribute : {"AXFrame", "AXRole", "AXPosition", "AXSize", "AXTitle"}) {
        EXPECT_EQ(seam_.attribute(handle(window), attribute).error, Error::NoValue) << attribute;
    }
    // A success without a value, as some applications answer.
    accessibility().set(window, "AXTitle", Id());
    EXPECT_EQ(seam_.attribute(handle(window), "AXTitle").error, Error::NoValue);
}

TEST_F(AccessibilityOfTheMac, ErrorsAreToldApart) {
    const Id window = accessibility().makeElement(42);
    const std::pair<AXError, Error> table[] = {
        {kAXErrorNoValue, Error::NoValue},
        {kAXErrorAttributeUnsupported, Error::Unsupported},
        {kAXErrorActionUnsupported, Error::Unsupported},
        {kAXErrorNotImplemented, Error::Unsupported},
        {kAXErrorInvalidUIElement, Error::InvalidElement},
        {kAXErrorAPIDisabled, Error::ApiDisabled},
        {kAXErrorIllegalArgument, Error::Failure},
        {-1, Error::Failure},
    };
    for (const auto& [theirs, ours] : table) {
        accessibility().fail(window, "AXTitle", theirs);
        EXPECT_EQ(seam_.attribute(handle(window), "AXTitle").error, ours) << theirs;
        EXPECT_EQ(seam_.setAttribute(handle(window), "AXTitle", std::string("New")), ours) << theirs;
        accessibility().fail(window, "AXRaise", theirs);
        EXPECT_EQ(seam_.performAction(handle(window), ax::kRaise), ours) << theirs;
    }
    accessibility().destroy(window);
    EXPECT_EQ(seam_.attribute(handle(window), "AXRole").error, Error::InvalidElement);
    EXPECT_EQ(seam_.windowNumber(handle(window)), std::nullopt);
    EXPECT_TRUE(done().empty());
}

TEST_F(AccessibilityOfTheMac, ElementsAreEqualWhenTheyStandForTheSame) {
    const AXElement one = seam_.applicationElement(kPid);
    const AXElement again = seam_.applicationElement(kPid);
    const AXElement other = seam_.applicationElement(ProcessID(43));
    EXPECT_NE(MacElement::of(one).reference(), MacElement::of(again).reference());
    EXPECT_EQ(one, again);
    EXPECT_EQ(one.hash(), again.hash());
    EXPECT_FALSE(one == other);
    EXPECT_EQ(MacElement::of(one).pid(), kPid);
    const AXElement none = MacElement::wrap({});
    EXPECT_FALSE(one == none);
    EXPECT_FALSE(none == one);
    EXPECT_EQ(seam_.attribute(none, ax::kRole).error, Error::InvalidElement);
    EXPECT_EQ(seam_.setAttribute(one, ax::kFocusedWindow, none), Error::InvalidElement);
    EXPECT_EQ(seam_.performAction(none, ax::kRaise), Error::InvalidElement);
    EXPECT_EQ(seam_.windowNumber(none), std::nullopt);
}

TEST_F(AccessibilityOfTheMac, TimeOutsAreSetForAllElementsAndForApplications) {
    ASSERT_EQ(accessibility().log.size(), 1U) << "system-wide, before anything is asked";
    (void)seam_.applicationElement(kPid);
    ASSERT_EQ(accessibility().log.size(), 2U);
    for (const std::string& line : accessibility().log) {
        ASSERT_TRUE(line.starts_with("time-out ")) << line;
        const double seconds = std::stod(line.substr(9));
        EXPECT_GE(seconds, 0.25);
        EXPECT_LE(seconds, 0.5);
    }
    EXPECT_EQ(questions(), 0) << "an application element asks nobody";
}

TEST_F(AccessibilityOfTheMac, RaisingAWindowReachesItInOrder) {
    const Id window = accessibility().makeElement(42);
    const AXElement element = handle(window);
    EXPECT_EQ(seam_.setAttribute(element, ax::kMinimized, false), Error::Success);
    EXPECT_EQ(seam_.setAttribute(element, ax::kMain, true), Error::Success);
    EXPECT_EQ(seam_.setAttribute(element, ax::kFocused, true), Error::Success);
    EXPECT_EQ(seam_.performAction(element, ax::kRaise), Error::Success);
    EXPECT_EQ(done(), (Log{"set AXMinimized", "set AXMain", "set AXFocused", "perform AXRaise"}));
    EXPECT_EQ(accessibility().value(window, "AXMain").raw(), objectOf(kCFBooleanTrue));
    EXPECT_EQ(accessibility().value(window, "AXMinimized").raw(), objectOf(kCFBooleanFalse));
}

TEST_F(AccessibilityOfTheMac, EveryTypeOfValueIsWritten) {
    const Id window = accessibility().makeElement(42);
    const AXElement other = handle(accessibility().makeElement(42));
    const AXValue values[] = {std::string("Notes"), true, 0.5, Point<AXSpace>{1, 2}, Size{3, 4}, other,
                              std::vector{other}};
    for (const AXValue& value : values) {
        ASSERT_EQ(seam_.setAttribute(handle(window), "AXValue", value), Error::Success);
        const AXAnswer back = seam_.attribute(handle(window), "AXValue");
        ASSERT_TRUE(back.value);
        EXPECT_EQ(*back.value, value) << "type " << value.index();
    }
}

TEST_F(AccessibilityOfTheMac, FramesAreWrittenWithTheEnhancedInterfaceOff) {
    const Id window = accessibility().makeElement(42);
    const Id application = accessibility().application(42);
    const AXElement element = handle(window);
    const Id on = makeNumber(std::int64_t{1});  // not the constant: exactly this must come back
    accessibility().set(application, "AXEnhancedUserInterface", on);
    EXPECT_EQ(seam_.setAttribute(element, ax::kPosition, Point<AXSpace>{1, 2}), Error::Success);
    EXPECT_EQ(done(), (Log{"set AXEnhancedUserInterface", "set AXPosition", "set AXEnhancedUserInterface"}));
    EXPECT_EQ(accessibility().value(application, "AXEnhancedUserInterface"), on);
    EXPECT_EQ(seam_.setAttribute(element, ax::kMinimized, true), Error::Success);
    EXPECT_EQ(done(), Log{"set AXMinimized"}) << "only frames glide";

    accessibility().fail(window, "AXSize", kAXErrorFailure);
    EXPECT_EQ(seam_.setAttribute(element, ax::kSize, Size{3, 4}), Error::Failure);
    EXPECT_EQ(accessibility().value(application, "AXEnhancedUserInterface"), on) << "also after a refusal";
    accessibility().fail(window, "AXSize", kAXErrorSuccess);
    done();

    for (const Id& off : {makeNumber(false), makeString("true"), Id()}) {
        accessibility().set(application, "AXEnhancedUserInterface", off);
        EXPECT_EQ(seam_.setAttribute(element, ax::kSize, Size{3, 4}), Error::Success);
        EXPECT_EQ(done(), Log{"set AXSize"});
    }
    accessibility().fail(application, "AXEnhancedUserInterface", kAXErrorAttributeUnsupported);
    EXPECT_EQ(seam_.setAttribute(element, ax::kSize, Size{3, 4}), Error::Success);
    EXPECT_EQ(done(), Log{"set AXSize"}) << "most applications do not know the flag";
}

TEST_F(AccessibilityOfTheMac, WindowNumbersComeFromAFunctionThatMayBeMissing) {
    const LateFunction<AXError(AXUIElementRef, std::uint32_t*)> getWindow{"_AXUIElementGetWindow"};
    checkFunction({getWindow.name(), functionTypes<AXError(AXUIElementRef, std::uint32_t*)>()});
    const Id window = accessibility().makeElement(42);
    EXPECT_EQ(seam_.windowNumber(handle(window)), std::nullopt) << "the server knows no such window";
    accessibility().setWindowNumber(window, 7);
    EXPECT_EQ(seam_.windowNumber(handle(window)), WindowNumber(7));
    windowServer().hide("_AXUIElementGetWindow");
    EXPECT_EQ(seam_.windowNumber(handle(window)), WindowNumber(7)) << "looked up once";
    MacAccessibility without(loop_);
    EXPECT_EQ(without.windowNumber(handle(window)), std::nullopt);
}

TEST_F(AccessibilityOfTheMac, AnActionThatIsOnlyStartedHoldsNothingUp) {
    const Id title = accessibility().makeElement(42);
    accessibility().set(title, "AXTitle", makeString("Apple"));
    bool wasOnMain = true;
    accessibility().performed = [&](const ElementIdentity&, const std::string&) { wasOnMain = dispatch().isOnMain(); };
    seam_.startAction(handle(title), ax::kPress);
    EXPECT_TRUE(done().empty());
    dispatch().runPending();
    EXPECT_EQ(done(), Log{"perform AXPress"});
    EXPECT_FALSE(wasOnMain);

    // The menu is open for longer than anybody waits, and its application is asked on.
    accessibility().fail(title, "AXPress", kAXErrorCannotComplete);
    seam_.startAction(handle(title), ax::kPress);
    seam_.startAction(MacElement::wrap({}), ax::kPress);
    dispatch().runPending();
    EXPECT_EQ(read<std::string>(title, "AXTitle"), "Apple");
}

TEST_F(AccessibilityOfTheMac, AnApplicationThatHangsIsOnlyProbed) {
    const Id window = accessibility().makeElement(42);
    accessibility().set(window, "AXTitle", makeString("Notes"));
    const AXElement element = handle(window);
    const auto title = [&] { return seam_.attribute(element, ax::kTitle).error; };
    const auto observer = seam_.makeObserver(kPid, [](const AXElement&, std::string_view) {});
    ASSERT_TRUE(observer);
    accessibility().failProcess(42, kAXErrorCannotComplete);
    questions();
    EXPECT_EQ(title(), Error::CannotComplete);
    EXPECT_EQ(questions(), 1);
    EXPECT_EQ(title(), Error::CannotComplete);
    EXPECT_EQ(seam_.setAttribute(element, ax::kPosition, Point<AXSpace>{1, 2}), Error::CannotComplete);
    EXPECT_EQ(seam_.performAction(element, ax::kRaise), Error::CannotComplete);
    EXPECT_EQ(seam_.windowNumber(element), std::nullopt);
    EXPECT_EQ(observer->addNotification(element, ax::kUIElementDestroyed), Error::CannotComplete);
    EXPECT_EQ(questions(), 0) << "each would cost the time-out again";

    const Id healthy = accessibility().makeElement(43);
    EXPECT_EQ(seam_.setAttribute(handle(healthy), ax::kMain, true), Error::Success) << "others are asked as ever";
    questions();

    int probes = 0;
    for (int i = 0; i < 600; ++i) {  // a minute of asking ten times a second
        dispatch().runFor(100ms);
        EXPECT_EQ(title(), Error::CannotComplete);
        probes += questions();
    }
    EXPECT_GT(probes, 10);
    EXPECT_LT(probes, 25);

    accessibility().failProcess(42, kAXErrorSuccess);
    dispatch().runFor(5s);
    questions();
    EXPECT_EQ(title(), Error::Success) << "it answers the probe and then the question";
    EXPECT_EQ(questions(), 2);
    EXPECT_EQ(title(), Error::Success);
    EXPECT_EQ(questions(), 1);
}

TEST_F(AccessibilityOfTheMac, AFrameWriteStopsAtTheFirstTimeOut) {
    const Id window = accessibility().makeElement(42);
    accessibility().failProcess(42, kAXErrorCannotComplete);
    EXPECT_EQ(seam_.setAttribute(handle(window), ax::kPosition, Point<AXSpace>{1, 2}), Error::CannotComplete);
    EXPECT_EQ(questions(), 1);
    EXPECT_TRUE(done().empty());
}

TEST_F(AccessibilityOfTheMac, NoticesArriveInALaterTurnAndEndWithTheObserver) {
    Log heard;
    const Id window = accessibility().makeElement(42);
    std::unique_ptr<morvel::AXObserver> observer =
        seam_.makeObserver(kPid, [&](const AXElement& element, std::string_view name) {
            EXPECT_EQ(element, handle(window));
            heard.emplace_back(name);
            if (name == ax::kWindowMoved) observer.reset();
        });
    ASSERT_TRUE(observer);
    accessibility().refuseSubscription(42, "AXWindowCreated", kAXErrorCannotComplete, 1);
    const AXElement application = seam_.applicationElement(kPid);
    EXPECT_EQ(observer->addNotification(application, ax::kWindowCreated), Error::CannotComplete);
    dispatch().runFor(1s);
    EXPECT_EQ(observer->addNotification(application, ax::kWindowCreated), Error::Success);
    EXPECT_EQ(observer->addNotification(application, ax::kWindowCreated), Error::AlreadyRegistered);
    EXPECT_EQ(observer->addNotification(application, ax::kWindowMoved), Error::Success);
    EXPECT_EQ(observer->addNotification(handle(window), ax::kUIElementDestroyed), Error::Success);

    accessibility().post(window, "AXWindowCreated");
    accessibility().post(window, "AXUIElementDestroyed");
    EXPECT_TRUE(heard.empty()) << "never from inside a call";
    dispatch().runPending();
    EXPECT_EQ(heard, (Log{"AXWindowCreated", "AXUIElementDestroyed"}));

    // Two are on their way when the first one's listener ends the observer.
    accessibility().post(window, "AXWindowMoved");
    accessibility().post(window, "AXWindowMoved");
    dispatch().runPending();
    accessibility().post(window, "AXWindowCreated");
    dispatch().runPending();
    EXPECT_EQ(heard, (Log{"AXWindowCreated", "AXUIElementDestroyed", "AXWindowMoved"}));
}

TEST_F(AccessibilityOfTheMac, ObserversSourceIsOnTheRunLoopWhileItLives) {
    Id made;
    accessibility().onObserverCreated = [&](const Id& observer) { made = observer; };
    auto observer = seam_.makeObserver(kPid, [](const AXElement&, std::string_view) {});
    ASSERT_TRUE(made);
    const auto source = [&] {
        return *payloadOf<RunLoopSource>(payloadOf<AccessibilityWorld::Observer>(made.raw())->source.raw());
    };
    EXPECT_TRUE(source().isScheduled);
    EXPECT_EQ(source().mode, "kCFRunLoopDefaultMode");
    observer.reset();
    EXPECT_FALSE(source().isScheduled);
    EXPECT_EQ(made.raw()->references, 1) << "only this test keeps it";

    accessibility().failProcess(42, kAXErrorFailure);
    EXPECT_FALSE(seam_.makeObserver(kPid, [](const AXElement&, std::string_view) {}));
}

TEST_F(AccessibilityOfTheMac, AListenerThatThrowsEndsAtTheBorder) {
    const Id window = accessibility().makeElement(42);
    const auto observer = seam_.makeObserver(
        kPid, [](const AXElement&, std::string_view) { throw std::runtime_error("broken listener"); });
    ASSERT_EQ(observer->addNotification(handle(window), ax::kTitleChanged), Error::Success);
    accessibility().post(window, "AXTitleChanged");
    dispatch().runPending();
    EXPECT_EQ(takenKinds(), std::vector{FaultKind::EscapedException});
}

TEST_F(AccessibilityOfTheMac, ThePermissionIsAskedForAndItsPageOpened) {
    std::string opened;
    runtime().script("NSWorkspace", "openURL:", [&](Invocation& i) {
        opened = NSURL(i.object(0)).absoluteString().text();
        i.answer<bool>(false);  // nobody is told that it did not open
    });
    accessibility().isTrusted = false;
    EXPECT_FALSE(seam_.isTrusted());
    EXPECT_FALSE(accessibility().hasPrompted);
    EXPECT_FALSE(seam_.isTrustedAfterPrompt());
    EXPECT_TRUE(accessibility().hasPrompted);
    seam_.openPermissionSettings();
    EXPECT_EQ(opened, "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
    EXPECT_EQ(seam_.attribute(seam_.applicationElement(kPid), ax::kRole).error, Error::ApiDisabled);
    accessibility().isTrusted = true;
    EXPECT_TRUE(seam_.isTrusted());
    EXPECT_TRUE(seam_.isTrustedAfterPrompt());
}

}  // namespace
}  // namespace morvel::mac::checked
