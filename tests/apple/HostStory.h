// The fixture of stories about the whole macOS host: a person at a Mac with two screens, on which the program runs.
#pragma once

#include <chrono>
#include <string>

#include "App/AppDelegate.h"
#include "Application.h"
#include "MacDesktop.h"
#include "Platform/Mac/MacHost.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Properties.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

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
    /// The buttons of windows and groups.
    static Texts shown(std::size_t bar) {
        const objc::AutoreleasePool pool;
        const auto bars = MacDesktop::bars();
        if (bar >= bars.size()) return {"no such bar"};
        display(bars[bar].contentView());
        Texts buttons = MacDesktop::buttons(bars[bar]);
        std::erase(buttons, "Apps");
        return buttons;
    }
    static NSView content(std::size_t bar) { return MacDesktop::bars().at(bar).contentView(); }
    static CGPoint middle(std::size_t bar, const std::string& button) {
        const auto at = MacDesktop::middleOfButton(content(bar), button);
        EXPECT_TRUE(at) << "no button " << button;
        return at.value_or(CGPoint{});
    }
    /// Which of these messages were sent, in order.
    static Texts callsOf(const Texts& selectors) {
        Texts sent;
        for (const Call& call : runtime().calls())
            if (std::ranges::count(selectors, call.selector) > 0) sent.push_back(call.selector);
        return sent;
    }
    /// What such a message was sent to last; null for nothing.
    static RawObject lastReceiverOf(const std::string& selector) {
        RawObject last = nullptr;
        for (const Call& call : runtime().calls())
            if (call.selector == selector) last = call.receiver;
        return last;
    }
    /// The window that was shown last with the keyboard's focus; empty for none.
    static NSWindow keyWindow() { return NSWindow(lastReceiverOf("makeKeyAndOrderFront:")); }
    static RawObject lastPopover() { return lastReceiverOf("showRelativeToRect:ofView:preferredEdge:"); }
    static NSView contentOf(RawObject popover) {
        return NSView(send<Id>(send<Id>(popover, "contentViewController"_sel), "view"_sel));
    }
    static bool isMinimized(const Id& window) {
        const auto* const value = payloadOf<Number>(accessibility().value(window, "AXMinimized").raw());
        return value && std::get<bool>(*value);
    }

    MacDesktop mac;
    morvel::AppDelegate* running = nullptr;  // the one that `run` runs
};

}  // namespace morvel::mac::checked
