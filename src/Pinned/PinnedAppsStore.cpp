#include "Pinned/PinnedAppsStore.h"

#include <algorithm>

#include "Pinned/PinnedItemsCoding.h"

namespace morvel {

namespace {

constexpr const char* kKey = "pinnedApps";

using Items = std::vector<PinnedItem>;

auto findIn(Items& items, const PinnedItem& wanted) {
    return std::ranges::find_if(items, [&](const PinnedItem& item) {
        return item.kind == wanted.kind && item.identifier == wanted.identifier;
    });
}

PinnedItem take(Items& items, Items::iterator from) {
    PinnedItem item = std::move(*from);
    items.erase(from);
    return item;
}

void insertAll(Items& items, int at, const Items& inserted) {
    const auto index = std::clamp<std::ptrdiff_t>(at, 0, std::ssize(items));
    items.insert(items.begin() + index, inserted.begin(), inserted.end());
}

}  // namespace

PinnedAppsStore::PinnedAppsStore(UserDefaults& defaults) : defaults_(defaults) {
    load();
}

void PinnedAppsStore::load() {
    const auto stored = defaults_.object(kKey);
    const Data* data = stored ? std::get_if<Data>(&stored->value) : nullptr;
    if (!data) return;
    if (auto items = PinnedItemsCoding::decode(*data)) return pinnedItems_.set(std::move(*items));
    const auto legacy = PinnedItemsCoding::decodeLegacy(*data);
    if (!legacy) return;
    Items migrated;
    for (const PinnedAppLegacy& app : *legacy) migrated.push_back(PinnedItem::app(app.bundleID, app.displayName));
    change(std::move(migrated));
}

const PinnedItem* PinnedAppsStore::find(std::string_view itemID) const {
    const Items& items = pinnedItems_.value();
    const auto found =
        std::ranges::find_if(items, [itemID](const PinnedItem& item) { return item.isIdentifiedBy(itemID); });
    return found == items.end() ? nullptr : &*found;
}

bool PinnedAppsStore::isPinnedApp(std::string_view bundleID) const {
    return std::ranges::any_of(pinnedItems_.value(), [bundleID](const PinnedItem& item) {
        return item.kind == PinnedItem::Kind::App && item.identifier == bundleID;
    });
}

bool PinnedAppsStore::isPinnedFolder(std::string_view path) const {
    return std::ranges::any_of(pinnedItems_.value(), [path](const PinnedItem& item) {
        return item.kind == PinnedItem::Kind::Folder && item.identifier == path;
    });
}

void PinnedAppsStore::pinApp(const std::string& bundleID, const std::string& displayName) {
    pin(PinnedItem::app(bundleID, displayName));
}

void PinnedAppsStore::pinFolder(const std::string& path, const std::string& displayName) {
    pin(PinnedItem::folder(path, displayName));
}

void PinnedAppsStore::pin(const PinnedItem& item) {
    Items items = pinnedItems_.value();
    if (findIn(items, item) != items.end()) return;
    items.push_back(item);
    change(std::move(items));
}

void PinnedAppsStore::pinAt(int index, const Items& pinned) {
    if (pinned.empty()) return;
    Items items = pinnedItems_.value();
    Items together;
    for (const PinnedItem& item : pinned) {
        const auto found = findIn(items, item);
        if (found != items.end()) {
            together.push_back(take(items, found));
        } else if (findIn(together, item) == together.end()) {
            together.push_back(item);
        }
    }
    insertAll(items, index, together);
    change(std::move(items));
}

void PinnedAppsStore::unpin(std::string_view itemID) {
    Items items = pinnedItems_.value();
    std::erase_if(items, [itemID](const PinnedItem& item) { return item.isIdentifiedBy(itemID); });
    change(std::move(items));
}

void PinnedAppsStore::unpinApp(const std::string& bundleID) {
    unpin(PinnedItem::app(bundleID, {}).id());
}

void PinnedAppsStore::move(std::string_view itemID, int to) {
    Items items = pinnedItems_.value();
    const auto found =
        std::ranges::find_if(items, [itemID](const PinnedItem& item) { return item.isIdentifiedBy(itemID); });
    if (found == items.end()) return;
    insertAll(items, to, {take(items, found)});
    change(std::move(items));
}

void PinnedAppsStore::change(Items items) {
    pinnedItems_.set(std::move(items));
    save();
}

void PinnedAppsStore::save() {
    // A subscriber may have changed the list again: what counts is the list as it now is.
    if (auto data = PinnedItemsCoding::encode(pinnedItems_.value())) defaults_.set(kKey, {std::move(*data)});
}

}  // namespace morvel
