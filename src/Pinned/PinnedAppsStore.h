// The pinned items in the order that the person gave them, published and written through.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Pinned/PinnedItem.h"
#include "Platform/UserDefaults.h"
#include "Util/Published.h"

namespace morvel {

/// Main thread only. One for the whole program. Each change is published and then stored, with the whole list. No item
/// is pinned twice, but a list that was stored with duplicates is taken as it stands.
class PinnedAppsStore {
public:
    /// Reads the list. What cannot be read counts as empty and stays stored until the first change. `defaults`
    /// outlives the store.
    explicit PinnedAppsStore(UserDefaults& defaults);
    PinnedAppsStore(const PinnedAppsStore&) = delete;
    PinnedAppsStore& operator=(const PinnedAppsStore&) = delete;

    /// The first one is nearest the bar's start.
    const Published<std::vector<PinnedItem>>& pinnedItems() const { return pinnedItems_; }
    /// Null when there is none. Good until the next change.
    const PinnedItem* find(std::string_view itemID) const;
    bool isPinnedApp(std::string_view bundleID) const;
    bool isPinnedFolder(std::string_view path) const;

    /// At the end. What is pinned already keeps its place and its name, and nothing is published.
    void pinApp(const std::string& bundleID, const std::string& displayName);
    void pinFolder(const std::string& path, const std::string& displayName);
    /// Pins what is not pinned yet, and puts all of them in their order at this place in the list without them, in one
    /// change.
    void pinAt(int index, const std::vector<PinnedItem>& items);
    void unpin(std::string_view itemID);
    void unpinApp(const std::string& bundleID);
    /// Puts the item at a place in the list without it; a place outside the list means its nearest end. Nothing
    /// happens when it is not pinned.
    void move(std::string_view itemID, int to);

private:
    void load();
    void pin(const PinnedItem& item);
    void change(std::vector<PinnedItem> items);
    void save();

    UserDefaults& defaults_;
    Published<std::vector<PinnedItem>> pinnedItems_;
};

}  // namespace morvel
