// Functions of the system that no header declares, found by name at run time. Any of them may be missing.
#pragma once

namespace morvel::mac {

/// The address of an exported function, or null when this system has none of that name. Looks it up anew at each call:
/// resolve once and keep the answer.
void* systemFunction(const char* name);

/// The same as a function pointer of type T.
template <typename T>
T systemFunctionAs(const char* name) {
    return reinterpret_cast<T>(systemFunction(name));
}

}  // namespace morvel::mac
