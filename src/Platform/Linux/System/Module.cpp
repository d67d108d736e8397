#include "Platform/Linux/System/Module.h"

#include <dlfcn.h>

#include <filesystem>

namespace morvel::x11 {

namespace {

std::filesystem::path executableFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

std::filesystem::path modulePath(const char* fileName) {
    for (const std::filesystem::path& folder : {executableFolder(), std::filesystem::path(MORVEL_MODULE_FOLDER)}) {
        std::error_code error;
        // A relative path would be looked up wherever the loader likes.
        if (folder.is_absolute() && std::filesystem::exists(folder / fileName, error)) return folder / fileName;
    }
    return {};
}

}  // namespace

void* loadModule(const char* fileName, const char* entry, Log& log) {
    const std::filesystem::path path = modulePath(fileName);
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
