#include "Theme/AppIconView.h"

#include <utility>

namespace morvel {

bool AppIconView::show(const std::optional<std::string>& bundleID, ProcessID pid) {
    if (loadedIconKey_ && loadedIconKey_->pid == pid && loadedIconKey_->bundleID == bundleID) return false;
    loadedIconKey_ = Key{bundleID, pid};
    request_ = cache_.icon(bundleID, pid, [this](const ui::ImageRef& icon) { setImage(icon); });
    return true;
}

void AppIconView::showFile(const std::string& path) {
    if (std::exchange(path_, path) == path) return;
    setImage(nullptr);  // rather than the icon of another file
    request_ = cache_.fileIcon(path, [this](const ui::ImageRef& icon) { setImage(icon); });
}

}  // namespace morvel
