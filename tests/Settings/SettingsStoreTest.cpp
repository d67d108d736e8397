#include "Settings/SettingsStore.h"

#include <limits>

#include "Vectors.h"
#include "sim/FakeDefaults.h"

namespace morvel {

using vectors::Json;

namespace {

// Settings' values in the recorded cases' terms: enumerations as their raw strings, dates as seconds, data as text.
Json toJson(bool value) {
    return value;
}
Json toJson(int value) {
    return value;
}
Json toJson(double value) {
    return value;
}
Json toJson(const std::string& value) {
    return value;
}
Json toJson(const Date& value) {
    return value.time_since_epoch().count();
}
Json toJson(const Data& value) {
    return std::string(value.begin(), value.end());
}
Json toJson(const std::set<std::string>& value) {
    return value;
}
template <class E>
requires std::is_enum_v<E> Json toJson(E value) {
    return rawString(value);
}
template <class T>
Json toJson(const std::optional<T>& value) {
    return value ? toJson(*value) : Json();
}

Date dateOf(const Json& seconds) {
    return Date(std::chrono::duration<double>(seconds.get<double>()));
}
Data dataOf(const std::string& text) {
    return Data(text.begin(), text.end());
}

template <class T>
void read(const Json& json, T& value) {
    if constexpr (std::is_enum_v<T>) {
        value = *fromRawString<T>(json.get<std::string>());
    } else {
        value = json.get<T>();
    }
}
void read(const Json& json, Date& value) {
    value = dateOf(json);
}
void read(const Json& json, Data& value) {
    value = dataOf(json);
}
template <class T>
void read(const Json& json, std::optional<T>& value) {
    if (json.is_null()) {
        value.reset();
    } else {
        read(json, value.emplace());
    }
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
    } else if (const auto* whole = std::get_if<int64_t>(&stored->value)) {
        value = *whole;
    } else {
        std::visit(
            [&value](const auto& v) {
                if constexpr (requires { toJson(v); }) value = toJson(v);
            },
            stored->value);
    }
    return {{"t", kTypes[stored->value.index()]}, {"v", value}};
}

template <class Visit>
void forEachSetting(SettingsStore& s, const Visit& visit) {
    const auto all = [&visit](auto&... setting) { (visit(setting), ...); };
    all(s.barEdge, s.barHeight, s.theme, s.clampWindows, s.groupingMode, s.startAtLogin, s.showStartButton,
        s.showAppleMenuButton, s.autoHide, s.compactAtTop, s.matchMenuBarHeight, s.compactTopRightBuffer,
        s.autoDetectMacOSItemsWidth, s.compactTopCollapsedItemCount, s.autoDetectMacOSMenuWidth, s.nowPlayingEnabled,
        s.firstRunCompleted, s.dockChangedByUs, s.spacesPrefsChangedByUs, s.spacesPrefsAsked, s.windowBlacklist,
        s.showButtonBorders, s.showMenuBarIcon, s.windowButtonWidthMode, s.windowButtonCustomWidth, s.windowSpaceMode,
        s.windowlessAppsMode, s.windowlessDisplayMode, s.dragHoverRaiseMode, s.activeButtonStyle, s.accentColorMode,
        s.accentColorCustom, s.barBackgroundStyle, s.barBlurIntensity, s.pinnedMaxVisible, s.updaterAutoCheckEnabled,
        s.updaterLastCheckedAt, s.updaterSkippedVersion, s.updaterCachedRemote);
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
        auto typed = setting.value();
        read(value, typed);
        const Subscription token =
            setting.subscribe([&](const auto& told) { published.push_back(toJson(told)); }, Current::Skip);
        setting.set(typed);
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
