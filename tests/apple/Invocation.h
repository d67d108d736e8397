// One message on its way to what stands for the system's implementation: typed access to its arguments and its result.
#pragma once

#include <cstring>
#include <functional>
#include <string>

#include "Faults.h"
#include "Objects.h"
#include "Platform/Mac/objc/Native.h"

namespace morvel::mac::checked {

struct MethodFact;

class Invocation {
public:
    Invocation(RawObject receiver, std::string selector, const objc::MessageTypes& types, void** arguments,
               void* result)
        : receiver_(receiver), selector_(std::move(selector)), types_(types), arguments_(arguments), result_(result) {}

    RawObject receiver() const { return receiver_; }
    const std::string& selector() const { return selector_; }
    std::size_t count() const { return types_.count; }
    std::string resultEncoding() const { return types_.result; }
    /// The argument as its native type; a zero value if the message carries another type there.
    template <typename T>
    objc::NativeType<T> argument(std::size_t index) const {
        objc::NativeType<T> value{};
        if (index < types_.count && objc::Encode<T>::value.view() == types_.arguments[index]) {
            std::memcpy(&value, arguments_[index], sizeof value);
        }
        return value;
    }
    RawObject object(std::size_t index) const { return argument<RawObject>(index); }
    Value stored(std::size_t index) const;

    /// Ignored when the message's result has another type, which the runtime has reported by then.
    template <typename T>
    void answer(const T& value) {
        if (!result_ || objc::Encode<T>::value.view() != types_.result) return;
        const objc::NativeType<T> native = objc::Native<T>::toNative(value);
        std::memcpy(result_, &native, sizeof native);
    }
    /// An object the caller need not release.
    void answerObject(const Id& object);
    void answerStored(const Value& value);

private:
    RawObject receiver_;
    std::string selector_;
    const objc::MessageTypes& types_;
    void** arguments_;
    void* result_;
};

using Handler = std::function<void(Invocation&)>;

/// The size of a value of an encoding that messages carry.
std::size_t sizeOfEncoding(const std::string& encoding);

}  // namespace morvel::mac::checked
