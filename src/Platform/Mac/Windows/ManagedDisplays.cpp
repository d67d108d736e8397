// Reads the server's dictionaries, in which every entry is optional.
#include "Platform/Mac/Windows/ManagedDisplays.h"

namespace morvel::mac {

namespace {

/// The names of the server's entries. Made once per answer.
struct Keys {
    CFRef<CFStringRef> identifier = cfString("Display Identifier");
    CFRef<CFStringRef> spaces = cfString("Spaces");
    CFRef<CFStringRef> current = cfString("Current Space");
    CFRef<CFStringRef> type = cfString("type");
    CFRef<CFStringRef> id64 = cfString("id64");
    CFRef<CFStringRef> managedSpaceID = cfString("ManagedSpaceID");
};

std::optional<SpaceID> spaceIDFrom(CFTypeRef number) {
    const auto value = integerFrom(number);
    if (!value || *value < 0) return std::nullopt;
    return SpaceID(static_cast<std::uint64_t>(*value));
}

std::optional<ManagedSpace> spaceFrom(CFTypeRef value, const Keys& keys) {
    const auto space = cfCast<CFDictionaryRef>(value);
    if (!space) return std::nullopt;
    return ManagedSpace{.type = integerFrom(valueIn(space, keys.type.get())),
                        .id64 = spaceIDFrom(valueIn(space, keys.id64.get())),
                        .managedSpaceID = spaceIDFrom(valueIn(space, keys.managedSpaceID.get()))};
}

ManagedDisplay displayFrom(CFDictionaryRef display, const Keys& keys) {
    ManagedDisplay described{.identifier = stringFrom(valueIn(display, keys.identifier.get())),
                             .spaces = {},
                             .current = spaceFrom(valueIn(display, keys.current.get()), keys)};
    for (const CFTypeRef space : elementsOf(valueIn(display, keys.spaces.get()))) {
        if (auto known = spaceFrom(space, keys)) described.spaces.push_back(std::move(*known));
    }
    return described;
}

/// `values` are of the type that `type` names.
template <typename Value>
CFRef<CFArrayRef> arrayOf(const std::vector<Value>& values, CFNumberType type) {
    std::vector<CFRef<CFNumberRef>> numbers;
    std::vector<const void*> raw;
    for (const Value& value : values) {
        numbers.push_back(CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, type, &value)));
        raw.push_back(numbers.back().get());
    }
    return CFRef<CFArrayRef>::adopt(
        CFArrayCreate(nullptr, raw.data(), static_cast<CFIndex>(raw.size()), &kCFTypeArrayCallBacks));
}

}  // namespace

std::vector<ManagedDisplay> managedDisplaysFrom(CFArrayRef displays) {
    const Keys keys;
    std::vector<ManagedDisplay> found;
    for (const CFTypeRef element : elementsOf(displays)) {
        if (const auto display = cfCast<CFDictionaryRef>(element)) found.push_back(displayFrom(display, keys));
    }
    return found;
}

std::vector<SpaceID> spaceIDsFrom(CFArrayRef numbers) {
    std::vector<SpaceID> found;
    for (const CFTypeRef number : elementsOf(numbers)) {
        if (const auto space = spaceIDFrom(number)) found.push_back(*space);
    }
    return found;
}

CFRef<CFArrayRef> makeWindowIDArray(const std::vector<WindowNumber>& windows) {
    std::vector<std::uint32_t> values;
    for (const WindowNumber window : windows) values.push_back(window.value);
    return arrayOf(values, kCFNumberSInt32Type);
}

CFRef<CFArrayRef> makeSpaceIDArray(const std::vector<SpaceID>& spaces) {
    std::vector<std::uint64_t> values;
    for (const SpaceID space : spaces) values.push_back(space.value);
    return arrayOf(values, kCFNumberSInt64Type);
}

}  // namespace morvel::mac
