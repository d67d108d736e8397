// Images of applications and files from the icon theme, and of windows from what they say of themselves.
#pragma once

#include "Platform/Icons.h"
#include "Platform/Linux/Applications/DesktopEntries.h"
#include "Platform/Linux/Icons/IconTheme.h"
#include "Platform/Linux/Icons/RenderedIcons.h"
#include "Platform/Linux/Icons/XImage.h"
#include "Platform/Linux/Windows/ClientWindows.h"

namespace morvel::x11 {

/// Everything is loaded when it is asked for, and nothing is kept: that is the asker's business.
class XIcons : public Icons {
public:
    /// All outlive this.
    XIcons(XConnection& connection, ClientWindows& clients, DesktopEntries& entries);

    ui::ImageRef applicationIcon(const std::string& bundleID) override;
    /// Of one of its windows; none once the last is gone. Asks the server and waits for it.
    ui::ImageRef processIcon(ProcessID pid) override;
    ui::ImageRef fileIcon(const std::string& path) override;
    ui::ImageRef symbol(const std::string& name, double pointSize) override;
    ui::ImageRef empty(Size size) override;
    ui::ImageRef baked(const ui::ImageRef& image, Size size) override;

private:
    IconTheme& theme();
    ui::ImageRef namedIcon(const std::vector<std::string>& names);
    ui::ImageRef entryIcon(const DesktopEntry& entry);
    ui::ImageRef windowIcon(xcb_window_t window);

    XConnection& connection_;
    ClientWindows& clients_;
    DesktopEntries& entries_;
    const RenderedIcons rendered_{RenderedIcons::defaultFolder()};
    std::optional<IconTheme> theme_;
};

}  // namespace morvel::x11
