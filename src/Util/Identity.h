// The numbers and identifiers that tell windows, processes, displays and Spaces apart, as types of their own so
// that one cannot be passed for another. None has a value that means "absent"; absence is std::optional.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace morvel {

template <class Tag, class Value>
struct StrongValue {
    Value value{};
    constexpr StrongValue() = default;
    constexpr explicit StrongValue(Value v) : value(v) {}
    auto operator<=>(const StrongValue&) const = default;
};

/// A process. Negative values stand for clients whose process is not known (a window of another machine).
using ProcessID = StrongValue<struct ProcessIDTag, int32_t>;
/// A display, stable while it stays connected.
using DisplayID = StrongValue<struct DisplayIDTag, uint32_t>;
/// A Space (virtual desktop).
using SpaceID = StrongValue<struct SpaceIDTag, uint64_t>;
/// The window server's number of a window; may be reused by the server after the window is gone.
using WindowNumber = StrongValue<struct WindowNumberTag, uint32_t>;

/// Our own identity of a window (or of a windowless application's placeholder): a random UUID, never reused.
struct WindowID {
    uint64_t high = 0;
    uint64_t low = 0;

    auto operator<=>(const WindowID&) const = default;

    /// The canonical form: 36 characters, upper-case hexadecimal. Ordering by it equals ordering by value.
    std::string text() const;
    /// Reads the canonical form in either case; anything else is nothing.
    static std::optional<WindowID> parse(std::string_view text);
};

}  // namespace morvel

template <class Tag, class Value>
struct std::hash<morvel::StrongValue<Tag, Value>> {
    size_t operator()(const morvel::StrongValue<Tag, Value>& v) const noexcept { return std::hash<Value>{}(v.value); }
};

template <>
struct std::hash<morvel::WindowID> {
    // Random already; a test's sequential ids differ in `low`.
    size_t operator()(const morvel::WindowID& id) const noexcept { return id.high ^ (id.low * 0x9E3779B97F4A7C15ull); }
};
