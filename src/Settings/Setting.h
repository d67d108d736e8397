// One setting: a published value that is read from the defaults once and written through on each assignment.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "Platform/UserDefaults.h"
#include "Util/Published.h"

namespace morvel {

/// How a setting's values are kept in the defaults and which of them are allowed.
template <class T>
struct SettingRule {
    std::string key;
    T fallback;  ///< for a missing value, or one that `decode` refuses
    std::function<std::optional<T>(const DefaultsValue&)> decode;
    /// Nothing: the key is removed.
    std::function<std::optional<DefaultsValue>(const T&)> encode;
    /// The nearest allowed value; absent where every value is allowed.
    std::function<T(const T&)> clamp = nullptr;
};

template <class T>
class Setting {
public:
    /// Reads the stored value and never writes it back. `defaults` outlives the setting.
    Setting(UserDefaults& defaults, SettingRule<T> rule)
        : defaults_(defaults), rule_(std::move(rule)), published_(read()) {}
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

    const T& value() const { return published_.value(); }
    const std::string& key() const { return rule_.key; }

    /// Publishes the value as given, then, if it is out of range, the clamped one; stores only the latter.
    void set(T value) {
        published_.set(std::move(value));
        if (rule_.clamp) {
            // A subscriber may have assigned again: what counts is the value as it now is.
            T allowed = rule_.clamp(published_.value());
            if (allowed != published_.value()) return set(std::move(allowed));
        }
        if (auto stored = rule_.encode(published_.value())) {
            defaults_.set(rule_.key, std::move(*stored));
        } else {
            defaults_.remove(rule_.key);
        }
    }

    /// As it is kept in the defaults; nothing for a value that is kept by its absence.
    std::optional<DefaultsValue> stored() const { return rule_.encode(published_.value()); }
    /// Whether a value that was kept so would be read as itself, or as the nearest allowed one.
    bool canRead(const DefaultsValue& stored) const { return rule_.decode(stored).has_value(); }
    /// Takes such a value over; another one is ignored.
    void setStored(const DefaultsValue& stored) {
        if (auto value = rule_.decode(stored)) set(*std::move(value));
    }

    [[nodiscard]] Subscription subscribe(std::function<void(const T&)> changed,
                                         Current current = Current::Deliver) const {
        return published_.subscribe(std::move(changed), current);
    }

private:
    T read() const {
        const auto stored = defaults_.object(rule_.key);
        auto value = stored ? rule_.decode(*stored) : std::nullopt;
        if (!value) return rule_.fallback;
        return rule_.clamp ? rule_.clamp(*value) : *std::move(value);
    }

    UserDefaults& defaults_;
    SettingRule<T> rule_;
    Published<T> published_;
};

}  // namespace morvel
