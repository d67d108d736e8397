// The recorded answers for pinned items: what is read, what operations do, and what stands on the bar.
#include "Pinned/PinnedAppsStore.h"
#include "Pinned/PinnedDrop.h"
#include "Pinned/PinnedItemsCoding.h"
#include "Pinned/PinnedOverflowSlicing.h"
#include "Vectors.h"
#include "sim/FakeDefaults.h"
#include "sim/SimInstalledApplications.h"

namespace morvel {
namespace {

using vectors::Json;

constexpr const char* kKey = "pinnedApps";

Json toJson(const std::vector<PinnedItem>& items) {
    Json list = Json::array();
    for (const PinnedItem& item : items) list.push_back({rawString(item.kind), item.identifier, item.displayName});
    return list;
}

std::vector<PinnedItem> itemsIn(const Json& list) {
    std::vector<PinnedItem> items;
    for (const Json& item : list)
        items.push_back(item[0] == "app" ? PinnedItem::app(item[1], item[2]) : PinnedItem::folder(item[1], item[2]));
    return items;
}

Data dataOf(const std::string& text) {
    return Data(text.begin(), text.end());
}

/// What lies in the defaults, in the current format.
Json stored(const sim::FakeDefaults& defaults) {
    const auto value = defaults.object(kKey);
    const auto items = value ? PinnedItemsCoding::decode(std::get<Data>(value->value)) : std::nullopt;
    return items ? toJson(*items) : Json();
}

DefaultsValue untyped(const Json& typed) {
    const Json& value = typed["v"];
    if (typed["t"] == "data") return {dataOf(value)};
    if (typed["t"] == "string") return {value.get<std::string>()};
    if (typed["t"] == "bool") return {value.get<bool>()};
    if (value.is_number_integer()) return {value.get<int64_t>()};
    if (value.is_number()) return {value.get<double>()};
    return value.is_array() ? DefaultsValue{DefaultsArray{}} : DefaultsValue{DefaultsDictionary{}};
}

TEST(PinnedVectors, Loading) {
    vectors::walk("pinned_load", [](const Json& input) -> Json {
        sim::FakeDefaults defaults;
        if (!input.is_null()) defaults.values[kKey] = untyped(input);
        const PinnedAppsStore store(defaults);
        const Json items = toJson(store.pinnedItems().value());
        const bool isRewritten = defaults.writes > 0;
        EXPECT_TRUE(!isRewritten || stored(defaults) == items);
        return {{"items", items}, {"rewritten", isRewritten}};
    });
}

void drop(PinnedAppsStore& store, const Json& dropped) {
    sim::SimInstalledApplications applications;
    const Json& info = dropped["info"];
    if (dropped["isBundle"].get<bool>() && info.is_object())
        applications.bundles[dropped["path"]] = vectors::bundle(info);
    const size_t systemButtons = size_t(dropped["start"].get<bool>()) + size_t(dropped["apple"].get<bool>());
    store.pinAt(PinnedDrop::slot(dropped["index"], systemButtons),
                {PinnedDrop::itemAt(dropped["path"], applications).value()});
}

void perform(PinnedAppsStore& store, const Json& step) {
    const std::string what = step[0];
    if (what == "pinApp") store.pinApp(step[1], step[2]);
    if (what == "pinFolder") store.pinFolder(step[1], step[2]);
    if (what == "unpin") store.unpin(step[1].get<std::string>());
    if (what == "unpinApp") store.unpinApp(step[1]);
    if (what == "move") store.move(step[1].get<std::string>(), step[2]);
    if (what == "drop") drop(store, step[1]);
}

TEST(PinnedVectors, Operations) {
    vectors::walk("pinned_traces", [](const Json& input) -> Json {
        sim::FakeDefaults defaults;
        defaults.values[kKey] = {*PinnedItemsCoding::encode(itemsIn(input["initial"]))};
        PinnedAppsStore store(defaults);
        int publications = 0;
        const Subscription subscription = store.pinnedItems().subscribe(
            [&](const std::vector<PinnedItem>& items) {
                ++publications;
                EXPECT_EQ(items, store.pinnedItems().value());
            },
            Current::Skip);
        Json results = Json::array();
        for (const Json& step : input["steps"]) {
            publications = defaults.writes = 0;
            perform(store, step);
            const Json items = toJson(store.pinnedItems().value());
            EXPECT_EQ(publications > 0, defaults.writes > 0);
            EXPECT_EQ(stored(defaults), items);
            results.push_back({{"published", publications > 0}, {"items", items}});
        }
        return results;
    });
}

TEST(PinnedVectors, Slicing) {
    vectors::walk("pinned_slice", [](const Json& input) -> Json {
        std::vector<PinnedItem> items;
        for (int i = 0; i < input["count"].get<int>(); ++i) items.push_back(PinnedItem::app(std::to_string(i), ""));
        const auto sliced = PinnedOverflowSlicing::slice(items, input["maxVisible"]);
        const auto indices = [](std::span<const PinnedItem> part) {
            Json list = Json::array();
            for (const PinnedItem& item : part) list.push_back(std::stoi(item.identifier));
            return list;
        };
        return {{"visible", indices(sliced.visible)},
                {"overflow", indices(sliced.overflow)},
                {"hasOverflow", sliced.hasOverflow()}};
    });
}

}  // namespace
}  // namespace morvel
