#include "Platform/Linux/System/DefaultsJson.h"

#include <cmath>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>

#include "Platform/Linux/System/GLibPointers.h"

namespace morvel::x11 {

namespace {

using nlohmann::json;

constexpr const char* kDate = "$date";
constexpr const char* kData = "$data";
constexpr const char* kReal = "$real";
constexpr const char* kDictionary = "$dictionary";
constexpr int kDeepest = 64;

json realToJson(double number) {
    if (std::isnan(number)) return {{kReal, "nan"}};
    if (std::isinf(number)) return {{kReal, number > 0 ? "inf" : "-inf"}};
    return number;
}

json dataToJson(const Data& data) {
    const GText text(g_base64_encode(data.data(), data.size()));
    return {{kData, text.get()}};
}

bool looksTagged(const DefaultsDictionary& dictionary) {
    return dictionary.size() == 1 && dictionary.begin()->first.starts_with('$');
}

json dictionaryToJson(const DefaultsDictionary& dictionary) {
    json out = json::object();
    for (const auto& [key, value] : dictionary) out[key] = toJson(value);
    return looksTagged(dictionary) ? json{{kDictionary, out}} : out;
}

struct ToJson {
    json operator()(bool flag) const { return flag; }
    json operator()(int64_t number) const { return number; }
    json operator()(double number) const { return realToJson(number); }
    json operator()(const std::string& text) const { return text; }
    json operator()(const Date& date) const { return {{kDate, realToJson(date.time_since_epoch().count())}}; }
    json operator()(const Data& data) const { return dataToJson(data); }
    json operator()(const DefaultsArray& array) const {
        json out = json::array();
        for (const auto& value : array) out.push_back(toJson(value));
        return out;
    }
    json operator()(const DefaultsDictionary& dictionary) const { return dictionaryToJson(dictionary); }
};

template <class T>
std::optional<DefaultsValue> valueOf(T value) {
    auto out = std::make_optional<DefaultsValue>();
    out->value = std::move(value);
    return out;
}

std::optional<DefaultsValue> valueFromJson(const json& from, int depth);

std::optional<double> realFromText(const json& from) {
    if (from == "nan") return std::numeric_limits<double>::quiet_NaN();
    if (from == "inf") return std::numeric_limits<double>::infinity();
    if (from == "-inf") return -std::numeric_limits<double>::infinity();
    return std::nullopt;
}

std::optional<Data> dataFromJson(const json& from) {
    if (!from.is_string()) return std::nullopt;
    const auto& text = from.get_ref<const std::string&>();
    gsize length = 0;
    const std::unique_ptr<guchar, decltype(&g_free)> decoded(g_base64_decode(text.c_str(), &length), &g_free);
    return Data(decoded.get(), decoded.get() + length);
}

std::optional<DefaultsValue> dictionaryFromJson(const json& from, int depth) {
    DefaultsDictionary out;
    for (const auto& [key, item] : from.items()) {
        auto value = valueFromJson(item, depth + 1);
        if (!value) return std::nullopt;
        out.emplace(key, std::move(*value));
    }
    return valueOf(std::move(out));
}

std::optional<DefaultsValue> objectFromJson(const json& from, int depth) {
    const bool isTagged = from.size() == 1 && from.begin().key().starts_with('$');
    if (!isTagged) return dictionaryFromJson(from, depth);
    const auto& content = from.begin().value();
    const auto& tag = from.begin().key();
    if (tag == kDictionary && content.is_object()) return dictionaryFromJson(content, depth);
    if (tag == kData)
        if (auto data = dataFromJson(content)) return valueOf(std::move(*data));
    if (tag == kReal)
        if (const auto real = realFromText(content)) return valueOf(*real);
    if (tag == kDate && content.is_number()) return valueOf(Date(std::chrono::duration<double>(content.get<double>())));
    return std::nullopt;
}

std::optional<DefaultsValue> arrayFromJson(const json& from, int depth) {
    DefaultsArray out;
    for (const auto& item : from) {
        auto value = valueFromJson(item, depth + 1);
        if (!value) return std::nullopt;
        out.push_back(std::move(*value));
    }
    return valueOf(std::move(out));
}

std::optional<DefaultsValue> valueFromJson(const json& from, int depth) {
    if (depth > kDeepest) return std::nullopt;
    switch (from.type()) {
        case json::value_t::boolean:
            return valueOf(from.get<bool>());
        case json::value_t::number_integer:
            return valueOf(from.get<int64_t>());
        case json::value_t::number_unsigned:
            if (from.get<uint64_t>() > uint64_t(std::numeric_limits<int64_t>::max())) return std::nullopt;
            return valueOf(from.get<int64_t>());
        case json::value_t::number_float:
            return valueOf(from.get<double>());
        case json::value_t::string:
            return valueOf(from.get<std::string>());
        case json::value_t::array:
            return arrayFromJson(from, depth);
        case json::value_t::object:
            return objectFromJson(from, depth);
        default:
            return std::nullopt;
    }
}

}  // namespace

json toJson(const DefaultsValue& value) {
    return std::visit(ToJson{}, value.value);
}

std::optional<DefaultsValue> fromJson(const json& from) {
    return valueFromJson(from, 0);
}

}  // namespace morvel::x11
