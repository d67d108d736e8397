// Typed reads and writes of the properties that the runtime keeps for its objects.
#pragma once

#include <cstring>
#include <string>

#include "Platform/Mac/objc/Encoding.h"
#include "Runtime.h"

namespace morvel::mac::checked {

template <typename T>
Value valueOf(const T& value) {
    Value stored{std::string(objc::Encode<T>::value.view()), std::vector<unsigned char>(sizeof value)};
    std::memcpy(stored.bytes.data(), &value, sizeof value);
    return stored;
}

/// The property's value; zero when the object is nil, or has none of that name and size.
template <typename T>
T property(RawObject object, const std::string& name) {
    T value{};
    if (!object) return value;
    const auto found = object->properties.find(name);
    if (found != object->properties.end() && found->second.value.bytes.size() == sizeof value) {
        std::memcpy(&value, found->second.value.bytes.data(), sizeof value);
    }
    return value;
}

template <typename T>
void setProperty(RawObject object, const std::string& name, const T& value) {
    runtime().setProperty(object, name, valueOf(value));
}

}  // namespace morvel::mac::checked
