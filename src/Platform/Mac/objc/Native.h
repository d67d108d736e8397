// How a C++ type of ours travels through the runtime: wrappers as object pointers, bool as BOOL, selectors as SEL.
#pragma once

#include <cstddef>
#include <utility>

#include "Platform/Mac/objc/Id.h"
#include "Platform/Mac/objc/Runtime.h"
#include "Platform/Mac/objc/Selector.h"

namespace morvel::mac::objc {

/// `type` crosses the border. `toNative` lends an argument for the length of a call; `fromNative` takes a value that
/// the other side owns; `toResult` turns what one of our methods returns into what its caller expects, which for an
/// object is one it need not release.
template <typename T>
struct Native {
    using type = T;
    static type toNative(const T& value) { return value; }
    static T fromNative(type value) { return value; }
    static type toResult(T value) { return value; }
};

template <>
struct Native<void> {
    using type = void;
};

template <>
struct Native<bool> {
    using type = NativeBool;
    static type toNative(bool value) { return static_cast<type>(value); }
    static bool fromNative(type value) { return value != 0; }
    static type toResult(bool value) { return toNative(value); }
};

template <ObjectWrapper T>
struct Native<T> {
    using type = RawObject;
    static type toNative(const T& value) { return value.raw(); }
    static T fromNative(type value) { return T(value); }
    static type toResult(T value) {
        const RawObject owned = value.giveUp();
        return owned ? objc_autorelease(owned) : nullptr;
    }
};

template <>
struct Native<Selector> {
    using type = RawSelector;
    static type toNative(Selector value) { return value.raw(); }
    static Selector fromNative(type value) { return Selector(value); }
    static type toResult(Selector value) { return value.raw(); }
};

template <>
struct Native<std::nullptr_t> {
    using type = RawObject;
    static type toNative(std::nullptr_t) { return nullptr; }
};

template <typename T>
using NativeType = typename Native<T>::type;

}  // namespace morvel::mac::objc
