#include "Platform/Mac/UI/MacAlert.h"

#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Mac/apple/AppKit/NSStatusItem.h"

namespace morvel::mac {

std::optional<std::size_t> runAlert(const ui::Alert& alert) {
    const NSAlert native = create<NSAlert>();
    native.setMessageText(NSString::from(alert.message));
    native.setInformativeText(NSString::from(alert.informativeText));
    for (const std::string& button : alert.buttons) native.addButton(NSString::from(button));
    // A program without a Dock icon comes to the front only when it says so.
    NSApplication::shared().activateIgnoringOtherApps();
    const NSInteger pressed = native.runModal() - NSAlertFirstButtonReturn;
    if (pressed < 0 || pressed >= static_cast<NSInteger>(alert.buttons.size())) return std::nullopt;
    return static_cast<std::size_t>(pressed);
}

}  // namespace morvel::mac
