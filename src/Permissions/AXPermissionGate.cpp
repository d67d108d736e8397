#include "Permissions/AXPermissionGate.h"

namespace morvel {

namespace {

constexpr Duration kPollInterval = std::chrono::seconds(1);

}  // namespace

void AXPermissionGate::startPollingUntilGranted(std::function<void()> onGranted) {
    poll_.reset();  // only the last one who asks waits
    if (isTrusted()) return onGranted();
    poll_ = mainLoop_.every(kPollInterval, kPollInterval, [this, onGranted = std::move(onGranted)] {
        if (!isTrusted()) return;
        poll_.reset();
        onGranted();
    });
}

}  // namespace morvel
