#include "Platform/Linux/System/Module.h"

#include <dlfcn.h>

#include "Platform/Linux/System/ProgramParts.h"

namespace morvel::x11 {

void* loadModule(const char* fileName, const char* entry, Log& log) {
    const std::filesystem::path path = programPart(fileName);
    if (path.empty()) {
        log.error(std::string("There is no ") + fileName + ".");
        return nullptr;
    }
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void* found = library ? dlsym(library, entry) : nullptr;
    if (!found) log.error(std::string("A module cannot be loaded: ") + dlerror());
    return found;
}

}  // namespace morvel::x11
