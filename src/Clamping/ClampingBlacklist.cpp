#include "Clamping/ClampingBlacklist.h"

namespace morvel {

namespace {

SettingRule<std::set<std::string>> storedTexts(std::string key) {
    const auto decode = [](const DefaultsValue& stored) {
        std::set<std::string> texts;
        if (const auto* array = std::get_if<DefaultsArray>(&stored.value))
            for (const DefaultsValue& element : *array)
                if (const auto* text = std::get_if<std::string>(&element.value)) texts.insert(*text);
        return std::optional(texts);
    };
    const auto encode = [](const std::set<std::string>& texts) {
        DefaultsArray array;
        for (const std::string& text : texts) array.push_back({text});
        return std::optional(DefaultsValue{std::move(array)});
    };
    return {std::move(key), {}, decode, encode};
}

}  // namespace

ClampingBlacklist::ClampingBlacklist(UserDefaults& defaults) : bundleIDs_(defaults, storedTexts("clampingBlacklist")) {}

void ClampingBlacklist::add(const std::string& bundleID) {
    auto changed = bundleIDs_.value();
    if (changed.insert(bundleID).second) bundleIDs_.set(std::move(changed));
}

void ClampingBlacklist::remove(const std::string& bundleID) {
    auto changed = bundleIDs_.value();
    if (changed.erase(bundleID) > 0) bundleIDs_.set(std::move(changed));
}

}  // namespace morvel
