// Type-checked reads of Core Foundation values.
#include "Platform/Mac/apple/CFRef.h"

namespace morvel::mac {

CFRef<CFStringRef> cfString(std::string_view utf8) {
    constexpr Boolean kNoByteOrderMark = 0;
    return CFRef<CFStringRef>::adopt(
        CFStringCreateWithBytes(nullptr, reinterpret_cast<const unsigned char*>(utf8.data()),
                                static_cast<CFIndex>(utf8.size()), kCFStringEncodingUTF8, kNoByteOrderMark));
}

std::optional<std::string> stringFrom(CFTypeRef value) {
    const auto string = cfCast<CFStringRef>(value);
    if (!string) return std::nullopt;
    // The maximum counts no terminator.
    std::string text(
        static_cast<std::size_t>(CFStringGetMaximumSizeForEncoding(CFStringGetLength(string), kCFStringEncodingUTF8)) +
            1,
        '\0');
    if (!CFStringGetCString(string, text.data(), static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8)) {
        return std::nullopt;  // lone surrogates have no UTF-8 form
    }
    text.resize(text.find('\0'));
    return text;
}

std::optional<bool> boolFrom(CFTypeRef value) {
    const auto boolean = cfCast<CFBooleanRef>(value);
    if (!boolean) return std::nullopt;
    return CFBooleanGetValue(boolean) != 0;
}

std::optional<std::int64_t> integerFrom(CFTypeRef value) {
    const auto number = cfCast<CFNumberRef>(value);
    std::int64_t read = 0;
    if (!number || !CFNumberGetValue(number, kCFNumberSInt64Type, &read)) return std::nullopt;
    return read;
}

std::optional<double> doubleFrom(CFTypeRef value) {
    const auto number = cfCast<CFNumberRef>(value);
    double read = 0;
    if (!number || !CFNumberGetValue(number, kCFNumberFloat64Type, &read)) return std::nullopt;
    return read;
}

std::vector<CFTypeRef> elementsOf(CFTypeRef value) {
    std::vector<CFTypeRef> elements;
    if (const auto array = cfCast<CFArrayRef>(value)) {
        const CFIndex count = CFArrayGetCount(array);
        for (CFIndex i = 0; i < count; ++i) elements.push_back(CFArrayGetValueAtIndex(array, i));
    }
    return elements;
}

CFTypeRef valueIn(CFTypeRef value, CFStringRef key) {
    const auto dictionary = cfCast<CFDictionaryRef>(value);
    return dictionary ? CFDictionaryGetValue(dictionary, key) : nullptr;
}

}  // namespace morvel::mac
