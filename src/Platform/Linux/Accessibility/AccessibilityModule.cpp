#include "Platform/Linux/Accessibility/AccessibilityModule.h"

#include <dlfcn.h>

#include "Platform/Linux/System/ProgramParts.h"

namespace morvel::x11 {

namespace {

constexpr const char* kFileName = "morvel-accessibility.so";

}  // namespace

std::unique_ptr<AccessibilityBridge> loadAccessibilityModule(const std::string& busAddress, Log& log) {
    const std::filesystem::path path = programPart(kFileName);
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
