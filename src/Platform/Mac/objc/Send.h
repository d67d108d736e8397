// Messages with types. `send<R>(receiver, "selector:"_sel, arguments…)` compiles to one call of the runtime's
// dispatcher on Apple systems: no allocation, no look-up; elsewhere it goes to the checked runtime with its encodings.
//
// - The encodings come from the C++ types of R and of the arguments, so an NSInteger parameter must be a std::int64_t
//   or a long, never an int. The wrappers' signatures see to that; the rest of the host calls wrappers.
// - A result that is a wrapper is retained. Use `sendOwned` for methods that hand over their result (new, copy), and
//   `create` for alloc and init.
// - Variadic methods are not supported: their arguments travel differently on arm64.
// - A message to nil answers zero, on every architecture and for every result.
#pragma once

#include <type_traits>

#include "Platform/Mac/objc/Native.h"
#include "Platform/Mac/objc/Selector.h"
#include "Platform/Mac/objc/TypeCheck.h"

namespace morvel::mac::objc {

namespace detail {

struct SuperReceiver {
    RawObject receiver;
    RawClass startAt;
};

#if defined(__APPLE__)
/// Structs that do not fit two registers come back in memory the caller provides; on arm64 the plain entry does that.
template <typename R>
constexpr bool returnsInMemory() {
#if defined(__x86_64__)
    if constexpr (std::is_class_v<R>) return sizeof(R) > 16;
#endif
    return false;
}

template <typename R, typename... Args>
R dispatch(RawObject receiver, RawSelector selector, Args... arguments) {
    auto* entry = &objc_msgSend;
#if defined(__x86_64__)
    if constexpr (returnsInMemory<R>()) entry = &objc_msgSend_stret;
#endif
    return reinterpret_cast<R (*)(RawObject, RawSelector, Args...)>(entry)(receiver, selector, arguments...);
}

template <typename R, typename... Args>
R dispatchSuper(RawObject receiver, RawClass implementer, RawSelector selector, Args... arguments) {
    auto* entry = &objc_msgSendSuper;
#if defined(__x86_64__)
    if constexpr (returnsInMemory<R>()) entry = &objc_msgSendSuper_stret;
#endif
    SuperReceiver target{receiver, class_getSuperclass(implementer)};
    return reinterpret_cast<R (*)(SuperReceiver*, RawSelector, Args...)>(entry)(&target, selector, arguments...);
}
#else
template <typename R, typename... Args>
R dispatchChecked(RawObject receiver, RawClass superOf, RawSelector selector, const MessageTypes& types,
                  Args... values) {
    void* arguments[sizeof...(Args) + 1] = {&values..., nullptr};
    if constexpr (std::is_void_v<R>) {
        checkedSend(receiver, superOf, selector, types, arguments, nullptr);
    } else {
        R result{};
        checkedSend(receiver, superOf, selector, types, arguments, &result);
        return result;
    }
}

template <typename Receiver, bool kToClass, FixedString kName, typename R, typename... Args>
struct NotedMessage {
    inline static const bool kNoted =
        checkedNoteMessage({Receiver::kClass, kToClass, kName.text, MessageEncoding<R, std::decay_t<Args>...>::kTypes});
};
#endif

inline RawObject receiverOf(RawObject receiver) {
    return receiver;
}
inline RawObject receiverOf(RawClass receiver) {
    return reinterpret_cast<RawObject>(receiver);
}
inline RawObject receiverOf(const Id& receiver) {
    return receiver.raw();
}
template <ObjectWrapper W>
RawObject receiverOf(ClassOf<W> receiver) {
    return reinterpret_cast<RawObject>(receiver.get());
}

template <typename Receiver, FixedString kName, typename R, typename... Args>
void noteMessage() {
#if !defined(__APPLE__)
    if constexpr (requires { Receiver::kClass; }) (void)&NotedMessage<Receiver, false, kName, R, Args...>::kNoted;
#endif
}
template <typename Receiver, FixedString kName, typename R, typename... Args>
void noteClassMessage() {
#if !defined(__APPLE__)
    (void)&NotedMessage<Receiver, true, kName, R, Args...>::kNoted;
#endif
}
template <typename R, FixedString kName, typename... Args, typename Receiver>
void note(const Receiver&) {
    noteMessage<Receiver, kName, R, Args...>();
}
template <typename R, FixedString kName, typename... Args, typename W>
void note(ClassOf<W>) {
    noteClassMessage<W, kName, R, Args...>();
}

}  // namespace detail

/// Sends by a selector that is only known at run time. Returns the native value: an object is not retained.
template <typename R, typename... Args>
NativeType<R> sendRaw(RawObject receiver, RawSelector selector, const Args&... arguments) {
    if (!receiver) return NativeType<R>();
    using Types = MessageEncoding<R, Args...>;
#if defined(__APPLE__)
    verifyMessage(receiver, nullptr, selector, Types::kTypes);
    return detail::dispatch<NativeType<R>, NativeType<Args>...>(receiver, selector,
                                                                Native<Args>::toNative(arguments)...);
#else
    return detail::dispatchChecked<NativeType<R>, NativeType<Args>...>(receiver, nullptr, selector, Types::kTypes,
                                                                       Native<Args>::toNative(arguments)...);
#endif
}

template <typename R = void, typename Receiver, FixedString kName, typename... Args>
R send(const Receiver& receiver, SelectorName<kName> selector, const Args&... arguments) {
    static_assert(SelectorName<kName>::kArity == sizeof...(Args), "the selector takes another number of arguments");
    detail::note<R, kName, std::decay_t<Args>...>(receiver);
    if constexpr (std::is_void_v<R>) {
        sendRaw<void, std::decay_t<Args>...>(detail::receiverOf(receiver), selector.get(), arguments...);
    } else {
        return Native<R>::fromNative(
            sendRaw<R, std::decay_t<Args>...>(detail::receiverOf(receiver), selector.get(), arguments...));
    }
}

/// For methods whose result the caller owns (new…, copy…, mutableCopy…).
template <ObjectWrapper R, typename Receiver, FixedString kName, typename... Args>
R sendOwned(const Receiver& receiver, SelectorName<kName> selector, const Args&... arguments) {
    static_assert(SelectorName<kName>::kArity == sizeof...(Args), "the selector takes another number of arguments");
    detail::note<R, kName, std::decay_t<Args>...>(receiver);
    return R(kAdopt, sendRaw<R, std::decay_t<Args>...>(detail::receiverOf(receiver), selector.get(), arguments...));
}

/// A new W: alloc, then `init`. Empty when the initialiser fails or the system has no such class.
template <ObjectWrapper W, FixedString kName, typename... Args>
W create(SelectorName<kName> init, const Args&... arguments) {
    static_assert(SelectorName<kName>::kArity == sizeof...(Args), "the selector takes another number of arguments");
    detail::noteMessage<W, kName, Id, std::decay_t<Args>...>();
    const RawObject blank = sendRaw<Id>(detail::receiverOf(ClassOf<W>{}), SelectorName<"alloc">::get());
    return W(kAdopt, sendRaw<Id, std::decay_t<Args>...>(blank, init.get(), arguments...));
}
template <ObjectWrapper W>
W create() {
    return create<W>(SelectorName<"init">{});
}

/// From inside a method of `implementer`: what its superclass does for the same message.
template <typename R = void, FixedString kName, typename... Args>
R sendSuper(RawObject self, RawClass implementer, SelectorName<kName> selector, const Args&... arguments) {
    static_assert(SelectorName<kName>::kArity == sizeof...(Args), "the selector takes another number of arguments");
    const auto native = [&]() -> NativeType<R> {
#if defined(__APPLE__)
        verifyMessage(self, implementer, selector.get(), MessageEncoding<R, Args...>::kTypes);
        return detail::dispatchSuper<NativeType<R>, NativeType<Args>...>(self, implementer, selector.get(),
                                                                         Native<Args>::toNative(arguments)...);
#else
        return detail::dispatchChecked<NativeType<R>, NativeType<Args>...>(self, implementer, selector.get(),
                                                                           MessageEncoding<R, Args...>::kTypes,
                                                                           Native<Args>::toNative(arguments)...);
#endif
    };
    if constexpr (std::is_void_v<R>) {
        native();
    } else {
        return Native<R>::fromNative(native());
    }
}

/// The object as a T if it is one; empty for nil and for any other class.
template <ObjectWrapper T>
T as(const Id& object) {
    const RawClass wanted = ClassOf<T>::get();
    if (!object || !wanted) return T();
    const bool isKind =
        Native<bool>::fromNative(sendRaw<bool, RawClass>(object.raw(), SelectorName<"isKindOfClass:">::get(), wanted));
    return isKind ? T(object.raw()) : T();
}

}  // namespace morvel::mac::objc
