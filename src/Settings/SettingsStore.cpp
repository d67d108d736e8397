#include "Settings/SettingsStore.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace morvel {

namespace {

/// The value if it was stored as a T; no type converts to another except where a rule says so.
template <class T>
std::optional<T> storedAs(const DefaultsValue& stored) {
    const T* value = std::get_if<T>(&stored.value);
    return value ? std::optional<T>(*value) : std::nullopt;
}

/// A whole or a floating-point number. Not a number counts as absent.
std::optional<double> decodeDouble(const DefaultsValue& stored) {
    if (const auto whole = storedAs<int64_t>(stored)) return static_cast<double>(*whole);
    const auto number = storedAs<double>(stored);
    return number && std::isnan(*number) ? std::nullopt : number;
}

/// A number without a fraction, as near as an int can come to it.
std::optional<int> decodeInt(const DefaultsValue& stored) {
    const auto number = decodeDouble(stored);
    if (!number || std::trunc(*number) != *number) return std::nullopt;
    constexpr double kLeast = std::numeric_limits<int>::min(), kGreatest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(*number, kLeast, kGreatest));
}

std::optional<std::set<std::string>> decodeTexts(const DefaultsValue& stored) {
    const auto* array = std::get_if<DefaultsArray>(&stored.value);
    if (!array) return std::nullopt;
    std::set<std::string> texts;
    for (const DefaultsValue& element : *array) {
        const auto* text = std::get_if<std::string>(&element.value);
        if (!text) return std::nullopt;
        texts.insert(*text);
    }
    return texts;
}

SettingRule<bool> boolRule(std::string key, bool fallback) {
    return {std::move(key), fallback, storedAs<bool>, [](const bool& value) { return DefaultsValue{value}; }};
}

SettingRule<double> numberRule(std::string key, double fallback, double least, double greatest) {
    return {std::move(key), fallback, decodeDouble, [](const double& value) { return DefaultsValue{value}; },
            [=](const double& value) { return std::isnan(value) ? fallback : std::clamp(value, least, greatest); }};
}

SettingRule<int> countRule(std::string key, int fallback, int least, int greatest) {
    return {std::move(key), fallback, decodeInt, [](const int& value) { return DefaultsValue{int64_t{value}}; },
            [=](const int& value) { return std::clamp(value, least, greatest); }};
}

/// The default of every enumeration is told, not its first case: they differ.
template <class E>
SettingRule<E> enumRule(std::string key, E fallback) {
    return {std::move(key), fallback,
            [](const DefaultsValue& stored) {
                const auto* raw = std::get_if<std::string>(&stored.value);
                return raw ? fromRawString<E>(*raw) : std::nullopt;
            },
            [](const E& value) { return DefaultsValue{std::string(rawString(value))}; }};
}

SettingRule<std::string> textRule(std::string key, std::string fallback) {
    return {std::move(key), std::move(fallback), storedAs<std::string>,
            [](const std::string& text) { return DefaultsValue{text}; }};
}

SettingRule<std::set<std::string>> textSetRule(std::string key) {
    return {std::move(key), {}, decodeTexts, [](const std::set<std::string>& texts) {
                DefaultsArray array;
                for (const std::string& text : texts) array.push_back({text});
                return DefaultsValue{std::move(array)};
            }};
}

/// Absent by default; setting no value removes the key.
template <class T>
SettingRule<std::optional<T>> optionalRule(std::string key) {
    return {std::move(key), std::nullopt,
            [](const DefaultsValue& stored) { return std::optional<std::optional<T>>(storedAs<T>(stored)); },
            [](const std::optional<T>& value) { return value ? std::optional(DefaultsValue{*value}) : std::nullopt; }};
}

}  // namespace

SettingsStore::SettingsStore(UserDefaults& defaults)
    : barEdge(defaults, enumRule("barEdge", MorvelEdge::Bottom)),
      barHeight(defaults, numberRule("barHeight", 44, 24, 64)),
      theme(defaults, enumRule("theme", Theme::System)),
      clampWindows(defaults, boolRule("clampWindows", true)),
      groupingMode(defaults, enumRule("groupingMode", GroupingMode::Auto)),
      startAtLogin(defaults, boolRule("startAtLogin", true)),
      showStartButton(defaults, boolRule("showStartButton", true)),
      showAppleMenuButton(defaults, boolRule("showAppleMenuButton", false)),
      autoHide(defaults, boolRule("autoHide", false)),
      compactAtTop(defaults, boolRule("compactAtTop", true)),
      matchMenuBarHeight(defaults, boolRule("matchMenuBarHeight", true)),
      compactTopRightBuffer(defaults, numberRule("compactTopRightBuffer", 200, 100, 400)),
      autoDetectMacOSItemsWidth(defaults, boolRule("autoDetectMacOSItemsWidth", true)),
      compactTopCollapsedItemCount(defaults, countRule("compactTopCollapsedItemCount", 2, 1, 10)),
      autoDetectMacOSMenuWidth(defaults, boolRule("autoDetectMacOSMenuWidth", false)),
      nowPlayingEnabled(defaults, boolRule("nowPlayingEnabled", true)),
      firstRunCompleted(defaults, boolRule("firstRunCompleted", false)),
      dockChangedByUs(defaults, boolRule("dockChangedByUs", false)),
      spacesPrefsChangedByUs(defaults, boolRule("spacesPrefsChangedByUs", false)),
      spacesPrefsAsked(defaults, boolRule("spacesPrefsAsked", false)),
      windowBlacklist(defaults, textSetRule("windowBlacklist")),
      showButtonBorders(defaults, boolRule("showButtonBorders", true)),
      showMenuBarIcon(defaults, boolRule("showMenuBarIcon", false)),
      windowButtonWidthMode(defaults, enumRule("windowButtonWidthMode", WindowButtonWidthMode::Fixed)),
      windowButtonCustomWidth(defaults, numberRule("windowButtonCustomWidth", 150, 60, 320)),
      windowSpaceMode(defaults, enumRule("windowSpaceMode", WindowSpaceMode::CurrentSpace)),
      windowlessAppsMode(defaults, enumRule("windowlessAppsMode", WindowlessAppsMode::UnpinnedOnly)),
      windowlessDisplayMode(defaults, enumRule("windowlessDisplayMode", WindowlessDisplayMode::FollowGrouping)),
      dragHoverRaiseMode(defaults, enumRule("dragHoverRaiseMode", DragHoverRaiseMode::FileOnly)),
      activeButtonStyle(defaults, enumRule("activeButtonStyle", ActiveButtonStyle::Pill)),
      accentColorMode(defaults, enumRule("accentColorMode", AccentColorMode::System)),
      accentColorCustom(defaults, textRule("accentColorCustom", "0A84FFFF")),
      barBackgroundStyle(defaults, enumRule("barBackgroundStyle", BarBackgroundStyle::Translucent)),
      barBlurIntensity(defaults, enumRule("barBlurIntensity", BarBlurIntensity::Medium)),
      pinnedMaxVisible(defaults, countRule("pinnedMaxVisible", 3, 0, 15)),
      updaterAutoCheckEnabled(defaults, boolRule("updaterAutoCheckEnabled", true)),
      updaterLastCheckedAt(defaults, optionalRule<Date>("updaterLastCheckedAt")),
      updaterSkippedVersion(defaults, optionalRule<std::string>("updaterSkippedVersion")),
      updaterCachedRemote(defaults, optionalRule<Data>("updaterCachedRemote")) {}

}  // namespace morvel
