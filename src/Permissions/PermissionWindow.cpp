#include "Permissions/PermissionWindow.h"

namespace morvel {

namespace {

ui::Prompt permissionPrompt(std::function<void()> openSettings) {
    ui::Prompt prompt;
    prompt.title = "Morvel — Accessibility Required";
    prompt.contentSize = {480, 220};
    prompt.text =
        "Morvel needs Accessibility permission to list, focus, and arrange your windows. Click below to open System "
        "Settings, then enable Morvel in the Accessibility list.";
    prompt.textFrame = {20, 30, 440, 110};
    prompt.buttonTitle = "Open System Settings…";
    prompt.buttonFrame = {280, 170, 180, 30};
    prompt.pressed = std::move(openSettings);
    return prompt;
}

}  // namespace

PermissionWindow::PermissionWindow(AXPermissionGate& gate, ui::Toolkit& toolkit, std::function<void()> onGranted)
    : gate_(gate), toolkit_(toolkit), onGranted_(std::move(onGranted)) {}

void PermissionWindow::show() {
    window_ = toolkit_.showPrompt(permissionPrompt([this] { gate_.openSystemSettings(); }));
    gate_.prompt();
    gate_.startPollingUntilGranted([this] {
        window_.reset();
        const auto granted = onGranted_;  // may drop this window
        granted();
    });
}

}  // namespace morvel
