#include "Platform/Linux/Accessibility/AccessibilityService.h"

#include <cstdlib>

#include "Platform/Linux/System/Module.h"

namespace morvel::x11 {

namespace {

/// The first paints and the first list of windows come before it; a screen reader's own start takes longer.
constexpr Duration kAfterStart = std::chrono::milliseconds(300);

std::unique_ptr<AccessibilityBridge> loadBridge(const std::string& busAddress, Log& log) {
    void* entry = loadModule("morvel-accessibility.so", kMakeAccessibilityBridge, log);
    if (!entry) return nullptr;
    std::unique_ptr<AccessibilityBridge> bridge(
        reinterpret_cast<MakeAccessibilityBridge*>(entry)(MORVEL_VERSION, busAddress.c_str()));
    if (!bridge) log.error("The accessibility module is of another version or cannot reach its bus.");
    return bridge;
}

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
    bridge_ = loadBridge(busAddress, log_);
    if (bridge_) toolkit_.setAccessibilityBridge(bridge_.get());
}

}  // namespace morvel::x11
