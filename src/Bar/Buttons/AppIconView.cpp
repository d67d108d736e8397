#include "Bar/Buttons/AppIconView.h"

namespace morvel {

bool AppIconView::show(const std::optional<std::string>& bundleID, ProcessID pid) {
    Key key{bundleID, pid};
    if (loadedIconKey_ == key) return false;
    loadedIconKey_ = std::move(key);
    request_ = cache_.icon(bundleID, pid, [this](const ui::ImageRef& icon) { setImage(icon); });
    return true;
}

}  // namespace morvel
