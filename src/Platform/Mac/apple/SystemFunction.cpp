// The dynamic linker's default search on Apple systems; elsewhere whoever supplies the system's functions answers.
#include "Platform/Mac/apple/SystemFunction.h"

namespace morvel::mac {

#if defined(__APPLE__)
extern "C" void* dlsym(void* handle, const char* name);

void* systemFunction(const char* name) {
    void* const kDefaultSearch = reinterpret_cast<void*>(-2);  // RTLD_DEFAULT on Apple systems
    return dlsym(kDefaultSearch, name);
}
#else
void* checkedSystemFunction(const char* name);

void* systemFunction(const char* name) {
    return checkedSystemFunction(name);
}
#endif

}  // namespace morvel::mac
