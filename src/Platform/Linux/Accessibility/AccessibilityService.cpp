#include "Platform/Linux/Accessibility/AccessibilityService.h"

#include <cstdlib>

#include "Platform/Linux/Accessibility/AccessibilityModule.h"

namespace morvel::x11 {

namespace {

/// The first paints and the first list of windows come before it; a screen reader's own start takes longer.
constexpr Duration kAfterStart = std::chrono::milliseconds(300);

}  // namespace

AccessibilityService::AccessibilityService(MainLoop& mainLoop, Log& log, XToolkit& toolkit)
    : log_(log), toolkit_(toolkit) {
    const AccessibilityWish wish = accessibilityWish([](const char* variable) { return std::getenv(variable); });
    if (wish == AccessibilityWish::Never) return;
    start_ = mainLoop.after(kAfterStart,
                            [this, wish] { request_.emplace(wish, [this](std::string address) { load(address); }); });
}

AccessibilityService::~AccessibilityService() {
    toolkit_.setAccessibilityBridge(nullptr);
}

void AccessibilityService::load(const std::string& busAddress) {
    bridge_ = loadAccessibilityModule(busAddress, log_);
    if (bridge_) toolkit_.setAccessibilityBridge(bridge_.get());
}

}  // namespace morvel::x11
