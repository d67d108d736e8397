// The C functions of the Objective-C runtime that the bridge calls.
#include "Platform/Mac/objc/Runtime.h"

#include "Runtime.h"

namespace morvel::mac::objc {

using checked::runtime;

extern "C" {
RawClass objc_getClass(const char* name) {
    return runtime().classNamed(name);
}
RawProtocol objc_getProtocol(const char* name) {
    if (!runtime().facts().hasProtocol(name)) {
        runtime().faults().add(checked::FaultKind::UnknownClass, std::string("there is no protocol ") + name);
        return nullptr;
    }
    static std::map<std::string, ProtocolRecord> known;
    return &known.try_emplace(name, ProtocolRecord{name}).first->second;
}
RawSelector sel_registerName(const char* name) {
    return runtime().selectorNamed(name);
}
const char* sel_getName(RawSelector selector) {
    return selector ? selector->name.c_str() : "<null selector>";
}
RawClass objc_allocateClassPair(RawClass superclass, const char* name, std::size_t) {
    return runtime().allocatePair(superclass, name);
}
void objc_registerClassPair(RawClass) {}

NativeBool class_addIvar(RawClass cls, const char* name, std::size_t size, std::uint8_t, const char*) {
    if (!cls || size != sizeof(void*) || cls->ivarIndex.size() >= kIvarCount) {
        runtime().faults().add(checked::FaultKind::BadCall, std::string("no room for the instance variable ") + name);
        return false;
    }
    const std::size_t index = cls->ivarIndex.size();
    return cls->ivarIndex.try_emplace(cls->name + "." + name, index).second;
}
NativeBool class_addProtocol(RawClass cls, RawProtocol protocol) {
    cls->protocols.push_back(protocol->name);
    return true;
}
IvarRecord* class_getInstanceVariable(RawClass cls, const char* name) {
    static std::map<std::size_t, IvarRecord> offsets;
    const auto found = cls->ivarIndex.find(cls->name + "." + name);
    if (found == cls->ivarIndex.end()) return nullptr;
    // The variables follow the class pointer at the head of an object.
    const auto offset = static_cast<std::ptrdiff_t>(sizeof(void*) * (1 + found->second));
    return &offsets.try_emplace(found->second, IvarRecord{offset}).first->second;
}
std::ptrdiff_t ivar_getOffset(IvarRecord* ivar) {
    return ivar ? ivar->offset : 0;
}

RawObject objc_retain(RawObject object) {
    runtime().retain(object);
    return object;
}
void objc_release(RawObject object) {
    runtime().release(object);
}
RawObject objc_autorelease(RawObject object) {
    return runtime().autorelease(object);
}
void* objc_autoreleasePoolPush() {
    return runtime().pushPool();
}
void objc_autoreleasePoolPop(void* pool) {
    runtime().popPool(pool);
}
void objc_setAssociatedObject(RawObject object, const void* key, RawObject value, std::uintptr_t) {
    object->associated[key] = Id(value);
}
RawObject objc_getAssociatedObject(RawObject object, const void* key) {
    const auto found = object->associated.find(key);
    return found == object->associated.end() ? nullptr : found->second.raw();
}
}

void checkedSend(RawObject receiver, RawClass superOf, RawSelector selector, const MessageTypes& types,
                 void** arguments, void* result) {
    runtime().send(receiver, superOf, selector, types, arguments, result);
}

bool checkedAddMethod(RawClass cls, RawSelector name, Imp implementation, const char* types, MethodOrigin origin,
                      Invoker invoker) {
    return cls && runtime().addMethod(cls, name->name, {implementation, types, invoker}, origin);
}

}  // namespace morvel::mac::objc
