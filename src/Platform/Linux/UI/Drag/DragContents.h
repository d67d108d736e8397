// What is dragged, as views are told about it: types first, contents when they are known.
#pragma once

#include <map>

#include "UI/Drag.h"

namespace morvel::x11 {

/// The name under which programs on X offer files; views know it as `ui::kFileURLType`.
inline constexpr std::string_view kUriListType = "text/uri-list";

class DragContents : public ui::DragPasteboard {
public:
    /// Something of another program, by the names it offers it under. Absurdly many names are cut.
    static DragContents offered(const std::vector<std::string>& names);
    /// Something of ours: its contents are known at once.
    static DragContents of(const ui::DragItem& item);

    bool hasType(std::string_view type) const override { return texts_.contains(type); }
    std::optional<std::string> string(std::string_view type) const override;
    std::vector<std::string> filePaths() const override { return paths_; }
    bool hasFileURLs() const override { return hasType(ui::kFileURLType); }

    /// The names under which contents that views can use are to be asked for, a few at most.
    std::vector<std::string> namesToFetch() const;
    /// What was answered under such a name. The text of files is the first one's URL, as on a pasteboard.
    void fetched(std::string_view name, std::string_view bytes);

private:
    std::map<std::string, std::optional<std::string>, std::less<>> texts_;  // by type; no value: not known yet
    std::vector<std::string> paths_;
};

/// At most this many of the types that another program offers are looked at.
inline constexpr size_t kMaxOfferedTypes = 64;

}  // namespace morvel::x11
