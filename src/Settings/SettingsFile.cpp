#include "Settings/SettingsFile.h"

#include <nlohmann/json.hpp>

namespace morvel::SettingsFile {

namespace {

using Json = nlohmann::ordered_json;

// All choices are under one name, so that no other JSON file passes for one with settings.
constexpr const char* kRoot = "morvelSettings";

/// Dates, bytes and dictionaries are in no choice, so they have no form in the file.
struct ToJson {
    Json operator()(bool value) const { return value; }
    Json operator()(int64_t value) const { return value; }
    Json operator()(double value) const { return value; }
    Json operator()(const std::string& value) const { return value; }
    Json operator()(const DefaultsArray& array) const {
        Json elements = Json::array();
        for (const DefaultsValue& element : array) elements.push_back(std::visit(ToJson{}, element.value));
        return elements;
    }
    Json operator()(const auto&) const { return nullptr; }
};

/// Nothing for what no choice can be.
std::optional<DefaultsValue> fromJson(const Json& json) {
    switch (json.type()) {
        case Json::value_t::boolean:
            return DefaultsValue{json.get<bool>()};
        case Json::value_t::number_integer:
            return DefaultsValue{json.get<int64_t>()};
        case Json::value_t::number_unsigned:  // may be beyond the largest int64_t
        case Json::value_t::number_float:
            return DefaultsValue{json.get<double>()};
        case Json::value_t::string:
            return DefaultsValue{json.get<std::string>()};
        case Json::value_t::array: {
            DefaultsArray array;
            for (const Json& element : json) {
                if (!element.is_string()) return std::nullopt;
                array.push_back({element.get<std::string>()});
            }
            return DefaultsValue{std::move(array)};
        }
        default:
            return std::nullopt;
    }
}

}  // namespace

std::string exported(SettingsStore& settings) {
    Json choices = Json::object();
    settings.forEachChoice([&](const auto& setting) {
        if (const auto stored = setting.stored()) choices[setting.key()] = std::visit(ToJson{}, stored->value);
    });
    Json file;
    file[kRoot] = std::move(choices);
    constexpr int kIndent = 2;
    return file.dump(kIndent, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::optional<int> imported(SettingsStore& settings, std::string_view text) {
    const Json file = Json::parse(text, nullptr, false);
    if (!file.is_object() || !file.contains(kRoot) || !file[kRoot].is_object()) return std::nullopt;
    const Json& choices = file[kRoot];
    DefaultsDictionary values;
    bool canReadAll = true;
    settings.forEachChoice([&](const auto& setting) {
        const auto found = choices.find(setting.key());
        if (found == choices.end()) return;
        const auto value = fromJson(*found);
        canReadAll = canReadAll && value && setting.canRead(*value);
        if (value) values[setting.key()] = *value;
    });
    if (!canReadAll) return std::nullopt;
    settings.forEachChoice([&](auto& setting) {
        if (const auto found = values.find(setting.key()); found != values.end()) setting.setStored(found->second);
    });
    return static_cast<int>(values.size());
}

}  // namespace morvel::SettingsFile
