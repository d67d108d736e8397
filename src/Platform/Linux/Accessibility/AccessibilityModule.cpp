#include "Platform/Linux/Accessibility/AccessibilityModule.h"

#include <dlfcn.h>

#include <filesystem>

namespace morvel::x11 {

namespace {

constexpr const char* kFileName = "morvel-accessibility.so";

std::filesystem::path executableFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

std::filesystem::path modulePath() {
    for (const std::filesystem::path& folder : {executableFolder(), std::filesystem::path(MORVEL_MODULE_FOLDER)}) {
        std::error_code error;
        // A relative path would be looked up wherever the loader likes.
        if (folder.is_absolute() && std::filesystem::exists(folder / kFileName, error)) return folder / kFileName;
    }
    return {};
}

}  // namespace

std::unique_ptr<AccessibilityBridge> loadAccessibilityModule(const std::string& busAddress, Log& log) {
    const std::filesystem::path path = modulePath();
    if (path.empty()) {
        log.error(std::string("The session asks for accessibility, but there is no ") + kFileName + ".");
        return nullptr;
    }
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void* entry = library ? dlsym(library, kMakeAccessibilityBridge) : nullptr;
    if (!entry) {
        log.error(std::string("The accessibility module cannot be loaded: ") + dlerror());
        return nullptr;
    }
    std::unique_ptr<AccessibilityBridge> bridge(
        reinterpret_cast<MakeAccessibilityBridge*>(entry)(MORVEL_VERSION, busAddress.c_str()));
    if (!bridge) log.error("The accessibility module is of another version or cannot reach its bus.");
    return bridge;
}

}  // namespace morvel::x11
