// What the recorded cases leave open about pinned items.
#include <gtest/gtest.h>

#include "Pinned/PinnedAppsStore.h"
#include "Pinned/PinnedDrop.h"
#include "Pinned/PinnedItemsCoding.h"
#include "Pinned/PinnedOverflowSlicing.h"
#include "sim/FakeDefaults.h"
#include "sim/SimInstalledApplications.h"

namespace morvel {
namespace {

std::vector<PinnedItem> letters(const std::string& names) {
    std::vector<PinnedItem> items;
    for (const char name : names) items.push_back(PinnedItem::app(std::string(1, name), ""));
    return items;
}

std::string lettersOf(std::span<const PinnedItem> items) {
    std::string names;
    for (const PinnedItem& item : items) names += item.identifier;
    return names;
}

TEST(PinnedDrop, ReadsWhatLiesAtThePath) {
    sim::SimInstalledApplications applications;
    applications.bundles["/A/Edit.app"] = {.identifier = "com.edit", .displayName = "Edit", .name = "E"};
    applications.bundles["/A/Void.app"] = {.identifier = "", .displayName = "Void", .name = {}};
    applications.bundles["/L/Thing.framework"] = {.identifier = "com.thing", .displayName = {}, .name = {}};
    struct Row {
        const char *why, *path;
        std::optional<PinnedItem> item;
    };
    for (const Row& row : {
             Row{"an application, named as a folder", "/A/Edit.app/", PinnedItem::app("com.edit", "Edit")},
             Row{"with an empty identifier", "/A/Void.app", PinnedItem::folder("/A/Void.app", "Void.app")},
             Row{"a bundle of another kind", "/L/Thing.framework",
                 PinnedItem::folder("/L/Thing.framework", "Thing.framework")},
             Row{"only the ending", "/A/.app", PinnedItem::folder("/A/.app", ".app")},
             Row{"the root", "/", PinnedItem::folder("/", "/")},
             Row{"a slash too many", "/b//", PinnedItem::folder("/b", "b")},
             Row{"a name that is not UTF-8", "/b/\xE9t\xE9", std::nullopt},
         })
        EXPECT_EQ(PinnedDrop::itemAt(row.path, applications), row.item) << row.why;
    EXPECT_EQ(applications.bundlesRead, 2) << "only what is named like an application is opened";
}

TEST(PinnedAppsStore, KeepsWhatItCannotStore) {
    sim::FakeDefaults defaults;
    PinnedAppsStore store(defaults);
    store.pinFolder("/a", "a");
    const auto before = defaults.object("pinnedApps");
    store.pinFolder("/\xFF", "\xFF");
    EXPECT_EQ(store.pinnedItems().value().size(), 2u);
    EXPECT_EQ(defaults.object("pinnedApps"), before) << "what was stored stays whole";
    store.unpin("folder:/\xFF");
    EXPECT_TRUE(store.isPinnedFolder("/a"));
    EXPECT_FALSE(store.isPinnedApp("/a"));
}

TEST(PinnedAppsStore, ASubscribersOwnChangeIsTheOneThatLasts) {
    sim::FakeDefaults defaults;
    PinnedAppsStore store(defaults);
    const Subscription subscription = store.pinnedItems().subscribe(
        [&](const std::vector<PinnedItem>& items) {
            if (items.size() > 2) store.unpin(items.front().id());
        },
        Current::Skip);
    for (const char* name : {"a", "b", "c", "d"}) store.pinApp(name, name);
    EXPECT_EQ(lettersOf(PinnedAppsStore(defaults).pinnedItems().value()), "cd");
}

// What is dropped on the bar stays on the bar, in the overflow in the overflow, and beside the neighbours it was
// dropped between as far as that lets it.
TEST(PinnedOverflowSlicing, DropsStayWhereTheyWere) {
    struct Row {
        const char *why, *dragged;
        bool toOverflow;
        size_t index;
        const char *visible, *overflow;
    };
    // abc on the bar, def behind the button.
    for (const Row& row : {
             Row{"along the bar", "a", false, 1, "bac", "def"},
             Row{"to the bar's end", "a", false, 2, "bca", "def"},
             Row{"far beyond it", "a", false, 99, "bca", "def"},
             Row{"onto the bar", "e", false, 0, "eab", "cdf"},
             Row{"onto the bar's end", "e", false, 3, "abe", "cdf"},
             Row{"something new onto its end", "n", false, 3, "abn", "cdef"},
             Row{"within the overflow", "d", true, 1, "abc", "edf"},
             Row{"to its end", "d", true, 2, "abc", "efd"},
             Row{"from the bar to its front", "a", true, 0, "bcd", "aef"},
             Row{"before its second", "a", true, 1, "bcd", "aef"},
             Row{"before its third", "a", true, 2, "bcd", "eaf"},
             Row{"to its end from the bar", "a", true, 3, "bcd", "efa"},
             Row{"something new", "n", true, 0, "abc", "ndef"},
         }) {
        const auto items = letters("abcdef");
        const std::string itemID = PinnedItem::app(row.dragged, "").id();
        sim::FakeDefaults defaults;
        defaults.values["pinnedApps"] = {*PinnedItemsCoding::encode(items)};
        PinnedAppsStore store(defaults);
        store.pinAt(row.toOverflow ? PinnedOverflowSlicing::dropIndexInOverflow(items, 3, itemID, row.index)
                                   : PinnedOverflowSlicing::dropIndexOnBar(items, 3, itemID, row.index),
                    {PinnedItem::app(row.dragged, "")});
        const auto sliced = PinnedOverflowSlicing::slice(store.pinnedItems().value(), 3);
        EXPECT_EQ(lettersOf(sliced.visible), row.visible) << row.why;
        EXPECT_EQ(lettersOf(sliced.overflow), row.overflow) << row.why;
    }
    EXPECT_EQ(PinnedOverflowSlicing::dropIndexOnBar(letters("abc"), 0, "app:c", 0), 0) << "nothing is shown on the bar";
}

}  // namespace
}  // namespace morvel
