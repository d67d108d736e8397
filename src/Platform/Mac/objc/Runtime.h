// The C functions of the Objective-C runtime that the bridge stands on. Everything above uses Send.h, Subclass.h,
// Block.h and Id.h and never these.
//
// On Apple systems the functions are the system's. Elsewhere a program that links the macOS host must supply them; the
// checked runtime of the tests does, and there messages travel through `checkedSend` with their types beside them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace morvel::mac::objc {

struct ObjectRecord;
struct ClassRecord;
struct SelectorRecord;
struct ProtocolRecord;
struct IvarRecord;
struct MethodRecord;

using RawObject = ObjectRecord*;  // no ownership; null is nil
using RawClass = ClassRecord*;
using RawSelector = SelectorRecord*;
using RawProtocol = ProtocolRecord*;
using Imp = void (*)();

/// What the runtime's BOOL is on this machine.
#if defined(__APPLE__) && defined(__x86_64__)
using NativeBool = signed char;
#else
using NativeBool = bool;
#endif

extern "C" {
RawClass objc_getClass(const char* name);
RawProtocol objc_getProtocol(const char* name);
RawSelector sel_registerName(const char* name);
const char* sel_getName(RawSelector selector);
const char* class_getName(RawClass cls);
RawClass class_getSuperclass(RawClass cls);
RawClass object_getClass(RawObject object);
RawClass objc_allocateClassPair(RawClass superclass, const char* name, std::size_t extraBytes);
void objc_registerClassPair(RawClass cls);
NativeBool class_addIvar(RawClass cls, const char* name, std::size_t size, std::uint8_t alignment, const char* types);
NativeBool class_addMethod(RawClass cls, RawSelector name, Imp implementation, const char* types);
NativeBool class_addProtocol(RawClass cls, RawProtocol protocol);
IvarRecord* class_getInstanceVariable(RawClass cls, const char* name);
std::ptrdiff_t ivar_getOffset(IvarRecord* ivar);

RawObject objc_retain(RawObject object);
void objc_release(RawObject object);
RawObject objc_autorelease(RawObject object);
void* objc_autoreleasePoolPush();
void objc_autoreleasePoolPop(void* pool);
void objc_setAssociatedObject(RawObject object, const void* key, RawObject value, std::uintptr_t policy);
RawObject objc_getAssociatedObject(RawObject object, const void* key);

void* _Block_copy(const void* block);
void _Block_release(const void* block);
extern void* _NSConcreteStackBlock[32];
}

/// The encodings of one message's or method's result and arguments, without the receiver and the selector.
struct MessageTypes {
    const char* result;
    const char* const* arguments;
    std::size_t count;
};

/// Calls an implementation whose types the caller knows only as text: `arguments` and `result` point at values of the
/// native types. Made where the types are known, for runtimes that have no assembly to forward registers.
using Invoker = void (*)(Imp implementation, RawObject self, RawSelector command, void** arguments, void* result);

/// Whether a method of ours answers a message that its superclass or a protocol declares, or one of our own making.
enum class MethodOrigin { Declared, Added };

#if defined(__APPLE__)
extern "C" {
void objc_msgSend();
void objc_msgSendSuper();
#if defined(__x86_64__)
void objc_msgSend_stret();
void objc_msgSendSuper_stret();
#endif
}
#else
/// A message written in a wrapper, known without being sent: so that every wrapper is checked, called or not.
struct WrittenMessage {
    const char* className;
    bool toClass;
    const char* selector;
    MessageTypes types;
};

/// `superOf` is null, or the class whose superclass the search for the implementation starts at.
void checkedSend(RawObject receiver, RawClass superOf, RawSelector selector, const MessageTypes& types,
                 void** arguments, void* result);
bool checkedAddMethod(RawClass cls, RawSelector name, Imp implementation, const char* types, MethodOrigin origin,
                      Invoker invoker);
bool checkedNoteMessage(const WrittenMessage& message);
#endif

}  // namespace morvel::mac::objc
