// The fixture of every test that uses the checked runtime: begins clean, and fails for each fault left at its end.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "AccessibilityWorld.h"
#include "FakeDispatch.h"
#include "Runtime.h"
#include "SystemLogFake.h"
#include "SystemObjects.h"
#include "WindowServerWorld.h"
#include "WorkspaceWorld.h"

namespace morvel::mac::checked {

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
    /// Takes the faults so far. A self-test expects exactly one of a kind.
    static std::vector<FaultKind> takenKinds() {
        std::vector<FaultKind> kinds;
        for (const Fault& fault : runtime().faults().take()) kinds.push_back(fault.kind);
        return kinds;
    }
};

}  // namespace morvel::mac::checked
