// How a window's button is dragged: the type under which it names its window on the pasteboard.
#pragma once

#include <optional>
#include <string>

#include "UI/Drag.h"
#include "Util/BundleIdentifier.h"
#include "Util/Identity.h"

namespace morvel::RunningWindowDrag {

inline const std::string& type() {
    static const std::string kType = std::string(kBundleIdentifier) + ".running-window";
    return kType;
}

/// Whether it is a button of one of our bars that is dragged, or says it is.
inline bool isIn(const ui::DragPasteboard& pasteboard) {
    return pasteboard.hasType(type());
}

inline ui::DragItem item(const WindowID& window) {
    return {type(), window.text()};
}

/// The window that is dragged. Nothing when it is something else, cannot be read yet, or is no identifier: any program
/// may use the type.
inline std::optional<WindowID> window(const ui::DragPasteboard& pasteboard) {
    const auto text = pasteboard.string(type());
    return text ? WindowID::parse(*text) : std::nullopt;
}

}  // namespace morvel::RunningWindowDrag
