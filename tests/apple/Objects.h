// The checked runtime's objects, classes and selectors: what the bridge's opaque pointers point at in tests.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Platform/Mac/objc/Id.h"
#include "Platform/Mac/objc/Runtime.h"

namespace morvel::mac::checked {

/// A stored argument or result: its bytes, and the encoding they were sent with. Owns what an object value points at
/// only where the holder says so.
struct Value {
    std::string encoding;
    std::vector<unsigned char> bytes;
    friend bool operator==(const Value&, const Value&) = default;
};

/// What an object of a class with real behaviour holds: a string's text, an array's elements.
struct Payload {
    virtual ~Payload() = default;
};
template <typename T>
struct PayloadOf : Payload {
    explicit PayloadOf(T initial) : value(std::move(initial)) {}
    T value;
};

/// A property of an object; `owned` is kept with it, whether object or block.
struct Property {
    Value value;
    bool isOwned = false;
};

struct OwnMethod {
    objc::Imp implementation;
    std::string types;
    objc::Invoker invoker;
};

}  // namespace morvel::mac::checked

namespace morvel::mac::objc {

inline constexpr std::size_t kIvarCount = 4;

struct ObjectRecord {
    ClassRecord* isa = nullptr;  // null for class objects
    void* ivars[kIvarCount] = {};
    long references = 1;
    bool isDead = false;      // kept to the end of the test, so that a late message is recognised
    bool isImmortal = false;  // constants of the system
    bool isDeallocating = false;
    std::map<std::string, checked::Property> properties;
    std::map<const void*, Id> associated;
    std::unique_ptr<checked::Payload> payload;
};

struct ClassRecord : ObjectRecord {
    std::string name;
    ClassRecord* superclass = nullptr;
    std::vector<std::string> protocols;
    std::map<std::string, checked::OwnMethod> methods;  // of classes that our code registered
    std::map<std::string, std::size_t> ivarIndex;
    bool isOurs = false;
};

struct SelectorRecord {
    std::string name;
};
struct ProtocolRecord {
    std::string name;
};
struct IvarRecord {
    std::ptrdiff_t offset;
};

}  // namespace morvel::mac::objc

namespace morvel::mac::checked {

using objc::ClassRecord;
using objc::Id;
using objc::ObjectRecord;
using objc::RawClass;
using objc::RawObject;
using objc::RawSelector;

/// An object for the length of a call, by its pointer or by what holds it.
class Borrowed {
public:
    Borrowed(RawObject object) : object_(object) {}
    Borrowed(const Id& object) : object_(object.raw()) {}
    operator RawObject() const { return object_; }
    RawObject operator->() const { return object_; }

private:
    RawObject object_;
};

/// The object's payload if it is a T; null for nil and for any other.
template <typename T>
T* payloadOf(Borrowed object) {
    auto* const held = object ? dynamic_cast<PayloadOf<T>*>(object->payload.get()) : nullptr;
    return held ? &held->value : nullptr;
}
template <typename T>
void setPayload(Borrowed object, T value) {
    object->payload = std::make_unique<PayloadOf<T>>(std::move(value));
}

/// What the object holds; empty when it holds nothing of the kind.
template <typename T>
const T& held(Borrowed object) {
    static const T kNone{};
    const T* const found = payloadOf<T>(object);
    return found ? *found : kNone;
}
/// What the object holds, to be changed: made when it holds nothing of the kind.
template <typename T>
T& ensured(Borrowed object) {
    if (!payloadOf<T>(object)) setPayload(object, T{});
    return *payloadOf<T>(object);
}

inline bool isClassObject(RawObject object) {
    return object && !object->isa;
}
inline ClassRecord* classOf(RawObject object) {
    return isClassObject(object) ? static_cast<ClassRecord*>(object) : object->isa;
}
bool inherits(const ClassRecord* cls, const std::string& ancestor);

}  // namespace morvel::mac::checked
