// Dragging things within the bar, out of it and into it, as views and hosts speak of it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Util/Geometry.h"

namespace morvel::ui {

/// The types under which files are dragged. Source: the pasteboard types of Apple's AppKit; every host speaks them.
inline constexpr std::string_view kFileURLType = "public.file-url";
inline constexpr std::string_view kLegacyFilenamesType = "NSFilenamesPboardType";

enum class DragOperation { None, Copy, Move };

/// What is dragged. While a drag of another program hovers, its types are known but its contents may not have been
/// asked for yet; they have when it is dropped. Contents come from other programs: believe nothing.
class DragPasteboard {
public:
    virtual ~DragPasteboard() = default;
    virtual bool hasType(std::string_view type) const = 0;
    /// The text under a type; nothing when there is none, or not yet.
    virtual std::optional<std::string> string(std::string_view type) const = 0;
    /// The absolute paths of the local files that are dragged; empty when there are none, or not yet.
    virtual std::vector<std::string> filePaths() const = 0;
    /// Whether there are file URLs to be read.
    virtual bool hasFileURLs() const = 0;
};

struct DragInfo {
    Point<ViewSpace> location;  ///< in the space of the root view
    const DragPasteboard& pasteboard;
};

/// What a view of ours puts on the pasteboard when it is dragged.
struct DragItem {
    std::string type;
    std::string text;
};

}  // namespace morvel::ui
