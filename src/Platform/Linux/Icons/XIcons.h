// Images of applications and files from the icon theme, and of windows from what they say of themselves.
#pragma once

#include <map>

#include "Platform/Icons.h"
#include "Platform/Linux/Applications/DesktopEntries.h"
#include "Platform/Linux/Icons/IconTheme.h"
#include "Platform/Linux/Icons/RenderedIcons.h"
#include "Platform/Linux/Icons/XImage.h"
#include "Platform/Linux/Windows/ClientWindows.h"

namespace morvel::x11 {

/// Everything is loaded when it is asked for, and only what windows say is kept: its asker keeps the rest.
class XIcons : public Icons {
public:
    /// All outlive this.
    XIcons(XConnection& connection, ClientWindows& clients, DesktopEntries& entries);

    ui::ImageRef applicationIcon(const std::string& bundleID) override;
    /// The first request for a process asks the server and waits for it; the answer is kept, so that the icon stays
    /// when the last window is gone.
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
    std::map<std::pair<ProcessID, uint64_t>, ui::ImageRef> processIcons_;  // by process and its start
};

}  // namespace morvel::x11
