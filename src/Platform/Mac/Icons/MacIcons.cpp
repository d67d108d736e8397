// Asks the workspace for icons, and draws an image into another.
#include "Platform/Mac/Icons/MacIcons.h"

#include "Platform/Mac/Icons/MacImage.h"
#include "Platform/Mac/apple/AppKit/NSApplication.h"

namespace morvel::mac {

namespace {

ui::ImageRef iconAt(const NSString& path) {
    return path ? MacImage::from(NSWorkspace::shared().iconForFile(path)) : nullptr;
}

}  // namespace

ui::ImageRef MacIcons::applicationIcon(const std::string& bundleID) {
    const NSString identifier = NSString::from(bundleID);
    return identifier ? iconAt(NSWorkspace::shared().urlForApplication(identifier).path()) : nullptr;
}

ui::ImageRef MacIcons::processIcon(ProcessID pid) {
    return MacImage::from(NSRunningApplication::withPid(pid.value).icon());
}

ui::ImageRef MacIcons::fileIcon(const std::string& path) {
    return iconAt(NSString::from(path));
}

ui::ImageRef MacIcons::symbol(const std::string& name, double pointSize) {
    constexpr double kRegularWeight = 0;
    const NSString text = NSString::from(name);
    const NSImage symbol = text ? NSImage::symbol(text) : NSImage();
    const NSImage sized = symbol.withConfiguration(NSImageSymbolConfiguration::from(pointSize, kRegularWeight));
    return MacImage::from(sized ? sized : symbol);
}

ui::ImageRef MacIcons::empty(Size size) {
    return MacImage::from(NSImage::empty({size.width, size.height}));
}

ui::ImageRef MacIcons::baked(const ui::ImageRef& image, Size size) {
    const NSImage source = MacImage::imageOf(image);
    // Locking the focus on an image without an area raises an exception.
    if (!source || !(size.width > 0 && size.height > 0)) return nullptr;
    const NSImage target = NSImage::empty({size.width, size.height});
    // An image that draws itself when it is shown would decode the icon file again for each view. This one is drawn
    // now, with as many pixels as the sharpest screen wants.
    const auto draw = [&] {
        constexpr bool kFlipped = true;
        target.lockFocusFlipped(kFlipped);
        source.drawIn({{0, 0}, {size.width, size.height}});
        target.unlockFocus();
    };
    NSApplication::shared().effectiveAppearance().performAsCurrentDrawingAppearance(draw);
    if (source.isTemplate()) target.setTemplate(true);
    return MacImage::from(target);
}

}  // namespace morvel::mac
