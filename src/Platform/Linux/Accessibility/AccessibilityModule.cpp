#include "Platform/Linux/Accessibility/AccessibilityModule.h"

#include "Platform/Linux/System/Module.h"

namespace morvel::x11 {

std::unique_ptr<AccessibilityBridge> loadAccessibilityModule(const std::string& busAddress, Log& log) {
    void* entry = loadModule("morvel-accessibility.so", kMakeAccessibilityBridge, log);
    if (!entry) return nullptr;
    std::unique_ptr<AccessibilityBridge> bridge(
        reinterpret_cast<MakeAccessibilityBridge*>(entry)(MORVEL_VERSION, busAddress.c_str()));
    if (!bridge) log.error("The accessibility module is of another version or cannot reach its bus.");
    return bridge;
}

}  // namespace morvel::x11
