#include "Platform/Linux/System/ProgramParts.h"

namespace morvel::x11 {

namespace {

std::filesystem::path executableFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

}  // namespace

std::filesystem::path programPart(const char* fileName) {
    for (const std::filesystem::path& folder : {executableFolder(), std::filesystem::path(MORVEL_MODULE_FOLDER)}) {
        std::error_code error;
        // A relative path would be looked up wherever the loader likes.
        if (folder.is_absolute() && std::filesystem::exists(folder / fileName, error)) return folder / fileName;
    }
    return {};
}

}  // namespace morvel::x11
