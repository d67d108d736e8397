// The application's persistent values by key, each with the type it was stored with.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace morvel {

/// Seconds since 1970 UTC; the fraction is kept.
using Date = std::chrono::time_point<std::chrono::system_clock, std::chrono::duration<double>>;
using Data = std::vector<uint8_t>;

struct DefaultsValue;
using DefaultsArray = std::vector<DefaultsValue>;
using DefaultsDictionary = std::map<std::string, DefaultsValue>;

/// A stored value. A number keeps whether it was stored as a truth value, a whole or a floating-point number.
struct DefaultsValue {
    std::variant<bool, int64_t, double, std::string, Date, Data, DefaultsArray, DefaultsDictionary> value;

    bool operator==(const DefaultsValue&) const = default;
};

/// Main thread only. Writing reaches the disk soon and whole, or not at all; it cannot fail for the caller. A store
/// that cannot be read counts as empty and is kept aside, never overwritten.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    virtual std::optional<DefaultsValue> object(const std::string& key) const = 0;
    virtual void set(const std::string& key, DefaultsValue value) = 0;
    virtual void remove(const std::string& key) = 0;
};

}  // namespace morvel
