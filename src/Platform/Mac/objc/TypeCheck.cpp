// Comparing our compile-time encodings with the running system's.
#include "Platform/Mac/objc/TypeCheck.h"

#include <cctype>
#include <set>
#include <string>

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
namespace {

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
void free(void* memory);
}

/// The types under which one of the class's protocols declares the method; empty when none does.
std::string protocolEncoding(RawClass cls, RawSelector name) {
    unsigned int count = 0;
    RawProtocol* const protocols = class_copyProtocolList(cls, &count);
    std::string found;
    for (unsigned int i = 0; i < count && found.empty(); ++i) {
        for (const NativeBool isRequired : {NativeBool(1), NativeBool(0)}) {
            const auto description = protocol_getMethodDescription(protocols[i], name, isRequired, 1);
            if (description.types) found = plainEncoding(description.types);
        }
    }
    free(protocols);
    return found;
}

void compare(RawSelector selector, const std::string& ours, const std::string& systems) {
    if (ours == systems) return;
    const std::string both = ours + " is ours, the system has " + systems;
    logFormatted(LogType::Fault, "types differ", sel_getName(selector), both.c_str());
}

}  // namespace

void verifyMessage(RawObject receiver, RawSelector selector, const MessageTypes& types) {
    thread_local std::set<RawSelector> verified;
    if (!verified.insert(selector).second) return;
    MethodRecord* const method = class_getInstanceMethod(object_getClass(receiver), selector);
    if (!method) return;  // forwarded: nothing to compare with
    std::string ours = std::string(types.result) + "@:";
    for (std::size_t i = 0; i < types.count; ++i) ours += types.arguments[i];
    compare(selector, plainEncoding(ours), plainEncoding(method_getTypeEncoding(method)));
}

void verifyOverride(RawClass cls, RawSelector name, const char* types) {
    MethodRecord* const inherited = class_getInstanceMethod(class_getSuperclass(cls), name);
    const std::string declared =
        inherited ? plainEncoding(method_getTypeEncoding(inherited)) : protocolEncoding(cls, name);
    // Optional methods of protocols that no loaded image mentions cannot be looked up; they are left to the tests.
    if (!declared.empty()) compare(name, plainEncoding(types), declared);
}
#endif

}  // namespace morvel::mac::objc
