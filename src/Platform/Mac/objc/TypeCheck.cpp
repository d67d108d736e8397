// Comparing our compile-time encodings with the running system's.
#include "Platform/Mac/objc/TypeCheck.h"

#include <cctype>
#include <cstdlib>
#include <set>
#include <string>
#include <utility>

#include "Platform/Mac/apple/SystemLog.h"

namespace morvel::mac::objc {

std::string plainEncoding(std::string_view recorded) {
    std::string plain;
    int depth = 0;
    bool quoted = false;
    for (const char c : recorded) {
        if (c == '"') quoted = !quoted;
        if (c == '"' || quoted) continue;
        if (c == '{' || c == '(' || c == '[') ++depth;
        if (c == '}' || c == ')' || c == ']') --depth;
        const bool isOffset = depth == 0 && std::isdigit(static_cast<unsigned char>(c));
        const bool isQualifier = depth == 0 && std::string_view("rnNoORVA").find(c) != std::string_view::npos;
        if (!isOffset && !isQualifier) plain += c;
    }
    return plain;
}

#if defined(__APPLE__) && !defined(NDEBUG)
struct MethodDescription {
    RawSelector name;
    const char* types;
};
extern "C" {
MethodRecord* class_getInstanceMethod(RawClass cls, RawSelector name);
const char* method_getTypeEncoding(MethodRecord* method);
RawProtocol* class_copyProtocolList(RawClass cls, unsigned int* count);
MethodDescription protocol_getMethodDescription(RawProtocol protocol, RawSelector name, NativeBool isRequired,
                                                NativeBool isInstance);
}

namespace {

/// The types under which one of the class's protocols declares the method; empty when none does.
std::string protocolEncoding(RawClass cls, RawSelector name) {
    unsigned int count = 0;
    RawProtocol* const protocols = class_copyProtocolList(cls, &count);
    std::string found;
    for (unsigned int i = 0; i < count && found.empty(); ++i) {
        for (const NativeBool isRequired : {NativeBool(1), NativeBool(0)}) {
            const auto description = protocol_getMethodDescription(protocols[i], name, isRequired, 1);
            if (description.types) found = description.types;
        }
    }
    std::free(protocols);
    return found;
}

void compare(RawSelector selector, std::string_view oursRecorded, std::string_view systemsRecorded) {
    const std::string ours = plainEncoding(oursRecorded);
    const std::string systems = plainEncoding(systemsRecorded);
    if (ours == systems) return;
    const std::string both = ours + " is ours, the system has " + systems;
    logFormatted(LogType::Fault, "types differ", sel_getName(selector), both.c_str());
}

}  // namespace

void verifyMessage(RawObject receiver, RawClass superOf, RawSelector selector, const MessageTypes& types) {
    const RawClass cls = superOf ? class_getSuperclass(superOf) : object_getClass(receiver);
    thread_local std::set<std::pair<RawClass, RawSelector>> verified;
    if (!verified.emplace(cls, selector).second) return;
    MethodRecord* const method = class_getInstanceMethod(cls, selector);
    if (!method) return;  // forwarded: nothing to compare with
    std::string ours = std::string(types.result) + "@:";
    for (std::size_t i = 0; i < types.count; ++i) ours += types.arguments[i];
    compare(selector, ours, method_getTypeEncoding(method));
}

void verifyOverride(RawClass cls, RawSelector name, const char* types) {
    MethodRecord* const inherited = class_getInstanceMethod(class_getSuperclass(cls), name);
    const std::string declared = inherited ? method_getTypeEncoding(inherited) : protocolEncoding(cls, name);
    if (!declared.empty()) compare(name, types, declared);
}
#endif

}  // namespace morvel::mac::objc
