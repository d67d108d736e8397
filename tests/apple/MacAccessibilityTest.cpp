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

using Error = morvel::AXError;

constexpr ProcessID kPid(42);

class AccessibilityOfTheMac : public RuntimeTest {
protected:
    /// The seam's handle of an element of the scripted world.
    static AXElement handle(const Id& element) {
        return MacElement::wrap(CFRef<AXUIElementRef>::retain(reinterpret_cast<AXUIElementRef>(element.raw())));
    }
    AXAnswer read(const Id& element, std::string_view attribute) {
        const AXAnswer answer = seam_.attribute(handle(element), attribute);
        EXPECT_EQ(answer.value.has_value(), answer.error == Error::Success);
        return answer;
    }
    /// What was done since the last call, without the time-outs.
    static Texts done() {
        Texts log = std::exchange(accessibility().log, {});
        std::erase_if(log, [](const std::string& line) { return line.starts_with("time-out"); });
        return log;
    }
    static int questions() { return std::exchange(accessibility().questions, 0); }

    MacMainLoop loop_;
    MacAccessibility seam_{loop_};
};

TEST_F(AccessibilityOfTheMac, EveryTypeOfValueIsReadAndWritten) {
    const Id window = accessibility().makeElement(42);
    const Id button = accessibility().makeElement(42);
    struct Row {
        Id stored;
        AXValue value;
    };
    for (const Row& row :
         {Row{makeString("Notes — été"), std::string("Notes — été")},
          {makeNumber(true), true},
          {makeNumber(2.5), 2.5},
          {makeValue(CGPoint{-10, 20}), Point<AXSpace>{-10, 20}},
          {makeValue(CGSize{640, 480}), Size{640, 480}},
          {button, handle(button)},
          {makeArray({button, makeString("no element"), window}), std::vector{handle(button), handle(window)}},
          {makeArray({}), std::vector<AXElement>{}}}) {
        accessibility().set(window, "AXValue", row.stored);
        EXPECT_EQ(read(window, "AXValue").value, row.value) << "type " << row.value.index();
        accessibility().set(window, "AXValue", Id());
        EXPECT_EQ(seam_.setAttribute(handle(window), "AXValue", row.value), Error::Success);
        EXPECT_EQ(read(window, "AXValue").value, row.value) << "type " << row.value.index();
    }
}

TEST_F(AccessibilityOfTheMac, WhatIsNoKnownValueIsNone) {
    const Id window = accessibility().makeElement(42);
    EXPECT_EQ(read(window, "AXValue").error, Error::NoValue);
    for (const Id& strange : {makeValue(CGRect{{1, 2}, {3, 4}}), runtime().make("NSObject"),
                              makeValue(CGPoint{std::nan(""), 0}), makeValue(CGSize{HUGE_VAL, 1})}) {
        accessibility().set(window, "AXValue", strange);
        EXPECT_EQ(read(window, "AXValue").error, Error::NoValue);
    }
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
        for (const auto name : {ax::kTitle, ax::kRaise}) accessibility().fail(window, std::string(name), theirs);
        EXPECT_EQ(read(window, ax::kTitle).error, ours) << theirs;
        EXPECT_EQ(seam_.setAttribute(handle(window), ax::kTitle, std::string("New")), ours) << theirs;
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

TEST_F(AccessibilityOfTheMac, FramesAreWrittenWithTheEnhancedInterfaceOff) {
    const Id window = accessibility().makeElement(42);
    const Id application = accessibility().application(42);
    const AXElement element = handle(window);
    const Id on = makeNumber(std::int64_t{1});  // not the constant: exactly this must come back
    accessibility().set(application, "AXEnhancedUserInterface", on);
    EXPECT_EQ(seam_.setAttribute(element, ax::kPosition, Point<AXSpace>{1, 2}), Error::Success);
    EXPECT_EQ(done(), (Texts{"set AXEnhancedUserInterface", "set AXPosition", "set AXEnhancedUserInterface"}));
    EXPECT_EQ(accessibility().value(application, "AXEnhancedUserInterface"), on);
    EXPECT_EQ(seam_.setAttribute(element, ax::kMinimized, true), Error::Success);
    EXPECT_EQ(done(), Texts{"set AXMinimized"}) << "only frames glide";

    accessibility().fail(window, "AXSize", kAXErrorFailure);
    EXPECT_EQ(seam_.setAttribute(element, ax::kSize, Size{3, 4}), Error::Failure);
    EXPECT_EQ(accessibility().value(application, "AXEnhancedUserInterface"), on) << "also after a refusal";
    accessibility().fail(window, "AXSize", kAXErrorSuccess);
    done();

    for (const Id& off : {makeNumber(false), makeString("true"), Id()}) {
        accessibility().set(application, "AXEnhancedUserInterface", off);
        EXPECT_EQ(seam_.setAttribute(element, ax::kSize, Size{3, 4}), Error::Success);
        EXPECT_EQ(done(), Texts{"set AXSize"});
    }
    accessibility().fail(application, "AXEnhancedUserInterface", kAXErrorAttributeUnsupported);
    EXPECT_EQ(seam_.setAttribute(element, ax::kSize, Size{3, 4}), Error::Success);
    EXPECT_EQ(done(), Texts{"set AXSize"}) << "most applications do not know the flag";
}

TEST_F(AccessibilityOfTheMac, WindowNumbersComeFromAFunctionThatMayBeMissing) {
    const LateFunction<AXError(AXUIElementRef, std::uint32_t*)> getWindow{"_AXUIElementGetWindow"};
    checkFunction({getWindow.name(), functionTypes<AXError(AXUIElementRef, std::uint32_t*)>()});
    const Id window = accessibility().makeElement(42);
    EXPECT_EQ(seam_.windowNumber(handle(window)), std::nullopt) << "the server knows no such window";
    accessibility().state(window).windowNumber = 7;
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
    EXPECT_EQ(done(), Texts{"perform AXPress"});
    EXPECT_FALSE(wasOnMain);

    // The menu is open for longer than anybody waits, and its application is asked on.
    accessibility().fail(title, "AXPress", kAXErrorCannotComplete);
    seam_.startAction(handle(title), ax::kPress);
    seam_.startAction(MacElement::wrap({}), ax::kPress);
    dispatch().runPending();
    EXPECT_EQ(read(title, "AXTitle").error, Error::Success);
}

TEST_F(AccessibilityOfTheMac, AnApplicationThatHangsIsOnlyProbed) {
    const Id window = accessibility().makeElement(42);
    accessibility().set(window, "AXTitle", makeString("Notes"));
    const AXElement element = handle(window);
    const auto title = [&] { return seam_.attribute(element, ax::kTitle).error; };
    const auto moveIt = [&] { return seam_.setAttribute(element, ax::kPosition, Point<AXSpace>{1, 2}); };
    const auto observer = seam_.makeObserver(kPid, [](const AXElement&, std::string_view) {});
    ASSERT_TRUE(observer);
    accessibility().failProcess(42, kAXErrorCannotComplete);
    questions();
    EXPECT_EQ(title(), Error::CannotComplete);
    EXPECT_EQ(questions(), 1);
    EXPECT_EQ(title(), Error::CannotComplete);
    EXPECT_EQ(moveIt(), Error::CannotComplete);
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

    accessibility().failProcess(42, kAXErrorCannotComplete);
    done();
    EXPECT_EQ(moveIt(), Error::CannotComplete);
    EXPECT_EQ(questions(), 1) << "a write of several steps stops at the first time-out";
    EXPECT_TRUE(done().empty());
    EXPECT_FALSE(seam_.makeObserver(kPid, [](const AXElement&, std::string_view) {}));
}

TEST_F(AccessibilityOfTheMac, NoticesArriveInALaterTurnAndEndWithTheObserver) {
    Texts heard;
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
    EXPECT_EQ(heard, (Texts{"AXWindowCreated", "AXUIElementDestroyed"}));

    // Two are on their way when the first one's listener ends the observer.
    accessibility().post(window, "AXWindowMoved");
    accessibility().post(window, "AXWindowMoved");
    dispatch().runPending();
    accessibility().post(window, "AXWindowCreated");
    dispatch().runPending();
    EXPECT_EQ(heard, (Texts{"AXWindowCreated", "AXUIElementDestroyed", "AXWindowMoved"}));
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
