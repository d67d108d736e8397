#include "Platform/Linux/Forms/FormService.h"

#include "Platform/Linux/System/Module.h"

namespace morvel::x11 {

namespace {

std::unique_ptr<FormBridge> loadBridge(Log& log) {
    void* entry = loadModule("morvel-forms.so", kMakeFormBridge, log);
    if (!entry) return nullptr;
    std::unique_ptr<FormBridge> bridge(reinterpret_cast<MakeFormBridge*>(entry)(MORVEL_VERSION));
    if (!bridge) log.error("The module for windows is of another version or cannot reach the display.");
    return bridge;
}

}  // namespace

std::unique_ptr<ui::FormWindowPeer> FormService::makeWindow(ui::Form form, bool dark) {
    if (!bridge_) {
        bridge_ = loadBridge(log_);
        tellOfWindows();
    }
    if (!bridge_) return nullptr;
    bridge_->setDark(dark);
    return bridge_->makeWindow(std::move(form));
}

void FormService::setDark(bool dark) {
    if (bridge_) bridge_->setDark(dark);
}

void FormService::setAccessibilityBridge(AccessibilityBridge* bridge) {
    accessibility_ = bridge;
    tellOfWindows();
}

void FormService::tellOfWindows() {
    if (bridge_ && accessibility_) accessibility_->addWindowsOf(bridge_->accessibleRoot());
}

}  // namespace morvel::x11
