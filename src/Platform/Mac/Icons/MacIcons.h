// Images of applications and files from the workspace, and the system's symbols.
#pragma once

#include "Platform/Icons.h"
#include "Platform/Mac/apple/AppKit/NSWorkspace.h"

namespace morvel::mac {

/// Every image is a MacImage. Nothing is kept here: the system has its own caches.
class MacIcons : public Icons {
public:
    ui::ImageRef applicationIcon(const std::string& bundleID) override;
    ui::ImageRef processIcon(ProcessID pid) override;
    /// Of a file that does not exist, the system's general one.
    ui::ImageRef fileIcon(const std::string& path) override;
    ui::ImageRef symbol(const std::string& name, double pointSize) override;
    ui::ImageRef empty(Size size) override;
    ui::ImageRef baked(const ui::ImageRef& image, Size size) override;
};

}  // namespace morvel::mac
