// One thing that a person keeps on the bar: an application or a folder.
#pragma once

#include <string>
#include <string_view>

namespace morvel {

struct PinnedItem {
    /// A folder may be a plain file too: whatever is opened by its path.
    enum class Kind { App, Folder };

    Kind kind = Kind::App;
    std::string identifier;   ///< an application's bundle identifier, a folder's absolute path
    std::string displayName;  ///< for people; takes no part in the item's identity

    static PinnedItem app(std::string bundleID, std::string displayName) {
        return {Kind::App, std::move(bundleID), std::move(displayName)};
    }
    static PinnedItem folder(std::string path, std::string displayName) {
        return {Kind::Folder, std::move(path), std::move(displayName)};
    }

    /// "app:" or "folder:" and the identifier. By it an item is known in the whole program.
    std::string id() const;
    /// Whether that is its id, without making the text.
    bool isIdentifiedBy(std::string_view itemID) const;

    bool operator==(const PinnedItem&) const = default;
};

/// The text that stands for the kind in what is stored and in ids.
std::string_view rawString(PinnedItem::Kind kind);

}  // namespace morvel
