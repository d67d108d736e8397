// Core Foundation: the types and functions the host uses, and nothing that Foundation's wrappers do as well.
// Declared by hand from the published interface; the tests compare every line with it.
#pragma once

#include <cstdint>

#include "Platform/Mac/objc/Encoding.h"

namespace morvel::mac {

struct CFStringTag;
struct CFNumberTag;
struct CFBooleanTag;
struct CFArrayTag;
struct CFDictionaryTag;
struct CFUUIDTag;
struct CFAllocatorTag;
struct CFRunLoopTag;
struct CFRunLoopSourceTag;

using CFTypeRef = const void*;
using CFStringRef = const CFStringTag*;
using CFNumberRef = const CFNumberTag*;
using CFBooleanRef = const CFBooleanTag*;
using CFArrayRef = const CFArrayTag*;
using CFDictionaryRef = const CFDictionaryTag*;
using CFUUIDRef = const CFUUIDTag*;
using CFAllocatorRef = const CFAllocatorTag*;
using CFRunLoopRef = CFRunLoopTag*;
using CFRunLoopSourceRef = CFRunLoopSourceTag*;
using CFTypeID = unsigned long;
using CFHashCode = unsigned long;
using CFIndex = long;
using Boolean = unsigned char;
using CFStringEncoding = std::uint32_t;
using CFNumberType = CFIndex;

inline constexpr CFStringEncoding kCFStringEncodingUTF8 = 134217984;
inline constexpr CFNumberType kCFNumberSInt32Type = 3;
inline constexpr CFNumberType kCFNumberSInt64Type = 4;
inline constexpr CFNumberType kCFNumberFloat64Type = 6;

/// What an array or dictionary does with its elements; only the ones that retain are used, by address.
struct CFArrayCallBacks {
    CFIndex version;
    void (*functions[4])();
};
struct CFDictionaryKeyCallBacks {
    CFIndex version;
    void (*functions[5])();
};
struct CFDictionaryValueCallBacks {
    CFIndex version;
    void (*functions[4])();
};

extern "C" {
CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);
Boolean CFEqual(CFTypeRef left, CFTypeRef right);
CFHashCode CFHash(CFTypeRef object);

CFTypeID CFStringGetTypeID();
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const unsigned char* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean hasByteOrderMark);
CFIndex CFStringGetLength(CFStringRef string);
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size, CFStringEncoding encoding);

CFTypeID CFNumberGetTypeID();
CFNumberRef CFNumberCreate(CFAllocatorRef allocator, CFNumberType type, const void* value);
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);
Boolean CFNumberIsFloatType(CFNumberRef number);
CFTypeID CFBooleanGetTypeID();
Boolean CFBooleanGetValue(CFBooleanRef boolean);

CFTypeID CFArrayGetTypeID();
CFArrayRef CFArrayCreate(CFAllocatorRef allocator, const void** values, CFIndex count,
                         const CFArrayCallBacks* callBacks);
CFIndex CFArrayGetCount(CFArrayRef array);
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);

CFTypeID CFDictionaryGetTypeID();
CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys, const void** values, CFIndex count,
                                   const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks);
const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key);

CFStringRef CFUUIDCreateString(CFAllocatorRef allocator, CFUUIDRef uuid);

CFRunLoopRef CFRunLoopGetCurrent();
void CFRunLoopAddSource(CFRunLoopRef loop, CFRunLoopSourceRef source, CFStringRef mode);
void CFRunLoopRemoveSource(CFRunLoopRef loop, CFRunLoopSourceRef source, CFStringRef mode);

extern const CFBooleanRef kCFBooleanTrue;
extern const CFBooleanRef kCFBooleanFalse;
extern const CFStringRef kCFRunLoopDefaultMode;
extern const CFArrayCallBacks kCFTypeArrayCallBacks;
extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;
}

}  // namespace morvel::mac

namespace morvel::mac::objc {

template <>
struct Encode<CFStringTag> {
    static constexpr FixedString value{"{__CFString=}"};
};
template <>
struct Encode<CFNumberTag> {
    static constexpr FixedString value{"{__CFNumber=}"};
};
template <>
struct Encode<CFBooleanTag> {
    static constexpr FixedString value{"{__CFBoolean=}"};
};
template <>
struct Encode<CFArrayTag> {
    static constexpr FixedString value{"{__CFArray=}"};
};
template <>
struct Encode<CFDictionaryTag> {
    static constexpr FixedString value{"{__CFDictionary=}"};
};
template <>
struct Encode<CFUUIDTag> {
    static constexpr FixedString value{"{__CFUUID=}"};
};
template <>
struct Encode<CFAllocatorTag> {
    static constexpr FixedString value{"{__CFAllocator=}"};
};
template <>
struct Encode<CFRunLoopTag> {
    static constexpr FixedString value{"{__CFRunLoop=}"};
};
template <>
struct Encode<CFRunLoopSourceTag> {
    static constexpr FixedString value{"{__CFRunLoopSource=}"};
};
template <>
struct Encode<CFArrayCallBacks> {
    static constexpr FixedString value{"{?=q^?^?^?^?}"};
};
template <>
struct Encode<CFDictionaryKeyCallBacks> {
    static constexpr FixedString value{"{?=q^?^?^?^?^?}"};
};
template <>
struct Encode<CFDictionaryValueCallBacks> {
    static constexpr FixedString value{"{?=q^?^?^?^?}"};
};

}  // namespace morvel::mac::objc
