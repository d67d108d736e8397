// The choices among a few that settings offer, in the order in which the settings window lists them.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace morvel {

enum class MorvelEdge { Bottom, Top };
enum class Theme { System, Light, Dark };
enum class GroupingMode { Auto, Always, Never };
enum class WindowButtonWidthMode { Fixed, Free, Custom };
enum class WindowSpaceMode { AllSpaces, CurrentSpace };
enum class WindowlessAppsMode { Off, UnpinnedOnly, AllRunning };
enum class WindowlessDisplayMode { FollowGrouping, Auto, Always, Never };
enum class DragHoverRaiseMode { Off, FileOnly, Any };
enum class ActiveButtonStyle { Pill, Underline, Fill };
enum class AccentColorMode { System, Custom };
enum class BarBackgroundStyle { Translucent, Opaque, Clear };
enum class BarBlurIntensity { Subtle, Medium, Strong };

/// One row of an enumeration's table: the case and the text it is stored as.
template <class E>
struct RawString {
    E value;
    std::string_view raw;
};
// The rule makes it by itself for an aggregate, but not in the clang of Debian 12, which builds the fuzzers.
template <class E>
RawString(E, std::string_view) -> RawString<E>;

/// The table of each enumeration, in its case order; reading, writing, pickers and tests use these alone.
template <class E>
inline constexpr std::array<RawString<E>, 0> kRawStrings{};

template <>
inline constexpr std::array kRawStrings<MorvelEdge> = {
    RawString{MorvelEdge::Bottom, "bottom"},
    RawString{MorvelEdge::Top, "top"},
};
template <>
inline constexpr std::array kRawStrings<Theme> = {
    RawString{Theme::System, "system"},
    RawString{Theme::Light, "light"},
    RawString{Theme::Dark, "dark"},
};
template <>
inline constexpr std::array kRawStrings<GroupingMode> = {
    RawString{GroupingMode::Auto, "auto"},
    RawString{GroupingMode::Always, "always"},
    RawString{GroupingMode::Never, "never"},
};
template <>
inline constexpr std::array kRawStrings<WindowButtonWidthMode> = {
    RawString{WindowButtonWidthMode::Fixed, "fixed"},
    RawString{WindowButtonWidthMode::Free, "free"},
    RawString{WindowButtonWidthMode::Custom, "custom"},
};
template <>
inline constexpr std::array kRawStrings<WindowSpaceMode> = {
    RawString{WindowSpaceMode::AllSpaces, "allSpaces"},
    RawString{WindowSpaceMode::CurrentSpace, "currentSpace"},
};
template <>
inline constexpr std::array kRawStrings<WindowlessAppsMode> = {
    RawString{WindowlessAppsMode::Off, "off"},
    RawString{WindowlessAppsMode::UnpinnedOnly, "unpinnedOnly"},
    RawString{WindowlessAppsMode::AllRunning, "allRunning"},
};
template <>
inline constexpr std::array kRawStrings<WindowlessDisplayMode> = {
    RawString{WindowlessDisplayMode::FollowGrouping, "followGrouping"},
    RawString{WindowlessDisplayMode::Auto, "auto"},
    RawString{WindowlessDisplayMode::Always, "always"},
    RawString{WindowlessDisplayMode::Never, "never"},
};
template <>
inline constexpr std::array kRawStrings<DragHoverRaiseMode> = {
    RawString{DragHoverRaiseMode::Off, "off"},
    RawString{DragHoverRaiseMode::FileOnly, "fileOnly"},
    RawString{DragHoverRaiseMode::Any, "any"},
};
template <>
inline constexpr std::array kRawStrings<ActiveButtonStyle> = {
    RawString{ActiveButtonStyle::Pill, "pill"},
    RawString{ActiveButtonStyle::Underline, "underline"},
    RawString{ActiveButtonStyle::Fill, "fill"},
};
template <>
inline constexpr std::array kRawStrings<AccentColorMode> = {
    RawString{AccentColorMode::System, "system"},
    RawString{AccentColorMode::Custom, "custom"},
};
template <>
inline constexpr std::array kRawStrings<BarBackgroundStyle> = {
    RawString{BarBackgroundStyle::Translucent, "translucent"},
    RawString{BarBackgroundStyle::Opaque, "opaque"},
    RawString{BarBackgroundStyle::Clear, "clear"},
};
template <>
inline constexpr std::array kRawStrings<BarBlurIntensity> = {
    RawString{BarBlurIntensity::Subtle, "subtle"},
    RawString{BarBlurIntensity::Medium, "medium"},
    RawString{BarBlurIntensity::Strong, "strong"},
};

template <class E>
constexpr std::string_view rawString(E value) {
    for (const auto& row : kRawStrings<E>)
        if (row.value == value) return row.raw;
    return {};
}

/// Exact, in upper and lower case; anything else is nothing.
template <class E>
constexpr std::optional<E> fromRawString(std::string_view raw) {
    for (const auto& row : kRawStrings<E>)
        if (row.raw == raw) return row.value;
    return std::nullopt;
}

}  // namespace morvel
