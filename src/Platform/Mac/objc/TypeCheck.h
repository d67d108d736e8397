// In debug builds on a Mac: compares the types of every message and override with what the running system says they
// are. The tests' runtime does the same from the published API; this finds what differs between systems.
#pragma once

#include <string>
#include <string_view>

#include "Platform/Mac/objc/Runtime.h"

namespace morvel::mac::objc {

#if defined(__APPLE__) && !defined(NDEBUG)
/// Logs a fault, once per class and selector, when the receiver's method has other types. `superOf` is null, or the
/// class whose superclass the message is meant for.
void verifyMessage(RawObject receiver, RawClass superOf, RawSelector selector, const MessageTypes& types);
/// Logs a fault when what `cls` inherits or adopts as `name` has other types. Nothing is said of a name that is found
/// nowhere: a protocol that no loaded image mentions is unknown at run time.
void verifyOverride(RawClass cls, RawSelector name, const char* types);
#else
inline void verifyMessage(RawObject, RawClass, RawSelector, const MessageTypes&) {}
inline void verifyOverride(RawClass, RawSelector, const char*) {}
#endif

/// An encoding without the offsets, qualifiers and quoted names that a running system adds: "v24@0:8@16" and "v@:@"
/// become equal. Digits that belong to a type, as in an array or a tag, stay.
std::string plainEncoding(std::string_view recorded);

}  // namespace morvel::mac::objc
