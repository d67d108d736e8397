// The checked runtime: stands in for the Objective-C runtime, AppKit and Foundation where there is no Mac. It knows the
// published API and reports each message, override and reference that is wrong by it.
//
// How a message is answered, first match wins: a method of a class that our code registered; a handler given with
// `implementing` for the class or a superclass; memory management; and for everything else the generic rule:
// initialisers and setters store their arguments as properties, getters return them, shared objects are made at first
// use, the rest does nothing. Messages are recorded in `calls`, but for those to values (strings, arrays) and plain
// init.
//
// To script a world, tests register handlers and set properties; see AccessibilityWorld.h and FakeDispatch.h for the C
// functions. One instance stands for the process; `reset` begins a test. One thread.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <typeinfo>
#include <unordered_set>
#include <vector>

#include "Blocks.h"
#include "Facts.h"
#include "Faults.h"
#include "Invocation.h"
#include "Objects.h"

namespace morvel::mac::checked {

/// A message that was sent to something of the system's, in order of sending.
struct Call {
    RawObject receiver;
    std::string className;
    std::string selector;
    std::vector<Value> arguments;
};

class Runtime {
public:
    /// The process's runtime. The C functions have nowhere else to find it.
    static Runtime& process();

    const Facts& facts() const { return facts_; }
    Faults& faults() { return faults_; }
    const std::vector<Call>& calls() const { return calls_; }
    /// The recorded calls as "NSWindow orderFrontRegardless", for asserting their order.
    std::vector<std::string> callNames() const;
    void forgetCalls() { calls_.clear(); }

    /// Gives selectors of the class and its subclasses behaviours for the rest of the process: call the result with
    /// each selector ("+name" for a class method) and its handler. The facts must know the method.
    auto implementing(std::string className) {
        return [this, className](const std::string& selector, Handler handler) {
            handlers_[className][checkedKey(className, selector)] = std::move(handler);
        };
    }
    /// The same until the end of the test; goes before the permanent ones.
    void script(const std::string& className, const std::string& selector, Handler handler);

    // Classes and selectors.
    RawClass classNamed(const std::string& name);
    RawSelector selectorNamed(const std::string& name);
    RawClass allocatePair(RawClass superclass, const std::string& name);
    bool addMethod(RawClass cls, const std::string& selector, const OwnMethod& method, objc::MethodOrigin origin);

    /// Whether the object answers the message, as respondsToSelector: does.
    bool responds(RawObject object, const std::string& selector) const;

    // Objects.
    RawObject allocate(RawClass cls);
    /// A blank object of the system's, or one with a payload.
    Id make(const std::string& className) { return Id(objc::kAdopt, allocate(classNamed(className))); }
    template <typename T>
    Id make(const std::string& className, T payload) {
        Id made = make(className);
        setPayload(made, std::move(payload));
        return made;
    }
    /// The one object of a class that is handed out under a name, for example by "NSApplication sharedApplication".
    Id shared(const std::string& className, const std::string& name);
    /// What the system knows until the end of the test, one of each type.
    template <typename T>
    T& known() {
        return ensured<T>(shared("NSObject", typeid(T).name()));
    }
    bool isObject(const void* pointer) const { return live_.contains(pointer); }
    void retain(RawObject object);
    void release(RawObject object);
    RawObject autorelease(RawObject object);
    void* pushPool();
    void popPool(void* pool);
    Blocks& blocks() { return blocks_; }
    /// A constant object of the system: never released, in no leak report.
    RawObject makeImmortal(const Id& object);
    /// Keeps objects and blocks, except under the names of properties that AppKit holds weakly.
    void setProperty(RawObject object, const std::string& name, const Value& value);

    // Messages.
    void send(RawObject receiver, RawClass superOf, RawSelector selector, const objc::MessageTypes& types,
              void** arguments, void* result);
    /// Checks a message that may never be sent.
    void checkWritten(const objc::WrittenMessage& message);

    /// Begins a test: no calls, no faults, a pool.
    void begin();
    /// Ends it: pools are drained, shared objects and scripts dropped, and what is left is reported as leaked
    /// and gone: a wrapper in a static of the host's would dangle in the next test.
    void finish();

private:
    Runtime();

    ClassRecord* addClass(const std::string& name, RawClass superclass);
    const MethodFact* understood(const ClassRecord* cls, bool toClass, const std::string& selector) const;
    bool checkReceiver(RawObject receiver, const std::string& selector);
    bool checkTypes(const std::string& what, const MethodFact& fact, const objc::MessageTypes& types);
    bool callOwnMethod(ClassRecord* start, Invocation& invocation, RawSelector selector,
                       const objc::MessageTypes& types, void** arguments, void* result);
    void record(const Invocation& invocation);
    void reportUnknown(const ClassRecord* cls, bool toClass, const std::string& selector);
    const std::string& checkedKey(const std::string& className, const std::string& key);
    const Handler* handlerFor(const ClassRecord* cls, const std::string& key) const;
    bool answerAsRoot(Invocation& invocation);
    void answerGenerically(Invocation& invocation, const MethodFact& fact);
    void answerInitialiser(Invocation& invocation);
    bool answerGetter(Invocation& invocation, const MethodFact& fact);
    void answerFactory(Invocation& invocation, const MethodFact& fact);
    void destroy(RawObject object);
    void dropProperties(RawObject object);
    void forgetWeakly(RawObject object);

    using Handlers = std::map<std::string, std::map<std::string, Handler>>;  // by class, then by selector

    Facts facts_;
    Faults faults_;
    std::vector<Call> calls_;
    std::map<std::string, std::unique_ptr<ClassRecord>> classes_;
    std::map<std::string, std::unique_ptr<objc::SelectorRecord>> selectors_;
    Handlers handlers_;
    Handlers scripts_;
    std::vector<std::unique_ptr<ObjectRecord>> objects_;
    std::unordered_set<const void*> live_;  // objects and classes
    std::map<std::string, Id> shared_;
    std::vector<std::vector<RawObject>> pools_;
    Blocks blocks_{faults_};
    bool isTearingDown_ = false;  // what leaked is thrown away without counting
};

inline Runtime& runtime() {
    return Runtime::process();
}

}  // namespace morvel::mac::checked
