#include "Pinned/PinnedItem.h"

namespace morvel {

std::string_view rawString(PinnedItem::Kind kind) {
    return kind == PinnedItem::Kind::App ? "app" : "folder";
}

std::string PinnedItem::id() const {
    return std::string(rawString(kind)) + ":" + identifier;
}

bool PinnedItem::isIdentifiedBy(std::string_view itemID) const {
    const std::string_view prefix = rawString(kind);
    return itemID.size() == prefix.size() + 1 + identifier.size() && itemID.starts_with(prefix) &&
           itemID[prefix.size()] == ':' && itemID.ends_with(identifier);
}

}  // namespace morvel
