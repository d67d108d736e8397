#include "Pinned/PinnedDrop.h"

#include <algorithm>

#include "Pinned/PinnedItemsCoding.h"
#include "Util/LowerCase.h"

namespace morvel::PinnedDrop {

namespace {

/// Whether it does in capitals or small letters, of which `end` has none but small ones.
bool endsIgnoringCase(std::string_view text, std::string_view end) {
    return text.size() > end.size() && lowerCased(text.substr(text.size() - end.size())) == end;
}

std::string lastComponent(const std::string& path) {
    const size_t slash = path.rfind('/');
    const bool isWhole = slash == std::string::npos || path.size() == 1;
    return isWhole ? path : path.substr(slash + 1);
}

PinnedItem read(const std::string& path, InstalledApplications& applications) {
    const std::string name = lastComponent(path);
    const std::string_view suffix = applications.suffix();
    const bool isNamedSo = endsIgnoringCase(name, suffix);
    const auto bundle = isNamedSo ? applications.bundle(path) : std::nullopt;
    if (!bundle || bundle->identifier.value_or("").empty()) return PinnedItem::folder(path, name);
    std::string displayName = name.substr(0, name.size() - suffix.size());
    if (bundle->name) displayName = *bundle->name;
    if (bundle->displayName) displayName = *bundle->displayName;
    return PinnedItem::app(*bundle->identifier, displayName);
}

}  // namespace

std::optional<PinnedItem> itemAt(const std::string& path, InstalledApplications& applications) {
    // A folder may be named with a slash at its end and is the same folder.
    std::string trimmed = path;
    while (trimmed.size() > 1 && trimmed.back() == '/') trimmed.pop_back();
    PinnedItem item = read(trimmed, applications);
    // One item that cannot be stored would keep the whole list from being stored.
    if (!PinnedItemsCoding::encode({item})) return std::nullopt;
    return item;
}

int slot(size_t dropIndex, size_t systemButtons) {
    return static_cast<int>(dropIndex - std::min(dropIndex, systemButtons));
}

}  // namespace morvel::PinnedDrop
