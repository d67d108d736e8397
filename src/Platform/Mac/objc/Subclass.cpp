// The part of building classes that does not depend on the C++ type: the pair, its slot for the owned object, methods.
#include "Platform/Mac/objc/Subclass.h"

#include "Platform/Mac/objc/TypeCheck.h"

namespace morvel::mac::objc::detail {

namespace {
constexpr const char* kSlotName = "morvelObject";
}

RawClass beginClass(const char* name, const char* superclass) {
    const RawClass cls = objc_allocateClassPair(objc_getClass(superclass), name, 0);
    constexpr std::uint8_t kPointerAlignment = 3;  // as a power of two
    class_addIvar(cls, kSlotName, sizeof(void*), kPointerAlignment, "^v");
    return cls;
}

bool addMethod(RawClass cls, RawSelector name, Imp implementation, const char* types, MethodOrigin origin,
               [[maybe_unused]] Invoker invoker) {
#if defined(__APPLE__)
    if (origin == MethodOrigin::Declared) verifyOverride(cls, name, types);
    return class_addMethod(cls, name, implementation, types) != 0;
#else
    return checkedAddMethod(cls, name, implementation, types, origin, invoker);
#endif
}

void adopt(RawClass cls, const char* protocol) {
    // A protocol that no loaded image mentions does not exist at run time; AppKit then asks respondsToSelector: only.
    if (const RawProtocol found = objc_getProtocol(protocol)) class_addProtocol(cls, found);
}

std::ptrdiff_t ownedSlotOffset(RawClass cls) {
    return ivar_getOffset(class_getInstanceVariable(cls, kSlotName));
}

void** ownedSlot(RawObject self, std::ptrdiff_t offset) {
    return reinterpret_cast<void**>(reinterpret_cast<char*>(self) + offset);
}

}  // namespace morvel::mac::objc::detail
