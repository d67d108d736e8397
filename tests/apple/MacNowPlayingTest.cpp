// Music at a Mac: the scripts that are run for it, the badge, and the controls.
#include "App/AppDelegate.h"
#include "Application.h"
#include "MacDesktop.h"
#include "Platform/Mac/MacHost.h"
#include "Platform/Mac/NowPlaying/MacScripts.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Properties.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

using namespace std::chrono_literals;

constexpr std::uint64_t kMouseEntered = 8;  // NSEventTypeMouseEntered

class NowPlayingAtTheMac : public RuntimeTest {
protected:
    NowPlayingAtTheMac() {
        runtime().script("NSAppleScript", "executeAndReturnError:", [this](Invocation& i) {
            const std::string source = textOf(property<RawObject>(i.receiver(), "source"));
            (source.starts_with("if ") ? queries : commands).push_back(source);
            if (!answer) return;  // an error, or a refused permission
            const Id descriptor(objc::kAdopt, runtime().allocate(runtime().classNamed("NSAppleEventDescriptor")));
            setProperty(descriptor.raw(), "stringValue", makeString(*answer).raw());
            i.answerObject(descriptor);
        });
    }

    std::optional<std::string> answer;
    std::vector<std::string> queries, commands;
};

TEST_F(NowPlayingAtTheMac, AScriptGivesItsTextOrNothing) {
    MacScripts scripts;
    EXPECT_FALSE(scripts.isRunning("com.apple.Music"));
    workspace().launch({.pid = 42, .bundleIdentifier = "com.apple.Music", .name = "Music"});
    EXPECT_TRUE(scripts.isRunning("com.apple.Music"));
    EXPECT_EQ(scripts.run("return 1"), std::nullopt);
    answer = "Bj\u00f6rk";
    EXPECT_EQ(scripts.run("return 2"), "Bj\u00f6rk");
    runtime().script("NSAppleEventDescriptor", "stringValue", [](Invocation&) {});
    EXPECT_EQ(scripts.run("return 3"), std::nullopt) << "a number has no text";
    runtime().script("NSAppleScript", "initWithSource:", [](Invocation& i) {
        objc::sendRaw<void>(i.receiver(), objc::sel_registerName("release"));
        i.answer<RawObject>(nullptr);
    });
    EXPECT_EQ(scripts.run("return 4"), std::nullopt);
    EXPECT_EQ(commands.size(), 3U);
}

/// Whether anything that is called so is to be seen.
bool shows(const NSView& view, const std::string& label) {
    if (property<bool>(view.raw(), "hidden")) return false;
    if (textOf(property<RawObject>(view.raw(), "accessibilityLabel")) == label) return true;
    const auto children = view.subviews().elements<NSView>();
    return std::ranges::any_of(children, [&](const NSView& child) { return shows(child, label); });
}

TEST_F(NowPlayingAtTheMac, ThePlayersButtonIsBadgedAndOpensTheControls) {
    MacDesktop mac;
    workspace().launch({.pid = 42, .bundleIdentifier = "com.apple.Music", .name = "Music"});
    mac.open(42, "Library", {100, 100});
    answer = "playing||Blue||Ann";
    const objc::AutoreleasePool pool;
    MacHost host;
    morvel::AppDelegate application(host.platform());
    whileRunning([&] {
        dispatch().runFor(1s);
        const NSView bar = MacDesktop::bars().at(0).contentView();
        display(bar);
        ASSERT_EQ(queries.size(), 1U);
        EXPECT_NE(queries[0].find("tell application \"Music\""), std::string::npos);
        EXPECT_TRUE(shows(bar, "Now Playing"));

        const auto at = MacDesktop::middleOfButton(bar, "Library");
        ASSERT_TRUE(at);
        sendMouse(bar, "mouseEntered:", mouseEvent(kMouseEntered, *at));
        dispatch().runFor(500ms);
        const auto calls = runtime().calls();
        const auto opened = std::ranges::find(calls, "showRelativeToRect:ofView:preferredEdge:", &Call::selector);
        ASSERT_NE(opened, calls.end());
        const RawObject popover = opened->receiver;
        EXPECT_EQ(property<NSInteger>(popover, "behavior"), NSPopoverBehaviorTransient);
        EXPECT_TRUE(property<bool>(popover, "animates"));
        const NSView controls{send<Id>(send<Id>(popover, "contentViewController"_sel), "view"_sel)};
        display(controls);
        EXPECT_TRUE(MacDesktop::clickButton(controls, "Pause"));
        dispatch().runFor(0s);
        EXPECT_EQ(commands, std::vector<std::string>{"tell application \"Music\" to playpause"});
        EXPECT_EQ(queries.size(), 2U) << "asked again after the command";

        answer = "playing||" + std::string(10 << 20, 'x') + "||" + std::string(10 << 20, 'y');
        dispatch().runFor(2s);
        display(controls);
        EXPECT_TRUE(MacDesktop::clickButton(controls, "Next")) << "alive and well";
        answer = "playing||Blue || Red||Ann";
        dispatch().runFor(2s);
        EXPECT_FALSE(property<bool>(popover, "shown"));
        EXPECT_FALSE(shows(bar, "Now Playing"));
        dispatch().runFor(0s);
    });
    host.run({.launched = [&] { application.applicationDidFinishLaunching(); },
              .quitting = [&] { application.applicationWillTerminate(); }});
}

}  // namespace
}  // namespace morvel::mac::checked
