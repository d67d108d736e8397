// The fixture of every test that uses the checked runtime: begins clean, and fails for each fault left at its end.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "AccessibilityWorld.h"
#include "FakeDispatch.h"
#include "Properties.h"
#include "WindowServerWorld.h"
#include "WorkspaceWorld.h"

namespace morvel::mac::checked {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

class RuntimeTest : public ::testing::Test {
protected:
    RuntimeTest() {
        runtime().begin();
        logLines().clear();
    }
    ~RuntimeTest() override {
        for (const Fault& fault : endOfTest()) ADD_FAILURE() << fault.text;
    }

    /// Ends the test early and returns what was wrong, leaks included.
    static std::vector<Fault> endOfTest() {
        accessibility().reset();
        windowServer().reset();
        workspace().reset();
        dispatch().finish();
        runtime().finish();
        return runtime().faults().take();
    }
    static std::vector<FaultKind> kindsOf(const std::vector<Fault>& faults) {
        std::vector<FaultKind> kinds;
        for (const Fault& fault : faults) kinds.push_back(fault.kind);
        return kinds;
    }
    /// Takes the faults so far. A self-test expects exactly one of a kind.
    static std::vector<FaultKind> takenKinds() { return kindsOf(runtime().faults().take()); }

    /// Until the end of the test, the selector is answered so.
    template <typename T>
    static void answer(const std::string& className, const std::string& selector, T value) {
        runtime().script(className, selector, [value](Invocation& i) { i.answer<T>(value); });
    }
    /// How often such a message was sent, for example "NSWindow makeKeyWindow".
    static long callsOf(const std::string& name) { return std::ranges::count(runtime().callNames(), name); }
    /// Which of these messages were sent, in order, whatever to.
    static Texts sentOf(const Texts& selectors) {
        Texts sent;
        for (const Call& call : runtime().calls())
            if (std::ranges::count(selectors, call.selector) > 0) sent.push_back(call.selector);
        return sent;
    }
    /// What such a message was sent to last; nil for nothing.
    static Id lastReceiverOf(const std::string& selector) {
        RawObject last = nullptr;
        for (const Call& call : runtime().calls())
            if (call.selector == selector) last = call.receiver;
        return Id(last);
    }
    /// The popover that was shown last.
    static Id lastPopover() { return lastReceiverOf("showRelativeToRect:ofView:preferredEdge:"); }
};

}  // namespace morvel::mac::checked
