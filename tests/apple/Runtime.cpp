// Classes and messages: the checks, and who answers.

#include "SystemObjects.h"

namespace morvel::mac::checked {

namespace {

std::string spelled(const std::string& className, bool toClass, const std::string& selector) {
    return (toClass ? "+[" : "-[") + className + " " + selector + "]";
}

std::string methodTypes(const objc::MessageTypes& types) {
    std::string text = std::string(types.result) + "@:";
    for (std::size_t i = 0; i < types.count; ++i) text += types.arguments[i];
    return text;
}

std::string methodTypes(const MethodFact& fact) {
    std::string text = fact.result + "@:";
    for (const auto& argument : fact.arguments) text += argument;
    return text;
}

}  // namespace

bool inherits(const ClassRecord* cls, const std::string& ancestor) {
    for (; cls; cls = cls->superclass) {
        if (cls->name == ancestor) return true;
    }
    return false;
}

Runtime& Runtime::process() {
    static Runtime instance;
    static const bool isReady = [] {
        installSystemObjects(instance);
        return true;
    }();
    (void)isReady;
    return instance;
}

Runtime::Runtime() : facts_(MORVEL_APPLE_FACTS) {}

RawClass Runtime::classNamed(const std::string& name) {
    if (const auto known = classes_.find(name); known != classes_.end()) return known->second.get();
    const ClassFact* const fact = facts_.classNamed(name);
    const bool isCoreFoundationType = name.starts_with("__");
    if (!fact && !isCoreFoundationType) {
        faults_.add(FaultKind::UnknownClass, "there is no class " + name);
        return nullptr;
    }
    const std::string parent = fact ? fact->superclass : "NSObject";
    ClassRecord* const made = addClass(name, parent.empty() ? nullptr : classNamed(parent));
    if (fact) made->protocols = fact->protocols;
    return made;
}

ClassRecord* Runtime::addClass(const std::string& name, RawClass superclass) {
    auto made = std::make_unique<ClassRecord>();
    made->name = name;
    made->superclass = superclass;
    made->isImmortal = true;
    live_.insert(static_cast<ObjectRecord*>(made.get()));
    return (classes_[name] = std::move(made)).get();
}

RawSelector Runtime::selectorNamed(const std::string& name) {
    auto& slot = selectors_[name];
    if (!slot) slot = std::make_unique<objc::SelectorRecord>(objc::SelectorRecord{name});
    return slot.get();
}

RawClass Runtime::allocatePair(RawClass superclass, const std::string& name) {
    if (classes_.contains(name) || !superclass) {
        faults_.add(FaultKind::BadCall, "class " + name + " exists already or has no superclass");
        return nullptr;
    }
    ClassRecord* const made = addClass(name, superclass);
    made->isOurs = true;
    made->ivarIndex = superclass->ivarIndex;
    return made;
}

const MethodFact* Runtime::understood(const ClassRecord* cls, bool toClass, const std::string& selector) const {
    while (cls && cls->isOurs) cls = cls->superclass;
    if (!cls) return nullptr;
    const bool isCoreFoundationType = !facts_.classNamed(cls->name);
    return facts_.understoodBy(isCoreFoundationType ? "NSObject" : cls->name, toClass, selector);
}

bool Runtime::addMethod(RawClass cls, const std::string& selector, const OwnMethod& method, objc::MethodOrigin origin) {
    const MethodFact* declared = understood(cls->superclass, false, selector);
    for (const ClassRecord* at = cls; at && at->isOurs && !declared; at = at->superclass) {
        for (const auto& protocol : at->protocols) {
            if (!declared) declared = facts_.declaredBy(protocol, false, selector);
        }
    }
    const std::string what = spelled(cls->name, false, selector);
    if (origin == objc::MethodOrigin::Added && declared) {
        faults_.add(FaultKind::WrongOverride, what + " hides a method that the class already has");
    } else if (origin == objc::MethodOrigin::Declared && !declared) {
        faults_.add(FaultKind::WrongOverride, what + " overrides nothing");
    } else if (declared && methodTypes(*declared) != method.types) {
        faults_.add(FaultKind::WrongOverride, what + " is " + method.types + ", declared as " + methodTypes(*declared));
    }
    return cls->methods.try_emplace(selector, method).second;
}

bool Runtime::responds(RawObject object, const std::string& selector) const {
    if (!object) return false;
    for (const ClassRecord* cls = classOf(object); cls; cls = cls->superclass) {
        if (!isClassObject(object) && cls->methods.contains(selector)) return true;
    }
    return understood(classOf(object), isClassObject(object), selector) != nullptr;
}

bool Runtime::checkReceiver(RawObject receiver, const std::string& selector) {
    if (!isObject(receiver)) {
        faults_.add(FaultKind::WrongReceiver, selector + " was sent to something that is no object");
        return false;
    }
    if (receiver->isDead) {
        faults_.add(FaultKind::OverRelease, selector + " was sent to a destroyed " + classOf(receiver)->name);
        return false;
    }
    return true;
}

bool Runtime::checkTypes(const std::string& what, const MethodFact& fact, const objc::MessageTypes& types) {
    if (fact.arguments.size() != types.count) {
        faults_.add(FaultKind::ArgumentCount, what + " takes " + std::to_string(fact.arguments.size()) +
                                                  " arguments, not " + std::to_string(types.count));
        return false;
    }
    bool isRight = true;
    for (std::size_t i = 0; i < types.count; ++i) {
        if (fact.arguments[i] == types.arguments[i]) continue;
        isRight = false;
        faults_.add(FaultKind::ArgumentType, what + ": argument " + std::to_string(i + 1) + " is " + fact.arguments[i] +
                                                 ", not " + types.arguments[i]);
    }
    if (fact.result != types.result) {
        isRight = false;
        faults_.add(FaultKind::ResultType, what + " returns " + fact.result + ", not " + types.result);
    }
    return isRight;
}

void Runtime::reportUnknown(const ClassRecord* cls, bool toClass, const std::string& selector) {
    const std::string what = spelled(cls ? cls->name : "nil", toClass, selector);
    if (understood(cls, !toClass, selector)) {
        faults_.add(FaultKind::WrongReceiver, what + ": the method is " + (toClass ? "an instance" : "a class") + "'s");
    } else {
        faults_.add(FaultKind::UnknownSelector, what + " does not exist");
    }
}

void Runtime::checkWritten(const objc::WrittenMessage& message) {
    const ClassFact* const cls = facts_.classNamed(message.className);
    if (!cls) {
        faults_.add(FaultKind::UnknownClass, std::string("there is no class ") + message.className);
        return;
    }
    const MethodFact* const fact = facts_.understoodBy(message.className, message.toClass, message.selector);
    if (fact) {
        checkTypes(spelled(message.className, message.toClass, message.selector), *fact, message.types);
    } else {
        reportUnknown(classNamed(message.className), message.toClass, message.selector);
    }
}

bool Runtime::callOwnMethod(ClassRecord* start, Invocation& invocation, RawSelector selector,
                            const objc::MessageTypes& types, void** arguments, void* result) {
    if (isClassObject(invocation.receiver())) return false;
    for (ClassRecord* cls = start; cls; cls = cls->superclass) {
        const auto found = cls->methods.find(selector->name);
        if (found == cls->methods.end()) continue;
        if (found->second.types == methodTypes(types)) {
            found->second.invoker(found->second.implementation, invocation.receiver(), selector, arguments, result);
        } else {
            faults_.add(FaultKind::ArgumentType, spelled(cls->name, false, selector->name) + " is " +
                                                     found->second.types + ", sent as " + methodTypes(types));
        }
        return true;
    }
    return false;
}

const Handler* Runtime::handlerFor(const ClassRecord* cls, const std::string& key) const {
    for (const Handlers* table : {&scripts_, &handlers_}) {
        for (const ClassRecord* at = cls; at; at = at->superclass) {
            const auto handlers = table->find(at->name);
            if (handlers == table->end()) continue;
            if (const auto found = handlers->second.find(key); found != handlers->second.end()) return &found->second;
        }
    }
    return nullptr;
}

void Runtime::record(const Invocation& invocation) {
    static const std::set<std::string> kValues = {"NSString", "NSNumber", "NSArray", "NSDictionary", "NSURL"};
    const std::string& className = classOf(invocation.receiver())->name;
    if (kValues.contains(className) || invocation.selector() == "init") return;
    Call call{invocation.receiver(), className, invocation.selector(), {}};
    for (std::size_t i = 0; i < invocation.count(); ++i) call.arguments.push_back(invocation.stored(i));
    calls_.push_back(std::move(call));
}

void Runtime::send(RawObject receiver, RawClass superOf, RawSelector selector, const objc::MessageTypes& types,
                   void** arguments, void* result) {
    if (!receiver || isTearingDown_ || !checkReceiver(receiver, selector->name)) return;
    const bool toClass = isClassObject(receiver);
    ClassRecord* const start = superOf ? superOf->superclass : classOf(receiver);
    Invocation invocation(receiver, selector->name, types, arguments, result);
    if (callOwnMethod(start, invocation, selector, types, arguments, result)) return;

    const MethodFact* const fact = understood(start, toClass, selector->name);
    if (!fact) return reportUnknown(start, toClass, selector->name);
    if (!checkTypes(spelled(start->name, toClass, selector->name), *fact, types)) return;
    if (answerAsRoot(invocation)) return;
    record(invocation);
    if (const Handler* const handler = handlerFor(start, toClass ? "+" + selector->name : selector->name)) {
        const Handler kept = *handler;  // it may replace itself
        kept(invocation);
    } else {
        answerGenerically(invocation, *fact);
    }
}

const std::string& Runtime::checkedKey(const std::string& className, const std::string& key) {
    const bool toClass = key.starts_with('+');
    if (!facts_.understoodBy(className, toClass, toClass ? key.substr(1) : key)) {
        faults_.add(FaultKind::UnknownSelector, "a behaviour for " + className + " " + key + ", which is unknown");
    }
    return key;
}

void Runtime::script(const std::string& className, const std::string& selector, Handler handler) {
    scripts_[className][checkedKey(className, selector)] = std::move(handler);
}

std::vector<std::string> Runtime::callNames() const {
    std::vector<std::string> names;
    for (const Call& call : calls_) names.push_back(call.className + " " + call.selector);
    return names;
}

}  // namespace morvel::mac::checked
