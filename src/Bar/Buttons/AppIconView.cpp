#include "Bar/Buttons/AppIconView.h"

namespace morvel {

bool AppIconView::show(const std::optional<std::string>& bundleID, ProcessID pid) {
    if (loadedIconKey_ && loadedIconKey_->pid == pid && loadedIconKey_->bundleID == bundleID) return false;
    loadedIconKey_ = Key{bundleID, pid};
    request_ = cache_.icon(bundleID, pid, [this](const ui::ImageRef& icon) { setImage(icon); });
    return true;
}

}  // namespace morvel
