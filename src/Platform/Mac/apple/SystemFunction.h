// Functions of the system that no header declares, found by name at run time. Any of them may be missing.
#pragma once

#include <optional>

namespace morvel::mac {

/// The address of an exported function, or null when this system has none of that name. Looks it up anew at each call:
/// resolve once and keep the answer.
void* systemFunction(const char* name);

/// The same as a function pointer of type T.
template <typename T>
T systemFunctionAs(const char* name) {
    return reinterpret_cast<T>(systemFunction(name));
}

/// A function that is looked up when it is first asked for, and never again. Main thread only.
template <typename Signature>
class LateFunction {
public:
    /// `name` is a literal.
    explicit LateFunction(const char* name) : name_(name) {}

    const char* name() const { return name_; }

    /// Null where this system has no such function.
    Signature* get() {
        if (!address_) address_ = systemFunctionAs<Signature*>(name_);
        return *address_;
    }

private:
    const char* name_;
    std::optional<Signature*> address_;
};

}  // namespace morvel::mac
