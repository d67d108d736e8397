#include "WindowSource/WindowAdmission.h"

#include "Platform/AXNames.h"

namespace morvel {

std::optional<std::string_view> refusalReason(const WindowAttributes& window) {
    if (window.role != ax::kWindowRole) return "its role is not that of a window";
    if (window.subrole == ax::kSheetSubrole) return "it is a sheet";
    if (!window.frame) return "its frame cannot be read";
    if (window.frame->isEmpty()) return "it has no size";
    if (window.number && window.layer.value_or(0) > 0) return "it lies on a layer above ordinary windows";
    const bool isOrdinary = window.subrole == ax::kStandardWindowSubrole || window.isFullscreen.value_or(false);
    if (!isOrdinary && !window.hasCloseButton) return "it is neither standard nor full screen nor closable";
    return std::nullopt;
}

}  // namespace morvel
