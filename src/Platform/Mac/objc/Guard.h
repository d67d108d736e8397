// The border that no C++ exception may cross: every function of ours that the system calls runs its body in `guarded`.
#pragma once

#include <exception>
#include <type_traits>

namespace morvel::mac::objc {

/// Writes a fault to the system log. `where` is the selector or callback that threw.
void reportEscapedException(const char* where, const char* what) noexcept;

/// Runs `body`; when it throws, logs the fault and returns a zero value, because the system's frames between us and any
/// handler cannot be unwound.
template <typename Body>
std::invoke_result_t<Body> guarded(const char* where, Body&& body) noexcept {
    using Result = std::invoke_result_t<Body>;
    try {
        return body();
    } catch (const std::exception& error) {
        reportEscapedException(where, error.what());
    } catch (...) {
        reportEscapedException(where, "not a standard exception");
    }
    return Result();
}

}  // namespace morvel::mac::objc
