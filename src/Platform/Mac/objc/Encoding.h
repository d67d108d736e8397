// The runtime's type encodings, made while compiling: what a message's types are called by the system, so that they can
// be compared with what the system (or, in tests, the published API) says they are.
#pragma once

#include <concepts>
#include <cstddef>
#include <type_traits>

#include "Platform/Mac/objc/FixedString.h"
#include "Platform/Mac/objc/Runtime.h"

namespace morvel::mac::objc {

/// `Encode<T>::value` is T's encoding as a FixedString. A struct that crosses the bridge specialises it beside its
/// definition; so does the incomplete type behind an opaque reference, as "{tag=}".
template <typename T>
struct Encode;

inline constexpr char kBoolCode = std::same_as<NativeBool, bool> ? 'B' : 'c';

template <typename T>
constexpr char integerCode() {
    if (std::same_as<T, bool>) return kBoolCode;
    constexpr bool isSigned = std::is_signed_v<T>;
    switch (sizeof(T)) {
        case 1:
            return isSigned || std::same_as<T, char> ? 'c' : 'C';
        case 2:
            return isSigned ? 's' : 'S';
        case 4:
            return isSigned ? 'i' : 'I';
        default:
            return isSigned ? 'q' : 'Q';
    }
}

template <typename T>
requires std::integral<T>
struct Encode<T> {
    static constexpr FixedString<2> value{{integerCode<T>(), '\0'}};
};
template <typename T>
requires std::is_enum_v<T>
struct Encode<T> : Encode<std::underlying_type_t<T>> {
};

template <>
struct Encode<void> {
    static constexpr FixedString value{"v"};
};
template <>
struct Encode<float> {
    static constexpr FixedString value{"f"};
};
template <>
struct Encode<double> {
    static constexpr FixedString value{"d"};
};
template <>
struct Encode<RawObject> {
    static constexpr FixedString value{"@"};
};
template <>
struct Encode<std::nullptr_t> {
    static constexpr FixedString value{"@"};
};
template <>
struct Encode<RawClass> {
    static constexpr FixedString value{"#"};
};
template <>
struct Encode<RawProtocol> {
    static constexpr FixedString value{"@"};
};
template <>
struct Encode<RawSelector> {
    static constexpr FixedString value{":"};
};

template <typename T>
concept ByteCharacter = std::same_as<T, char> || std::same_as<T, unsigned char>;

/// A struct's encoding without its fields, as the compiler writes it behind a second pointer.
template <typename T>
constexpr auto encodingWithoutFields() {
    constexpr auto full = Encode<T>::value;
    constexpr std::size_t equals = full.view().find('=');
    if constexpr (full.text[0] != '{' || equals == std::string_view::npos) {
        return full;
    } else {
        FixedString<equals + 2> cut;
        std::copy_n(full.text, equals, cut.text);
        cut.text[equals] = '}';
        return cut;
    }
}

template <typename T>
struct Encode<T*> {
    static constexpr auto make() {
        using Target = std::remove_cv_t<T>;
        if constexpr (std::is_function_v<T>) {
            return FixedString{"^?"};
        } else if constexpr (ByteCharacter<Target>) {
            return FixedString{"*"};
        } else if constexpr (std::is_pointer_v<Target> && !std::same_as<Target, RawObject>) {
            using Inner = std::remove_cv_t<std::remove_pointer_t<Target>>;
            if constexpr (ByteCharacter<Inner>) {
                return FixedString{"^*"};
            } else {
                return FixedString{"^^"} + encodingWithoutFields<Inner>();
            }
        } else {
            return FixedString{"^"} + Encode<Target>::value;
        }
    }
    static constexpr auto value = make();
};

/// The types of one message, in static storage.
template <typename R, typename... Args>
struct MessageEncoding {
    static constexpr const char* kArguments[sizeof...(Args) + 1] = {Encode<Args>::value.text..., nullptr};
    static constexpr MessageTypes kTypes{Encode<R>::value.text, kArguments, sizeof...(Args)};
};

/// A method's types as the runtime takes them: result, receiver, selector, arguments.
template <typename R, typename... Args>
inline constexpr auto kMethodEncoding = ((Encode<R>::value + FixedString{"@:"}) + ... + Encode<Args>::value);

}  // namespace morvel::mac::objc
