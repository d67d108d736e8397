// The choices among a few that settings offer, in the order in which the settings window lists them.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace morvel {

template <size_t kCases>
using RawStrings = std::array<std::string_view, kCases>;

/// The texts as which the cases of an enumeration are stored, in the order of the cases. Each enumeration has its own
/// right below it; reading, writing, pickers and tests use these alone.
template <class E>
inline constexpr RawStrings<0> kRawStrings{};

enum class MorvelEdge { Bottom, Top };
template <>
inline constexpr RawStrings<2> kRawStrings<MorvelEdge> = {"bottom", "top"};

enum class Theme { System, Light, Dark };
template <>
inline constexpr RawStrings<3> kRawStrings<Theme> = {"system", "light", "dark"};

enum class GroupingMode { Auto, Always, Never };
template <>
inline constexpr RawStrings<3> kRawStrings<GroupingMode> = {"auto", "always", "never"};

enum class WindowButtonWidthMode { Fixed, Free, Custom };
template <>
inline constexpr RawStrings<3> kRawStrings<WindowButtonWidthMode> = {"fixed", "free", "custom"};

enum class WindowSpaceMode { AllSpaces, CurrentSpace };
template <>
inline constexpr RawStrings<2> kRawStrings<WindowSpaceMode> = {"allSpaces", "currentSpace"};

enum class WindowlessAppsMode { Off, UnpinnedOnly, AllRunning };
template <>
inline constexpr RawStrings<3> kRawStrings<WindowlessAppsMode> = {"off", "unpinnedOnly", "allRunning"};

enum class WindowlessDisplayMode { FollowGrouping, Auto, Always, Never };
template <>
inline constexpr RawStrings<4> kRawStrings<WindowlessDisplayMode> = {"followGrouping", "auto", "always", "never"};

enum class DragHoverRaiseMode { Off, FileOnly, Any };
template <>
inline constexpr RawStrings<3> kRawStrings<DragHoverRaiseMode> = {"off", "fileOnly", "any"};

enum class ActiveButtonStyle { Pill, Underline, Fill };
template <>
inline constexpr RawStrings<3> kRawStrings<ActiveButtonStyle> = {"pill", "underline", "fill"};

enum class AccentColorMode { System, Custom };
template <>
inline constexpr RawStrings<2> kRawStrings<AccentColorMode> = {"system", "custom"};

enum class BarBackgroundStyle { Translucent, Opaque, Clear };
template <>
inline constexpr RawStrings<3> kRawStrings<BarBackgroundStyle> = {"translucent", "opaque", "clear"};

enum class BarBlurIntensity { Subtle, Medium, Strong };
template <>
inline constexpr RawStrings<3> kRawStrings<BarBlurIntensity> = {"subtle", "medium", "strong"};

template <class E>
constexpr std::string_view rawString(E value) {
    return kRawStrings<E>[static_cast<size_t>(value)];
}

/// Exact, in upper and lower case; anything else is nothing.
template <class E>
constexpr std::optional<E> fromRawString(std::string_view raw) {
    for (size_t place = 0; place < kRawStrings<E>.size(); ++place)
        if (kRawStrings<E>[place] == raw) return static_cast<E>(place);
    return std::nullopt;
}

}  // namespace morvel
