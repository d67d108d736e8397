// Music at a Mac: the scripts that are run for it, the badge, and the controls.
#include "HostStory.h"
#include "Platform/Mac/NowPlaying/MacScripts.h"

namespace morvel::mac::checked {
namespace {

constexpr std::uint64_t kMouseEntered = 8;  // NSEventTypeMouseEntered

class NowPlayingAtTheMac : public HostStory {
protected:
    NowPlayingAtTheMac() {
        runtime().script("NSAppleScript", "executeAndReturnError:", [this](Invocation& i) {
            const std::string source = textProperty(i.receiver(), "source");
            (source.starts_with("if ") ? queries : commands).push_back(source);
            if (!said) return;  // an error, or a refused permission
            const Id descriptor = runtime().make("NSAppleEventDescriptor");
            setProperty(descriptor, "stringValue", makeString(*said));
            i.answerObject(descriptor);
        });
    }

    std::optional<std::string> said;
    Texts queries, commands;
};

TEST_F(NowPlayingAtTheMac, AScriptGivesItsTextOrNothing) {
    MacScripts scripts;
    EXPECT_FALSE(scripts.isRunning("com.apple.Music"));
    workspace().launch({.pid = 42, .bundleIdentifier = "com.apple.Music", .name = "Music"});
    EXPECT_TRUE(scripts.isRunning("com.apple.Music"));
    EXPECT_EQ(scripts.run("return 1"), std::nullopt);
    said = "Bj\u00f6rk";
    EXPECT_EQ(scripts.run("return 2"), "Bj\u00f6rk");
    runtime().script("NSAppleEventDescriptor", "stringValue", [](Invocation&) {});
    EXPECT_EQ(scripts.run("return 3"), std::nullopt) << "a number has no text";
    runtime().script("NSAppleScript", "initWithSource:", [](Invocation& i) {
        runtime().release(i.receiver());
        i.answer<RawObject>(nullptr);
    });
    EXPECT_EQ(scripts.run("return 4"), std::nullopt);
    EXPECT_EQ(commands.size(), 3U);
}

/// Whether anything that is called so is to be seen.
bool shows(const NSView& view, const std::string& label) {
    if (property<bool>(view, "hidden")) return false;
    if (textProperty(view, "accessibilityLabel") == label) return true;
    const auto children = view.subviews().elements<NSView>();
    return std::ranges::any_of(children, [&](const NSView& child) { return shows(child, label); });
}

TEST_F(NowPlayingAtTheMac, ThePlayersButtonIsBadgedAndOpensTheControls) {
    workspace().launch({.pid = 42, .bundleIdentifier = "com.apple.Music", .name = "Music"});
    mac.open(42, "Library", {100, 100});
    said = "playing||Blue||Ann";
    run([&] {
        const NSView bar = content(0);
        display(bar);
        ASSERT_EQ(queries.size(), 1U);
        EXPECT_NE(queries[0].find("tell application \"Music\""), std::string::npos);
        EXPECT_TRUE(shows(bar, "Now Playing"));

        sendMouse(bar, "mouseEntered:", mouseEvent(kMouseEntered, beside(0, "Library", 0)));
        wait(500ms);
        const Id popover = lastPopover();
        const NSView controls = contentOf(popover);
        MacDesktop::clickButton(controls, "Pause");
        wait(0s);
        EXPECT_EQ(commands, Texts{"tell application \"Music\" to playpause"});
        EXPECT_EQ(queries.size(), 2U) << "asked again after the command";

        said = "playing||" + std::string(10 << 20, 'x') + "||" + std::string(10 << 20, 'y');
        wait();
        MacDesktop::clickButton(controls, "Next");  // alive and well
        said = "playing||Blue || Red||Ann";
        wait();
        EXPECT_FALSE(property<bool>(popover, "shown"));
        EXPECT_FALSE(shows(bar, "Now Playing"));
    });
}

}  // namespace
}  // namespace morvel::mac::checked
