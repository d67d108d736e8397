// The system half as one piece: made and ended without a trace, and its parts work together over time.
#include "Platform/Mac/MacSystem.h"

#include "Platform/AXNames.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

using namespace std::chrono_literals;

class SystemOfTheMac : public RuntimeTest {};

TEST_F(SystemOfTheMac, BeginsWithoutAskingAnybodyAndEndsWithoutATrace) {
    MacSystem system;
    EXPECT_EQ(accessibility().questions, 0);
    EXPECT_TRUE(windowServer().registrations.empty());
    EXPECT_EQ(dispatch().waiting(), 0U);
}

TEST_F(SystemOfTheMac, AnApplicationIsFollowedFromLaunchToEnd) {
    MacSystem system;
    std::unique_ptr<morvel::AXObserver> observer;
    std::vector<std::string> story;
    const auto heard = [&](const AXElement& element, std::string_view name) {
        const auto title = system.accessibility().attribute(element, ax::kTitle);
        story.push_back(std::string(name) + (title.value ? " " + std::get<std::string>(*title.value) : ""));
    };
    const Subscription launched = system.workspace().observeLaunched([&](const RunningApplication& application) {
        Accessibility& seam = system.accessibility();
        observer = seam.makeObserver(application.pid, heard);
        ASSERT_TRUE(observer);
        const AXElement element = seam.applicationElement(application.pid);
        for (const auto name : {ax::kWindowCreated, ax::kTitleChanged, ax::kUIElementDestroyed}) {
            EXPECT_EQ(observer->addNotification(element, name), morvel::AXError::Success);
        }
    });
    const Subscription ended = system.workspace().observeTerminated([&](const RunningApplication&) {
        observer.reset();
        story.emplace_back("ended");
    });

    workspace().launch({.pid = 42, .bundleIdentifier = "app.notes", .name = "Notes"});
    const Id window = accessibility().makeElement(42);
    accessibility().set(window, "AXTitle", makeString("To do"));
    accessibility().post(window, "AXWindowCreated");
    dispatch().runPending();

    // It hangs while its notices still come, then recovers.
    accessibility().failProcess(42, kAXErrorCannotComplete);
    accessibility().post(window, "AXTitleChanged");
    accessibility().post(window, "AXTitleChanged");
    accessibility().questions = 0;
    dispatch().runPending();
    EXPECT_EQ(accessibility().questions, 1) << "the second notice asks nothing";
    accessibility().failProcess(42, kAXErrorSuccess);
    dispatch().runFor(1s);
    accessibility().post(window, "AXTitleChanged");
    dispatch().runPending();

    accessibility().post(window, "AXUIElementDestroyed");
    workspace().quit(42);  // before the last notice is delivered
    dispatch().runPending();
    EXPECT_EQ(story, (std::vector<std::string>{"AXWindowCreated To do", "AXTitleChanged", "AXTitleChanged",
                                               "AXTitleChanged To do", "ended"}));
}

}  // namespace
}  // namespace morvel::mac::checked
