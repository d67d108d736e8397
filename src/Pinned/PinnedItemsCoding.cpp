#include "Pinned/PinnedItemsCoding.h"

#include <nlohmann/json.hpp>

namespace morvel::PinnedItemsCoding {

namespace {

using Json = nlohmann::json;

std::optional<std::string> text(const Json& record, const char* member) {
    const auto found = record.find(member);
    if (found == record.end() || !found->is_string()) return std::nullopt;
    return found->get<std::string>();
}

std::optional<PinnedItem::Kind> kindNamed(const std::optional<std::string>& raw) {
    for (const auto kind : {PinnedItem::Kind::App, PinnedItem::Kind::Folder})
        if (raw == rawString(kind)) return kind;
    return std::nullopt;
}

std::optional<PinnedItem> readItem(const Json& record) {
    const auto kind = kindNamed(text(record, "kind"));
    const auto identifier = text(record, "identifier");
    const auto displayName = text(record, "displayName");
    if (!kind || !identifier || !displayName) return std::nullopt;
    return PinnedItem{*kind, *identifier, *displayName};
}

std::optional<PinnedAppLegacy> readLegacy(const Json& record) {
    const auto bundleID = text(record, "bundleID");
    const auto displayName = text(record, "displayName");
    if (!bundleID || !displayName) return std::nullopt;
    return PinnedAppLegacy{*bundleID, *displayName};
}

template <class Item>
std::optional<std::vector<Item>> readAll(const Data& stored, std::optional<Item> (*read)(const Json&)) {
    constexpr bool kThrows = false;
    const Json list = Json::parse(stored.begin(), stored.end(), nullptr, kThrows);
    if (!list.is_array()) return std::nullopt;
    std::vector<Item> items;
    items.reserve(list.size());
    for (const Json& record : list) {
        auto item = record.is_object() ? read(record) : std::nullopt;
        if (!item) return std::nullopt;
        items.push_back(std::move(*item));
    }
    return items;
}

}  // namespace

std::optional<Data> encode(const std::vector<PinnedItem>& items) {
    Json list = Json::array();
    for (const PinnedItem& item : items)
        list.push_back(
            {{"kind", rawString(item.kind)}, {"identifier", item.identifier}, {"displayName", item.displayName}});
    try {
        const std::string text = list.dump();
        return Data(text.begin(), text.end());
    } catch (const Json::type_error&) {  // how the library says that a text is not UTF-8
        return std::nullopt;
    }
}

std::optional<std::vector<PinnedItem>> decode(const Data& stored) {
    return readAll<PinnedItem>(stored, readItem);
}

std::optional<std::vector<PinnedAppLegacy>> decodeLegacy(const Data& stored) {
    return readAll<PinnedAppLegacy>(stored, readLegacy);
}

}  // namespace morvel::PinnedItemsCoding
