// Core Foundation over the same objects as Foundation, as the system bridges them. A function that is given null or a
// value of another type crashes on a Mac; here that is a fault.
#include "Platform/Mac/apple/CF.h"

#include <optional>

#include "CoreFoundation.h"
#include "SystemObjects.h"

namespace morvel::mac::checked {

namespace {

enum TypeID : CFTypeID {
    kUnknown = 1,
    kString = 7,
    kDictionary = 18,
    kArray = 19,
    kBoolean = 21,
    kNumber = 22,
    kUUID = 42,
    kRunLoop = 54,
    kRunLoopSource = 55,
    kElement = 300,
    kObserver = 301,
    kAXValue = 302,
};

TypeID typeOf(RawObject object) {
    if (const auto* const number = payloadOf<Number>(object)) {
        return std::holds_alternative<bool>(*number) ? kBoolean : kNumber;
    }
    static const std::map<std::string, TypeID> kByClass = {
        {"NSString", kString},     {"NSDictionary", kDictionary}, {"NSArray", kArray},
        {"__CFUUID", kUUID},       {"__AXUIElement", kElement},   {"__CFRunLoopSource", kRunLoopSource},
        {"__CFRunLoop", kRunLoop}, {"__AXObserver", kObserver},   {"__AXValue", kAXValue},
    };
    const auto found = kByClass.find(classOf(object)->name);
    return found == kByClass.end() ? kUnknown : found->second;
}

/// The object behind a reference; null, with a fault, when it is none that lives.
RawObject living(CFTypeRef reference, const char* function) {
    const RawObject object = objectOf(reference);
    if (object && runtime().isObject(object) && !object->isDead) return object;
    const bool wasAlive = object && runtime().isObject(object);
    runtime().faults().add(
        wasAlive ? FaultKind::OverRelease : FaultKind::BadCall,
        std::string(function) + (wasAlive ? " was given a destroyed object" : " was given no object"));
    return nullptr;
}

template <typename T>
T* typed(CFTypeRef reference, TypeID wanted, const char* function) {
    const RawObject object = living(reference, function);
    if (!object) return nullptr;
    if (typeOf(object) == wanted) return payloadOf<T>(object);
    runtime().faults().add(FaultKind::BadCall, std::string(function) + " was given a " + classOf(object)->name);
    return nullptr;
}

template <typename T>
bool holdEqual(Borrowed left, Borrowed right) {
    const T* const a = payloadOf<T>(left);
    const T* const b = payloadOf<T>(right);
    return a && b && *a == *b;
}

template <typename T>
bool store(const Number& number, void* result) {
    const auto stored = std::visit([](auto value) { return static_cast<T>(value); }, number);
    std::memcpy(result, &stored, sizeof stored);
    return std::visit([&](auto value) { return static_cast<double>(stored) == static_cast<double>(value); }, number);
}

CFStringRef constantString(const char* text) {
    return static_cast<CFStringRef>(referenceTo(runtime().makeImmortal(makeString(text))));
}
CFBooleanRef constantBoolean(bool value) {
    return static_cast<CFBooleanRef>(referenceTo(runtime().makeImmortal(makeNumber(value))));
}

}  // namespace

RawObject objectOf(CFTypeRef reference) {
    return static_cast<RawObject>(const_cast<void*>(reference));
}

bool areEqual(Borrowed left, Borrowed right) {
    return RawObject(left) == RawObject(right) || holdEqual<std::string>(left, right) ||
           holdEqual<Number>(left, right) || holdEqual<ElementIdentity>(left, right);
}

}  // namespace morvel::mac::checked

namespace morvel::mac {

using namespace checked;

extern "C" {
extern const CFBooleanRef kCFBooleanTrue = constantBoolean(true);
extern const CFBooleanRef kCFBooleanFalse = constantBoolean(false);
extern const CFStringRef kCFRunLoopDefaultMode = constantString("kCFRunLoopDefaultMode");
extern const CFStringRef kAXTrustedCheckOptionPrompt = constantString("AXTrustedCheckOptionPrompt");
extern const CFStringRef kCGWindowNumber = constantString("kCGWindowNumber");
extern const CFStringRef kCGWindowLayer = constantString("kCGWindowLayer");
extern const CFStringRef kCGWindowBounds = constantString("kCGWindowBounds");
extern const CFStringRef kCGWindowName = constantString("kCGWindowName");
extern const CFStringRef kCGWindowOwnerName = constantString("kCGWindowOwnerName");
extern const CFStringRef kCGWindowOwnerPID = constantString("kCGWindowOwnerPID");
extern const CFArrayCallBacks kCFTypeArrayCallBacks{};
extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks{};
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks{};

CFTypeRef CFRetain(CFTypeRef object) {
    if (living(object, "CFRetain")) runtime().retain(objectOf(object));
    return object;
}
void CFRelease(CFTypeRef object) {
    if (living(object, "CFRelease")) runtime().release(objectOf(object));
}
CFTypeID CFGetTypeID(CFTypeRef object) {
    const RawObject found = living(object, "CFGetTypeID");
    return found ? typeOf(found) : kUnknown;
}
Boolean CFEqual(CFTypeRef left, CFTypeRef right) {
    return areEqual(living(left, "CFEqual"), living(right, "CFEqual"));
}
CFHashCode CFHash(CFTypeRef object) {
    const RawObject found = living(object, "CFHash");
    if (const auto* const text = payloadOf<std::string>(found)) return std::hash<std::string>{}(*text);
    if (const auto* const element = payloadOf<ElementIdentity>(found)) return element->serial;
    return reinterpret_cast<CFHashCode>(found);
}

CFTypeID CFStringGetTypeID() {
    return kString;
}
CFTypeID CFNumberGetTypeID() {
    return kNumber;
}
CFTypeID CFBooleanGetTypeID() {
    return kBoolean;
}
CFTypeID CFArrayGetTypeID() {
    return kArray;
}
CFTypeID CFDictionaryGetTypeID() {
    return kDictionary;
}
CFTypeID AXUIElementGetTypeID() {
    return kElement;
}
CFTypeID AXValueGetTypeID() {
    return kAXValue;
}

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const unsigned char* bytes, CFIndex count, CFStringEncoding,
                                    Boolean) {
    const std::string_view text(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count));
    return static_cast<CFStringRef>(handOver(makeString(text)));
}
CFIndex CFStringGetLength(CFStringRef string) {
    const auto* const text = typed<std::string>(string, kString, "CFStringGetLength");
    return text ? static_cast<CFIndex>(text->size()) : 0;
}
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding) {
    return length * 3;
}
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size, CFStringEncoding) {
    const auto* const text = typed<std::string>(string, kString, "CFStringGetCString");
    if (!text || text->size() >= static_cast<std::size_t>(size)) return false;
    std::memcpy(buffer, text->c_str(), text->size() + 1);
    return true;
}

CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType type, const void* value) {
    Number number = 0.0;
    if (type == kCFNumberSInt32Type)
        number = std::int64_t{*static_cast<const std::int32_t*>(value)};
    else if (type == kCFNumberSInt64Type)
        number = *static_cast<const std::int64_t*>(value);
    else
        number = *static_cast<const double*>(value);
    return static_cast<CFNumberRef>(handOver(makeNumber(number)));
}
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
    const auto* const found = typed<Number>(number, kNumber, "CFNumberGetValue");
    if (!found) return false;
    if (type == kCFNumberSInt64Type) return store<std::int64_t>(*found, value);
    return store<double>(*found, value);
}
Boolean CFNumberIsFloatType(CFNumberRef number) {
    const auto* const found = typed<Number>(number, kNumber, "CFNumberIsFloatType");
    return found && std::holds_alternative<double>(*found);
}
Boolean CFBooleanGetValue(CFBooleanRef boolean) {
    const auto* const found = typed<Number>(boolean, kBoolean, "CFBooleanGetValue");
    return found && std::get<bool>(*found);
}

CFArrayRef CFArrayCreate(CFAllocatorRef, const void** values, CFIndex count, const CFArrayCallBacks* callBacks) {
    if (callBacks != &kCFTypeArrayCallBacks) {
        runtime().faults().add(FaultKind::BadCall, "an array that does not retain its elements");
    }
    Elements elements;
    for (CFIndex i = 0; i < count; ++i) elements.emplace_back(objectOf(values[i]));
    return static_cast<CFArrayRef>(handOver(makeArray(std::move(elements))));
}
CFIndex CFArrayGetCount(CFArrayRef array) {
    const auto* const elements = typed<Elements>(array, kArray, "CFArrayGetCount");
    return elements ? static_cast<CFIndex>(elements->size()) : 0;
}
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    const auto* const elements = typed<Elements>(array, kArray, "CFArrayGetValueAtIndex");
    if (elements && index >= 0 && index < static_cast<CFIndex>(elements->size())) {
        return (*elements)[static_cast<std::size_t>(index)].raw();
    }
    runtime().faults().add(FaultKind::BadCall, "CFArrayGetValueAtIndex is beyond the array's end");
    return nullptr;
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef, const void** keys, const void** values, CFIndex count,
                                   const CFDictionaryKeyCallBacks*, const CFDictionaryValueCallBacks*) {
    Entries entries;
    for (CFIndex i = 0; i < count; ++i) entries.emplace_back(Id(objectOf(keys[i])), Id(objectOf(values[i])));
    return static_cast<CFDictionaryRef>(handOver(makeDictionary(std::move(entries))));
}
const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
    const bool isOne = typed<Entries>(dictionary, kDictionary, "CFDictionaryGetValue");
    return isOne ? valueAt(objectOf(dictionary), objectOf(key)) : nullptr;
}

CFStringRef CFUUIDCreateString(CFAllocatorRef, CFUUIDRef uuid) {
    const auto* const text = typed<std::string>(uuid, kUUID, "CFUUIDCreateString");
    return static_cast<CFStringRef>(handOver(makeString(text ? *text : "")));
}

CFRunLoopRef CFRunLoopGetCurrent() {
    // There is one thread.
    static const RawObject main = runtime().makeImmortal(runtime().make("__CFRunLoop"));
    return reinterpret_cast<CFRunLoopRef>(main);
}
void CFRunLoopAddSource(CFRunLoopRef, CFRunLoopSourceRef source, CFStringRef mode) {
    auto* const state = typed<RunLoopSource>(source, kRunLoopSource, "CFRunLoopAddSource");
    if (!state || state->isScheduled || objectOf(mode) != objectOf(kCFRunLoopDefaultMode)) return;
    state->isScheduled = true;
    runtime().retain(objectOf(source));
}
void CFRunLoopRemoveSource(CFRunLoopRef, CFRunLoopSourceRef source, CFStringRef) {
    auto* const state = typed<RunLoopSource>(source, kRunLoopSource, "CFRunLoopRemoveSource");
    if (state && std::exchange(state->isScheduled, false)) runtime().release(objectOf(source));
}
}

}  // namespace morvel::mac
