// Core Graphics' functions and the window server's private ones over the scripted world.
#include "WindowServerWorld.h"

#include "AccessibilityWorld.h"
#include "CoreFoundation.h"
#include "Platform/Mac/apple/CFRef.h"
#include "Platform/Mac/apple/CoreGraphics.h"

namespace morvel::mac::checked {

namespace {

std::vector<std::uint64_t> integersIn(CFArrayRef array) {
    std::vector<std::uint64_t> numbers;
    for (CFIndex i = 0; i < CFArrayGetCount(array); ++i) {
        std::int64_t number = 0;
        CFNumberGetValue(static_cast<CFNumberRef>(CFArrayGetValueAtIndex(array, i)), kCFNumberSInt64Type, &number);
        numbers.push_back(static_cast<std::uint64_t>(number));
    }
    return numbers;
}

std::set<std::uint64_t>& spacesOf(std::uint64_t window) {
    return windowServer().spacesOfWindow[static_cast<std::uint32_t>(window)];
}

/// Changes the Spaces of each window, unless the server refuses.
template <typename Change>
void move(CFArrayRef windows, Change change) {
    if (windowServer().refusesMoves) return;
    for (const auto window : integersIn(windows)) change(spacesOf(window));
}

AXError getWindow(AXUIElementRef element, std::uint32_t* number) {
    const auto* const identity = payloadOf<ElementIdentity>(objectOf(element));
    if (!identity) return kAXErrorIllegalArgument;
    if (const AXError error = accessibility().errorFor(*identity, "")) return error;
    *number = accessibility().state(*identity).windowNumber;
    return *number ? kAXErrorSuccess : kAXErrorFailure;
}

Id makeBounds(const CGRect& bounds) {
    return makeDictionary({{makeString("X"), makeNumber(bounds.origin.x)},
                           {makeString("Y"), makeNumber(bounds.origin.y)},
                           {makeString("Width"), makeNumber(bounds.size.width)},
                           {makeString("Height"), makeNumber(bounds.size.height)}});
}

template <typename F>
void* address(F* function) {
    return reinterpret_cast<void*>(function);
}

}  // namespace

WindowServerWorld& WindowServerWorld::process() {
    static WindowServerWorld instance;
    return instance;
}

const std::map<std::string, void*>& WindowServerWorld::functions() {
    constexpr std::int32_t kConnection = 77;
    // With the signatures that stated_functions.tsv gives them.
    static const std::map<std::string, void*> kFunctions = {
        {"CGSMainConnectionID", address(+[] { return kConnection; })},
        {"CGSGetActiveSpace", address(+[](std::int32_t) { return windowServer().activeSpace; })},
        {"CGSCopyManagedDisplaySpaces",
         address(+[](std::int32_t) { return static_cast<CFArrayRef>(handOver(windowServer().managedDisplaySpaces)); })},
        {"CGSCopySpacesForWindows", address(+[](std::int32_t, std::uint32_t, CFArrayRef windows) {
             Elements spaces;
             for (const auto window : integersIn(windows))
                 for (const auto space : spacesOf(window))
                     spaces.push_back(makeNumber(static_cast<std::int64_t>(space)));
             return static_cast<CFArrayRef>(handOver(makeArray(std::move(spaces))));
         })},
        {"CGSAddWindowsToSpaces", address(+[](std::int32_t, CFArrayRef windows, CFArrayRef spaces) {
             move(windows, [&](auto& known) {
                 for (const auto space : integersIn(spaces)) known.insert(space);
             });
         })},
        {"CGSRemoveWindowsFromSpaces", address(+[](std::int32_t, CFArrayRef windows, CFArrayRef spaces) {
             move(windows, [&](auto& known) {
                 for (const auto space : integersIn(spaces)) known.erase(space);
             });
         })},
        {"CGSMoveWindowsToManagedSpace", address(+[](std::int32_t, CFArrayRef windows, std::uint64_t space) {
             move(windows, [&](auto& known) { known = {space}; });
         })},
        {"SLSRegisterConnectionNotifyProc",
         address(+[](std::int32_t, WindowServerWorld::SpaceCallback callback, std::uint32_t event, void* context) {
             windowServer().registrations.push_back({event, callback, context});
             return std::int32_t{0};
         })},
        {"_AXUIElementGetWindow", address(&getWindow)},
    };
    return kFunctions;
}

void* WindowServerWorld::function(const std::string& name) const {
    const auto found = functions().find(name);
    return found == functions().end() || hidden_.contains(name) ? nullptr : found->second;
}

void WindowServerWorld::spaceChanged(std::uint32_t event) {
    for (const Registration& registration : std::vector<Registration>(registrations)) {
        if (registration.event == event) registration.callback(event, nullptr, 0, registration.context);
    }
}

}  // namespace morvel::mac::checked

namespace morvel::mac {

using namespace checked;

void* checkedSystemFunction(const char* name) {
    if (!runtime().facts().function(name)) {
        runtime().faults().add(FaultKind::UnknownFunction, std::string("there is no function ") + name);
    }
    return windowServer().function(name);
}

extern "C" {
CGDirectDisplayID CGMainDisplayID() {
    return windowServer().mainDisplay;
}
CFUUIDRef CGDisplayCreateUUIDFromDisplayID(CGDirectDisplayID display) {
    const auto& known = windowServer().displayUUIDs;
    const auto found = known.find(display);
    if (found == known.end()) return nullptr;
    return static_cast<CFUUIDRef>(handOver(runtime().make("__CFUUID", std::string(found->second))));
}
CGWindowLevel CGWindowLevelForKey(CGWindowLevelKey key) {
    constexpr CGWindowLevel kStatusWindowLevel = 25;
    return key == kCGStatusWindowLevelKey ? kStatusWindowLevel : 0;
}
bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef dictionary, CGRect* rectangle) {
    const auto length = [&](const char* key, double& value) {
        const auto read = doubleFrom(valueIn(dictionary, cfString(key).get()));
        if (read) value = *read;
        return read.has_value();
    };
    return length("X", rectangle->origin.x) && length("Y", rectangle->origin.y) &&
           length("Width", rectangle->size.width) && length("Height", rectangle->size.height);
}
CFArrayRef CGWindowListCopyWindowInfo(CGWindowListOption options, CGWindowID relativeTo) {
    const auto key = [](CFStringRef name) { return Id(objectOf(name)); };
    windowServer().lastListOptions = options;
    Elements found;
    for (const auto& window : windowServer().windows) {
        if ((options & kCGWindowListOptionIncludingWindow) && window.number != relativeTo) continue;
        found.push_back(makeDictionary({{key(kCGWindowNumber), makeNumber(std::int64_t{window.number})},
                                        {key(kCGWindowLayer), makeNumber(std::int64_t{window.layer})},
                                        {key(kCGWindowOwnerPID), makeNumber(std::int64_t{window.pid})},
                                        {key(kCGWindowBounds), makeBounds(window.bounds)},
                                        {key(kCGWindowOwnerName), makeString(window.ownerName)},
                                        {key(kCGWindowName), makeString(window.name)}}));
    }
    if (windowServer().listedBesides) found.push_back(windowServer().listedBesides);
    return static_cast<CFArrayRef>(handOver(makeArray(std::move(found))));
}
}

}  // namespace morvel::mac
