// The fixture of stories about the whole macOS host: a person at a Mac with two screens, on which the program runs.
#pragma once

#include "App/AppDelegate.h"
#include "Drags.h"
#include "MacDesktop.h"
#include "Platform/Mac/MacHost.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {

class HostStory : public RuntimeTest {
protected:
    /// Runs the program from its launch; `story` is what happens until it ends.
    void run(const std::function<void()>& story) {
        const objc::AutoreleasePool pool;
        MacHost host;
        morvel::AppDelegate application(host.platform());
        running = &application;
        whileRunning([&] {
            dispatch().runFor(1s);
            story();
            dispatch().runFor(0s);  // what was posted last still runs before the program ends
        });
        host.run({.launched = [&] { application.applicationDidFinishLaunching(); },
                  .quitting = [&] { application.applicationWillTerminate(); }});
    }
    /// Of the program that runs.
    SettingsStore& settings() { return *running->settings(); }
    static void wait(std::chrono::nanoseconds time = 2s) { dispatch().runFor(time); }

    static NSView content(std::size_t bar) { return MacDesktop::bars().at(bar).contentView(); }
    /// The buttons of windows and groups.
    static Texts shown(std::size_t bar) {
        const objc::AutoreleasePool pool;
        if (bar >= MacDesktop::bars().size()) return {"no such bar"};
        Texts buttons = MacDesktop::buttonsIn(content(bar));
        std::erase(buttons, "Apps");
        return buttons;
    }
    static void click(std::size_t bar, const std::string& button) { MacDesktop::clickButton(content(bar), button); }
    static void rightClick(std::size_t bar, const std::string& button) {
        MacDesktop::rightClickButton(content(bar), button);
    }
    /// Beside all buttons.
    static void rightClickBar() {
        sendMouse(content(0), "rightMouseDown:", mouseEvent(NSEventTypeRightMouseDown, {1300, 10}));
    }
    /// The button's middle, moved along the bar.
    static CGPoint beside(std::size_t bar, const std::string& button, double by) {
        CGPoint at = MacDesktop::middleOfButton(content(bar), button);
        at.x += by;
        return at;
    }
    /// Drags the left bar's button over that bar and drops it on `bar`, once it was `held` there for a while.
    static void drag(const std::string& button, std::size_t bar, CGPoint to, const std::function<void()>& held = {}) {
        MacDesktop::pullButton(content(0), button);
        ASSERT_TRUE(ownDrag());
        {
            DragOver over(pasteboardOfOwnDrag());
            over.moveTo(content(0), beside(0, button, 0));
            EXPECT_EQ(over.moveTo(content(bar), to), NSDragOperationMove);
            if (held) held();
            EXPECT_TRUE(over.drop());
        }
        endOwnDrag(NSDragOperationMove);
        display(content(bar));
        wait();
    }
    static NSView contentOf(const Id& popover) {
        return property<NSView>(property<RawObject>(popover, "contentViewController"), "view");
    }
    static void expectNoBarTakesTheKeyboard() {
        for (const NSPanel& bar : MacDesktop::bars()) EXPECT_FALSE(send<bool>(bar, "canBecomeKeyWindow"_sel));
    }
    /// The window that was shown last with the keyboard's focus; empty for none.
    static NSWindow keyWindow() { return NSWindow(lastReceiverOf("makeKeyAndOrderFront:")); }
    static std::int32_t frontmost() { return workspace().frontmost().processIdentifier(); }
    static bool isMinimized(const Id& window) {
        const auto* const value = payloadOf<Number>(accessibility().value(window, "AXMinimized"));
        return value && std::get<bool>(*value);
    }

    MacDesktop mac;
    morvel::AppDelegate* running = nullptr;  // the one that `run` runs
};

}  // namespace morvel::mac::checked
