// Stored values as the system's property-list objects, and back.
#pragma once

#include <optional>

#include "Platform/Mac/objc/Id.h"
#include "Platform/UserDefaults.h"

namespace morvel::mac {

/// Keeps whether a number is a truth value, whole or floating-point. Elements of a collection that have no object (text
/// that is not UTF-8) are left out; such a value by itself gives an empty reference.
objc::Id objectFrom(const DefaultsValue& value);

/// Nothing for nil and for objects that property lists do not have; collections leave such elements out, and
/// dictionaries also what is not under a string.
std::optional<DefaultsValue> defaultsValueFrom(const objc::Id& object);

}  // namespace morvel::mac
