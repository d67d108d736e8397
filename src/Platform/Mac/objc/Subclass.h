// Objective-C classes whose methods are member functions of a C++ class.
//
//     struct BarPanel {
//         static constexpr const char* kClassName = "MorvelPanel";
//         bool canBecomeKey() const { return false; }
//         void close(Self self) { …; self.super("close"_sel); }
//     };
//     const RawClass panelClass = Subclass<BarPanel>("NSPanel")
//         .overrides<&BarPanel::canBecomeKey>("canBecomeKeyWindow"_sel)
//         .overrides<&BarPanel::close>("close"_sel)
//         .registered();
//     NSPanel panel = Subclass<BarPanel>::create<NSPanel>(std::make_unique<BarPanel>(), "initWithFrame:"_sel, frame);
//
// Each instance owns one C++ object. It is in place before the initialiser runs, because AppKit calls overrides from
// there, and it is destroyed with the instance; messages that come after (from the superclass's dealloc) answer zero.
#pragma once

#include <memory>
#include <tuple>
#include <utility>

#include "Platform/Mac/objc/Guard.h"
#include "Platform/Mac/objc/Native.h"
#include "Platform/Mac/objc/Send.h"

namespace morvel::mac::objc {

/// The instance a method runs for; a member function that wants it takes it as its first parameter. Not retained, valid
/// during the call.
struct Self {
    RawObject object;
    RawClass implementer;

    template <typename R = void, FixedString kName, typename... Args>
    R super(SelectorName<kName> selector, const Args&... arguments) const {
        return sendSuper<R>(object, implementer, selector, arguments...);
    }
};

namespace detail {

template <typename Member>
struct MemberTraits;
template <typename T, typename R, typename... Args>
struct MemberTraits<R (T::*)(Args...)> {
    using Result = R;
    using Arguments = std::tuple<std::decay_t<Args>...>;
    static constexpr bool kTakesSelf = false;
};
template <typename T, typename R, typename... Args>
struct MemberTraits<R (T::*)(Self, Args...)> {
    using Result = R;
    using Arguments = std::tuple<std::decay_t<Args>...>;
    static constexpr bool kTakesSelf = true;
};
template <typename T, typename R, typename... Args>
struct MemberTraits<R (T::*)(Args...) const> : MemberTraits<R (T::*)(Args...)> {};

template <typename R, typename... Args, std::size_t... kIndex>
void invokeUnpacked(Imp implementation, RawObject self, RawSelector command, [[maybe_unused]] void** arguments,
                    [[maybe_unused]] void* result, std::index_sequence<kIndex...>) {
    auto* entry = reinterpret_cast<R (*)(RawObject, RawSelector, Args...)>(implementation);
    if constexpr (std::is_void_v<R>) {
        entry(self, command, *static_cast<Args*>(arguments[kIndex])...);
    } else {
        *static_cast<R*>(result) = entry(self, command, *static_cast<Args*>(arguments[kIndex])...);
    }
}
template <typename R, typename... Args>
void invoke(Imp implementation, RawObject self, RawSelector command, void** arguments, void* result) {
    invokeUnpacked<R, Args...>(implementation, self, command, arguments, result, std::index_sequence_for<Args...>{});
}

bool addMethod(RawClass cls, RawSelector name, Imp implementation, const char* types, MethodOrigin origin,
               Invoker invoker);
void adopt(RawClass cls, const char* protocol);
RawClass beginClass(const char* name, const char* superclass);
void** ownedSlot(RawObject self, std::ptrdiff_t offset);
std::ptrdiff_t ownedSlotOffset(RawClass cls);

}  // namespace detail

template <typename T>
class Subclass {
public:
    /// Begins the class named T::kClassName. Once per program: keep the result of `registered` in a static.
    explicit Subclass(const char* superclass) : class_(detail::beginClass(T::kClassName, superclass)) {
        detail::addMethod(class_, SelectorName<"dealloc">::get(), reinterpret_cast<Imp>(&dealloc),
                          kMethodEncoding<void>.text, MethodOrigin::Declared, &detail::invoke<void>);
    }

    /// Protocols come before the methods that implement them.
    Subclass& adopts(const char* protocol) {
        detail::adopt(class_, protocol);
        return *this;
    }

    /// A method that the superclass or an adopted protocol declares; its types must be the declared ones.
    template <auto kMember, FixedString kName>
    Subclass& overrides(SelectorName<kName> name) {
        using Traits = detail::MemberTraits<decltype(kMember)>;
        addEntry<kMember, typename Traits::Result>(name, static_cast<typename Traits::Arguments*>(nullptr),
                                                   MethodOrigin::Declared);
        return *this;
    }

    /// A method of our own, for example a menu item's action.
    template <auto kMember, FixedString kName>
    Subclass& adds(SelectorName<kName> name) {
        using Traits = detail::MemberTraits<decltype(kMember)>;
        addEntry<kMember, typename Traits::Result>(name, static_cast<typename Traits::Arguments*>(nullptr),
                                                   MethodOrigin::Added);
        return *this;
    }

    RawClass registered() {
        objc_registerClassPair(class_);
        return class_;
    }

    /// A new instance that owns `object`. Empty when the initialiser fails; then `object` is destroyed.
    template <ObjectWrapper W, FixedString kName, typename... Args>
    static W create(std::unique_ptr<T> object, SelectorName<kName> init, const Args&... arguments) {
        static_assert(SelectorName<kName>::kArity == sizeof...(Args), "the selector takes another number of arguments");
        const RawObject blank = sendRaw<Id>(detail::receiverOf(handle()), SelectorName<"alloc">::get());
        if (!blank) return W();
        *detail::ownedSlot(blank, slotOffset()) = object.release();
        return W(kAdopt, sendRaw<Id, std::decay_t<Args>...>(blank, init.get(), arguments...));
    }

    /// The C++ object behind an instance; the instance owns it. Null for nil and while the instance is being destroyed.
    static T* of(RawObject instance) {
        return instance ? static_cast<T*>(*detail::ownedSlot(instance, slotOffset())) : nullptr;
    }
    static T* of(const Id& instance) { return of(instance.raw()); }

private:
    static RawClass handle() {
        static const RawClass resolved = objc_getClass(T::kClassName);
        return resolved;
    }
    static std::ptrdiff_t slotOffset() {
        static const std::ptrdiff_t resolved = detail::ownedSlotOffset(handle());
        return resolved;
    }

    template <auto kMember, typename R, FixedString kName, typename... Args>
    void addEntry(SelectorName<kName> name, std::tuple<Args...>*, MethodOrigin origin) {
        static_assert(SelectorName<kName>::kArity == sizeof...(Args), "the selector takes another number of arguments");
        static constexpr auto types = kMethodEncoding<R, Args...>;
        detail::addMethod(class_, name.get(), reinterpret_cast<Imp>(&entry<kMember, R, Args...>), types.text, origin,
                          &detail::invoke<NativeType<R>, NativeType<Args>...>);
    }

    template <auto kMember, typename R, typename... Args>
    static NativeType<R> entry(RawObject self, RawSelector command, NativeType<Args>... arguments) noexcept {
        T* const object = of(self);
        if (!object) return NativeType<R>();
        const Id alive(self);  // the method may drop the last reference to its own instance
        return guarded(sel_getName(command), [&]() -> NativeType<R> {
            const auto call = [&]() -> R {
                if constexpr (detail::MemberTraits<decltype(kMember)>::kTakesSelf) {
                    return (object->*kMember)(Self{self, handle()}, Native<Args>::fromNative(arguments)...);
                } else {
                    return (object->*kMember)(Native<Args>::fromNative(arguments)...);
                }
            };
            if constexpr (std::is_void_v<R>) {
                call();
            } else {
                return Native<R>::toResult(call());
            }
        });
    }

    static void dealloc(RawObject self, RawSelector command) noexcept {
        void** const slot = detail::ownedSlot(self, slotOffset());
        std::unique_ptr<T>(static_cast<T*>(std::exchange(*slot, nullptr))).reset();
        guarded(sel_getName(command), [&] { sendSuper(self, handle(), SelectorName<"dealloc">{}); });
    }

    RawClass class_;
};

}  // namespace morvel::mac::objc
