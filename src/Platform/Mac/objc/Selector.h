// Names of messages and classes that are resolved once per program, at first use.
#pragma once

#include "Platform/Mac/objc/Encoding.h"
#include "Platform/Mac/objc/FixedString.h"
#include "Platform/Mac/objc/Id.h"
#include "Platform/Mac/objc/Runtime.h"

namespace morvel::mac::objc {

/// A selector whose name the compiler knows, written "setFrame:display:"_sel. As an argument of a message (an action)
/// it is a plain SEL.
template <FixedString kName>
struct SelectorName {
    static constexpr std::size_t kArity = kName.count(':');
    static constexpr const char* name() { return kName.text; }

    static RawSelector get() {
        static const RawSelector resolved = sel_registerName(kName.text);
        return resolved;
    }
};

/// A selector as a value, for example the action of a menu item. Empty: no action.
class Selector {
public:
    Selector() = default;
    explicit Selector(RawSelector raw) : raw_(raw) {}
    template <FixedString kName>
    Selector(SelectorName<kName>) : raw_(SelectorName<kName>::get()) {}

    RawSelector raw() const { return raw_; }
    friend bool operator==(Selector, Selector) = default;

private:
    RawSelector raw_ = nullptr;
};

template <>
struct Encode<Selector> {
    static constexpr FixedString value{":"};
};

/// The class object that wrapper W stands for, to send class messages to. Nil where this system has no such class.
template <ObjectWrapper W>
struct ClassOf {
    static RawClass get() {
        static const RawClass resolved = objc_getClass(W::kClass);
        return resolved;
    }
};

inline namespace literals {
template <FixedString kName>
constexpr SelectorName<kName> operator""_sel() {
    return {};
}
}  // namespace literals

}  // namespace morvel::mac::objc
