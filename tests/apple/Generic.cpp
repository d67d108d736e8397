// What every object does: NSObject's own methods, and the generic rule for everything that has no behaviour of its own.
#include <cctype>

#include "Properties.h"

namespace morvel::mac::checked {

namespace {

/// "NSArray" of "NSArray<NSScreen *> * _Nullable"; empty when the type is no class.
std::string classNameIn(const std::string& resultType) {
    std::string name = resultType.substr(0, resultType.find_first_of("< *"));
    return name == "id" ? std::string() : name;
}

bool isNullable(const MethodFact& fact) {
    return fact.resultType.find("_Nullable") != std::string::npos;
}

std::string lowered(std::string name) {
    if (!name.empty()) name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
    return name;
}

/// What the arguments of an initialiser or factory are called: "initWithTitle:action:" gives title and action,
/// "colorWithWhite:alpha:" white and alpha.
std::vector<std::string> partNames(const std::string& selector) {
    std::vector<std::string> names;
    std::size_t start = 0;
    for (std::size_t colon = selector.find(':'); colon != std::string::npos; colon = selector.find(':', start)) {
        std::string part = selector.substr(start, colon - start);
        const std::size_t with = names.empty() ? part.find("With") : std::string::npos;
        names.push_back(lowered(with == std::string::npos ? part : part.substr(with + 4)));
        start = colon + 1;
    }
    return names;
}

void storeParts(Runtime& runtime, RawObject object, const Invocation& invocation) {
    const auto names = partNames(invocation.selector());
    for (std::size_t i = 0; i < invocation.count(); ++i) runtime.setProperty(object, names[i], invocation.stored(i));
}

bool isInitialiser(const std::string& selector) {
    return selector.starts_with("init") &&
           (selector.size() == 4 || std::isupper(static_cast<unsigned char>(selector[4])));
}

}  // namespace

bool Runtime::answerAsRoot(Invocation& invocation) {
    const RawObject self = invocation.receiver();
    const std::string& selector = invocation.selector();
    if (selector == "alloc") {
        invocation.answer<RawObject>(allocate(classOf(self)));
    } else if (selector == "dealloc") {
        destroy(self);
    } else if (selector == "isKindOfClass:") {
        const RawClass wanted = invocation.argument<RawClass>(0);
        invocation.answer<bool>(wanted && inherits(classOf(self), wanted->name));
    } else if (selector == "copy" && !isClassObject(self)) {
        retain(self);  // the values we have are immutable
        invocation.answer<RawObject>(self);
    } else {
        return false;
    }
    return true;
}

void Runtime::answerGenerically(Invocation& invocation, const MethodFact& fact) {
    const RawObject self = invocation.receiver();
    const std::string& selector = invocation.selector();
    if (isClassObject(self)) return answerFactory(invocation, fact);
    if (isInitialiser(selector)) return answerInitialiser(invocation);
    if (invocation.count() == 0) {
        answerGetter(invocation, fact);
    } else if (invocation.count() == 1 && selector.starts_with("set")) {
        std::string name = selector.substr(3);
        name.pop_back();
        setProperty(self, lowered(name), invocation.stored(0));
        // A few setters, as setActivationPolicy:, say whether they did it.
        if (invocation.resultEncoding() == "B") invocation.answer<bool>(true);
    } else if (fact.result == "@" && !isNullable(fact) && facts_.classNamed(classNameIn(fact.resultType))) {
        // Something new that is never nil, as addButtonWithTitle: or statusItemWithLength: give.
        invocation.answerObject(Id(objc::kAdopt, allocate(classNamed(classNameIn(fact.resultType)))));
    }
}

void Runtime::answerInitialiser(Invocation& invocation) {
    storeParts(*this, invocation.receiver(), invocation);
    invocation.answer<RawObject>(invocation.receiver());
}

bool Runtime::answerGetter(Invocation& invocation, const MethodFact& fact) {
    const RawObject self = invocation.receiver();
    std::string name = invocation.selector();
    if (name.starts_with("is") && !self->properties.contains(name)) name = lowered(name.substr(2));
    if (const auto found = self->properties.find(name); found != self->properties.end()) {
        const Property& property = found->second;
        if (property.value.encoding == "@") {
            RawObject object = nullptr;
            std::memcpy(&object, property.value.bytes.data(), sizeof object);
            invocation.answerObject(Id(object));
        } else {
            invocation.answerStored(property.value);
        }
        return true;
    }
    const std::string className = classNameIn(fact.resultType);
    if (fact.result != "@" || isNullable(fact) || !facts_.classNamed(className)) return false;
    // Never nil by the API: made at first use and kept, as NSView's layer or NSStatusItem's button are.
    const Id made(objc::kAdopt, allocate(classNamed(className)));
    setProperty(self, name, valueOf(made.raw()));
    invocation.answerObject(made);
    return true;
}

void Runtime::answerFactory(Invocation& invocation, const MethodFact& fact) {
    if (fact.result != "@") return;
    const std::string own = classOf(invocation.receiver())->name;
    const bool isOwnKind = fact.resultType.starts_with("instancetype");
    const std::string className = isOwnKind ? own : classNameIn(fact.resultType);
    if (isNullable(fact) || (!isOwnKind && !facts_.classNamed(className))) return;
    if (invocation.count() == 0 && !isOwnKind)
        return invocation.answerObject(shared(className, own + " " + invocation.selector()));
    const Id made(objc::kAdopt, allocate(classNamed(className)));
    storeParts(*this, made.raw(), invocation);
    invocation.answerObject(made);
}

}  // namespace morvel::mac::checked
