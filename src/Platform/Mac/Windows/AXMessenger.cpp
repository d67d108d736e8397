// The time-outs, and what is learned from each answer.
#include "Platform/Mac/Windows/AXMessenger.h"

#include "Platform/AXNames.h"
#include "Platform/Mac/Windows/AXConversion.h"

namespace morvel::mac {

namespace {

/// In seconds. An application that is merely busy answers within a quarter of a second nearly always; the system's own
/// six seconds would freeze the bar for as long.
constexpr float kMessagingTimeout = 0.3F;

}  // namespace

AXMessenger::AXMessenger(MainLoop& mainLoop) : mainLoop_(mainLoop) {
    // For the elements that arrive in answers and notices, which do not inherit their application's time-out.
    const auto systemWide = CFRef<AXUIElementRef>::adopt(AXUIElementCreateSystemWide());
    if (systemWide) AXUIElementSetMessagingTimeout(systemWide.get(), kMessagingTimeout);
}

CFRef<AXUIElementRef> AXMessenger::application(ProcessID pid) const {
    auto element = CFRef<AXUIElementRef>::adopt(AXUIElementCreateApplication(pid.value));
    if (element) AXUIElementSetMessagingTimeout(element.get(), kMessagingTimeout);
    return element;
}

bool AXMessenger::mayAsk(ProcessID pid) {
    const auto advice = unresponsive_.adviceFor(pid, mainLoop_.now());
    if (advice != UnresponsiveProcesses::Advice::ProbeFirst) return advice == UnresponsiveProcesses::Advice::Ask;
    const auto element = application(pid);
    if (!element) return false;
    CFRef<CFTypeRef> role;
    const AXError answer = AXUIElementCopyAttributeValue(element.get(), cfString(ax::kRole).get(), role.receive());
    return learn(pid, answer) != morvel::AXError::CannotComplete;
}

morvel::AXError AXMessenger::learn(ProcessID pid, AXError error) {
    const morvel::AXError answer = axErrorFrom(error);
    if (answer == morvel::AXError::CannotComplete) {
        unresponsive_.timedOut(pid, mainLoop_.now());
    } else {
        unresponsive_.answered(pid);
    }
    return answer;
}

}  // namespace morvel::mac
