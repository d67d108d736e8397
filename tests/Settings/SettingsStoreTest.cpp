#include "Settings/SettingsStore.h"

#include <limits>

#include "Vectors.h"
#include "sim/FakeDefaults.h"

namespace morvel {

using vectors::Json;

namespace {

template <class T>
constexpr bool isOptional = false;
template <class T>
constexpr bool isOptional<std::optional<T>> = true;

Date dateOf(const Json& seconds) {
    return Date(std::chrono::duration<double>(seconds.get<double>()));
}
Data dataOf(const std::string& text) {
    return Data(text.begin(), text.end());
}

// Settings' values in the recorded cases' terms: enumerations as their raw strings, dates as seconds, data as text.
template <class T>
Json toJson(const T& value) {
    if constexpr (isOptional<T>)
        return value ? toJson(*value) : Json();
    else if constexpr (std::is_enum_v<T>)
        return rawString(value);
    else if constexpr (std::is_same_v<T, Date>)
        return value.time_since_epoch().count();
    else if constexpr (std::is_same_v<T, Data>)
        return std::string(value.begin(), value.end());
    else
        return value;
}
template <class T>
T fromJson(const Json& json) {
    if constexpr (isOptional<T>)
        return json.is_null() ? T() : fromJson<typename T::value_type>(json);
    else if constexpr (std::is_enum_v<T>)
        return vectors::choice<T>(json);
    else if constexpr (std::is_same_v<T, Date>)
        return dateOf(json);
    else if constexpr (std::is_same_v<T, Data>)
        return dataOf(json);
    else
        return json.get<T>();
}

DefaultsValue untyped(const Json& json) {
    if (json.is_boolean()) return {json.get<bool>()};
    if (json.is_number_integer()) return {json.get<int64_t>()};
    if (json.is_number()) return {json.get<double>()};
    if (json.is_string()) return {json.get<std::string>()};
    if (json.is_array()) {
        DefaultsArray array;
        for (const Json& element : json) array.push_back(untyped(element));
        return {array};
    }
    DefaultsDictionary dictionary;
    for (const auto& [key, value] : json.items()) dictionary[key] = untyped(value);
    return {dictionary};
}

DefaultsValue stored(const Json& typed) {
    const std::string type = typed["t"];
    const Json& value = typed["v"];
    if (type == "double") return {value.get<double>()};
    if (type == "date") return {dateOf(value)};
    if (type == "data") return {dataOf(value)};
    return untyped(value);
}

Json describe(const std::optional<DefaultsValue>& stored) {
    if (!stored) return nullptr;
    constexpr std::array kTypes = {"bool", "int", "double", "string", "date", "data", "array", "dict"};
    Json value;
    if (const auto* array = std::get_if<DefaultsArray>(&stored->value)) {
        std::set<std::string> texts;
        for (const DefaultsValue& element : *array) texts.insert(std::get<std::string>(element.value));
        EXPECT_EQ(texts.size(), array->size());
        value = texts;
    } else {
        std::visit(
            [&value]<class T>(const T& v) {
                if constexpr (!std::is_same_v<T, DefaultsArray> && !std::is_same_v<T, DefaultsDictionary>)
                    value = toJson(v);
            },
            stored->value);
    }
    return {{"t", kTypes[stored->value.index()]}, {"v", value}};
}

template <class Visit>
void forEachSetting(SettingsStore& s, const Visit& visit) {
    s.forEachChoice(visit);
    const auto others = [&visit](auto&... setting) { (visit(setting), ...); };
    others(s.firstRunCompleted, s.dockChangedByUs, s.spacesPrefsChangedByUs, s.spacesPrefsAsked, s.updaterLastCheckedAt,
           s.updaterSkippedVersion, s.updaterCachedRemote);
}

Json allValues(SettingsStore& settings) {
    Json values = Json::object();
    forEachSetting(settings, [&](auto& setting) { values[setting.key()] = toJson(setting.value()); });
    return values;
}

bool isAccepted(const Json& test, const std::string& key, const Json& value) {
    if (vectors::same(value, test["expected"][key])) return true;
    if (!test.contains("accept") || !test["accept"].contains(key)) return false;
    for (const Json& other : test["accept"][key])
        if (other == "*" ? value.is_string() : vectors::same(value, other)) return true;
    return false;
}

/// Assigns a recorded value to the setting of that key and tells what was published and stored.
Json assign(SettingsStore& settings, const sim::FakeDefaults& defaults, const std::string& key, const Json& value) {
    Json published = Json::array();
    forEachSetting(settings, [&](auto& setting) {
        if (setting.key() != key) return;
        const Subscription token =
            setting.subscribe([&](const auto& told) { published.push_back(toJson(told)); }, Current::Skip);
        setting.set(fromJson<std::decay_t<decltype(setting.value())>>(value));
    });
    return {{"published", published}, {"stored", describe(defaults.object(key))}};
}

}  // namespace

TEST(SettingsStore, RecordedReadings) {
    sim::FakeDefaults none;
    SettingsStore fresh(none);
    const Json fallbacks = allValues(fresh);
    for (const Json& test : vectors::load("settings_read")) {
        sim::FakeDefaults defaults;
        for (const auto& [key, value] : test["input"].items()) defaults.values[key] = stored(value);
        SettingsStore settings(defaults);
        EXPECT_EQ(defaults.writes, 0) << "reading never writes back";
        const Json values = allValues(settings);
        for (const auto& [key, value] : values.items()) {
            const bool isRecorded = test["expected"].contains(key);
            EXPECT_TRUE(isRecorded ? isAccepted(test, key, value) : value == fallbacks[key])
                << test["name"] << ": " << key << "\ninput    " << test["input"] << "\ngot      " << value;
        }
    }
}

TEST(SettingsStore, RecordedAssignments) {
    vectors::walk("settings_write", [](const Json& steps) {
        sim::FakeDefaults defaults;
        SettingsStore settings(defaults);
        Json results = Json::array();
        for (const Json& step : steps) results.push_back(assign(settings, defaults, step[0], step[1]));
        SettingsStore again(defaults);
        EXPECT_EQ(allValues(again), allValues(settings)) << "what is stored reads back";
        return results;
    });
}

TEST(SettingsStore, NumbersThatAreNoneOrTooLargeDoNoHarm) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    sim::FakeDefaults defaults;
    defaults.values["barHeight"] = {kNaN};
    defaults.values["compactTopRightBuffer"] = {kInfinity};
    defaults.values["pinnedMaxVisible"] = {-kInfinity};
    defaults.values["compactTopCollapsedItemCount"] = {kNaN};
    defaults.values["windowButtonCustomWidth"] = {std::numeric_limits<int64_t>::min()};
    SettingsStore settings(defaults);
    EXPECT_EQ(settings.barHeight.value(), 44);
    EXPECT_EQ(settings.compactTopRightBuffer.value(), 400);
    EXPECT_EQ(settings.pinnedMaxVisible.value(), 0);
    EXPECT_EQ(settings.compactTopCollapsedItemCount.value(), 2);
    EXPECT_EQ(settings.windowButtonCustomWidth.value(), 60);

    settings.barHeight.set(kNaN);
    EXPECT_EQ(settings.barHeight.value(), 44);
    EXPECT_EQ(defaults.values["barHeight"], DefaultsValue{44.0});
}

TEST(SettingsStore, ASubscriberMayAssignAgain) {
    sim::FakeDefaults defaults;
    SettingsStore settings(defaults);
    const Subscription token = settings.barHeight.subscribe(
        [&](double height) {
            if (height == 70) settings.barHeight.set(30);
        },
        Current::Skip);
    settings.barHeight.set(70);
    EXPECT_EQ(settings.barHeight.value(), 30) << "the assignment made last counts";
    EXPECT_EQ(defaults.values["barHeight"], DefaultsValue{30.0});
}

}  // namespace morvel
