// A strong reference to an Objective-C object. The typed wrappers of Platform/Mac/apple derive from it, so a wrapper is
// a value: copying retains, destroying releases, and an empty one is nil, to which every message answers zero.
#pragma once

#include <concepts>
#include <cstddef>
#include <functional>
#include <utility>

#include "Platform/Mac/objc/Encoding.h"
#include "Platform/Mac/objc/Runtime.h"

namespace morvel::mac::objc {

/// Says that the caller hands over a reference it owns (from alloc/init, new, copy, or a CF Create or Copy function).
struct Adopt {};
inline constexpr Adopt kAdopt{};

class Id {
public:
    Id() = default;
    Id(std::nullptr_t) {}
    /// Retains.
    explicit Id(RawObject borrowed) : raw_(borrowed ? objc_retain(borrowed) : nullptr) {}
    Id(Adopt, RawObject owned) : raw_(owned) {}
    Id(const Id& other) : Id(other.raw_) {}
    Id(Id&& other) noexcept : raw_(std::exchange(other.raw_, nullptr)) {}
    Id& operator=(Id other) noexcept {
        std::swap(raw_, other.raw_);
        return *this;
    }
    ~Id() {
        if (raw_) objc_release(raw_);
    }

    RawObject raw() const { return raw_; }
    /// Gives the reference up to the caller, who must release it.
    [[nodiscard]] RawObject giveUp() { return std::exchange(raw_, nullptr); }

    explicit operator bool() const { return raw_ != nullptr; }
    /// The same object, not an equal one.
    friend bool operator==(const Id& left, const Id& right) { return left.raw_ == right.raw_; }

private:
    RawObject raw_ = nullptr;
};

template <typename T>
concept ObjectWrapper = std::derived_from<T, Id>;

template <ObjectWrapper T>
struct Encode<T> {
    static constexpr FixedString value{"@"};
};

}  // namespace morvel::mac::objc

template <>
struct std::hash<morvel::mac::objc::Id> {
    std::size_t operator()(const morvel::mac::objc::Id& object) const noexcept {
        return std::hash<const void*>{}(object.raw());
    }
};
