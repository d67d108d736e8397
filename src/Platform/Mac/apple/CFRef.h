// Strong references to Core Foundation objects, and reads that ask for the type first: a value from another process or
// from a private function may be anything.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Platform/Mac/apple/CF.h"

namespace morvel::mac {

template <typename T>
class CFRef {
public:
    CFRef() = default;
    /// For the result of a Create or Copy function.
    static CFRef adopt(T owned) {
        CFRef reference;
        reference.raw_ = owned;
        return reference;
    }
    /// For the result of a Get function and for arguments of callbacks.
    static CFRef retain(T borrowed) {
        if (borrowed) CFRetain(borrowed);
        return adopt(borrowed);
    }
    CFRef(const CFRef& other) : raw_(other.raw_) {
        if (raw_) CFRetain(raw_);
    }
    CFRef(CFRef&& other) noexcept : raw_(std::exchange(other.raw_, nullptr)) {}
    CFRef& operator=(CFRef other) noexcept {
        std::swap(raw_, other.raw_);
        return *this;
    }
    ~CFRef() {
        if (raw_) CFRelease(raw_);
    }

    T get() const { return raw_; }
    explicit operator bool() const { return raw_ != nullptr; }
    /// Where a function stores a reference it hands over. What was held is released first.
    T* receive() {
        if (raw_) CFRelease(std::exchange(raw_, nullptr));
        return &raw_;
    }

private:
    T raw_ = nullptr;
};

/// Which type a reference type stands for; specialised beside further types (Accessibility.h).
template <typename T>
CFTypeID cfTypeID();
template <>
inline CFTypeID cfTypeID<CFStringRef>() {
    return CFStringGetTypeID();
}
template <>
inline CFTypeID cfTypeID<CFNumberRef>() {
    return CFNumberGetTypeID();
}
template <>
inline CFTypeID cfTypeID<CFBooleanRef>() {
    return CFBooleanGetTypeID();
}
template <>
inline CFTypeID cfTypeID<CFArrayRef>() {
    return CFArrayGetTypeID();
}
template <>
inline CFTypeID cfTypeID<CFDictionaryRef>() {
    return CFDictionaryGetTypeID();
}

/// The value as a T, or null when it is null or something else. Borrowed, as `value` is.
template <typename T>
T cfCast(CFTypeRef value) {
    // Back from const void*: some reference types (AXUIElementRef) are to non-const structs.
    return value && CFGetTypeID(value) == cfTypeID<T>() ? static_cast<T>(const_cast<void*>(value)) : nullptr;
}

CFRef<CFStringRef> cfString(std::string_view utf8);
/// Each empty for null and for a value of another type. A number that does not fit the result is absent too.
std::optional<std::string> stringFrom(CFTypeRef value);
std::optional<bool> boolFrom(CFTypeRef value);
std::optional<std::int64_t> integerFrom(CFTypeRef value);
std::optional<double> doubleFrom(CFTypeRef value);
/// The elements, borrowed from the array; empty for anything that is not an array.
std::vector<CFTypeRef> elementsOf(CFTypeRef array);
/// The value under a string key, borrowed; null when there is none or `dictionary` is not one.
CFTypeRef valueIn(CFTypeRef dictionary, CFStringRef key);

}  // namespace morvel::mac
