// Compares what our headers declare with the API facts, by compile-time encodings.
#pragma once

#include <algorithm>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "Platform/Mac/objc/Encoding.h"
#include "Platform/Mac/objc/Id.h"

namespace morvel::mac::checked {

struct DeclaredFunction {
    std::string name;
    objc::MessageTypes types;
};
/// A constant with its value as decimal text, or an exported symbol without one.
struct DeclaredConstant {
    std::string name;
    std::string encoding;
    std::string value = {};
};

template <typename R, typename... Args>
objc::MessageTypes typesOf(R (*)(Args...)) {
    return objc::MessageEncoding<R, std::remove_cv_t<Args>...>::kTypes;
}
template <typename F>
objc::MessageTypes functionTypes() {
    return typesOf(static_cast<F*>(nullptr));
}
template <typename T>
std::string encodingOf() {
    return std::string(objc::Encode<std::remove_cv_t<T>>::value.view());
}

template <typename T>
DeclaredConstant constantOf(const char* name, T value) {
    std::string text = std::to_string(value);
    // As the facts write it: "-1.0", not "-1.000000".
    if (std::is_floating_point_v<T>) text.erase(std::max(text.find_last_not_of('0'), text.find('.') + 1) + 1);
    return {name, encodingOf<T>(), std::move(text)};
}

/// All messages that the wrappers' code contains, sent or not: noted while the program starts.
std::vector<objc::WrittenMessage>& writtenMessages();

void checkFunction(const DeclaredFunction& function);
void checkConstant(const DeclaredConstant& constant);

}  // namespace morvel::mac::checked

namespace morvel::mac::objc {

// Behind pointers of the runtime's own functions.
template <>
struct Encode<IvarRecord> {
    static constexpr FixedString value{"{objc_ivar=}"};
};

}  // namespace morvel::mac::objc
