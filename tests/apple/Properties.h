// Typed reads and writes of the properties that the runtime keeps for its objects.
#pragma once

#include <cstring>
#include <string>

#include "Platform/Mac/objc/Native.h"
#include "SystemObjects.h"

namespace morvel::mac::checked {

template <typename T>
Value valueOf(const T& value) {
    const objc::NativeType<T> native = objc::Native<T>::toNative(value);
    Value stored{std::string(objc::Encode<T>::value.view()), std::vector<unsigned char>(sizeof native)};
    std::memcpy(stored.bytes.data(), &native, sizeof native);
    return stored;
}

/// The property's value; zero when the object is nil, or has none of that name and size.
template <typename T>
T property(Borrowed object, const std::string& name) {
    objc::NativeType<T> value{};
    if (object) {
        const auto found = object->properties.find(name);
        if (found != object->properties.end() && found->second.value.bytes.size() == sizeof value)
            std::memcpy(&value, found->second.value.bytes.data(), sizeof value);
    }
    return objc::Native<T>::fromNative(value);
}
inline std::string textProperty(Borrowed object, const std::string& name) {
    return textOf(property<RawObject>(object, name));
}

template <typename T>
void setProperty(Borrowed object, const std::string& name, const T& value) {
    runtime().setProperty(object, name, valueOf(value));
}

/// The elements of an array that is kept under the name, to be changed in place.
inline Elements& list(Borrowed object, const std::string& name) {
    if (!property<RawObject>(object, name)) setProperty(object, name, makeArray({}));
    return *payloadOf<Elements>(property<RawObject>(object, name));
}

}  // namespace morvel::mac::checked
