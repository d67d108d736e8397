#include "Platform/Linux/Icons/RenderedIcons.h"

#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

#include "Platform/Linux/Icons/ImageLoading.h"
#include "Platform/Linux/System/NameUuid.h"

namespace morvel::x11 {

namespace {

namespace fs = std::filesystem;

// Far more than anybody has; at this number the cache starts afresh, which also drops what is out of date.
constexpr size_t kMostPictures = 1000;

// Names the file, its content's moment and the size, so that a changed icon is another picture.
std::optional<std::string> pictureName(const std::string& path, int size) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    const auto moment = std::to_string(status.st_mtim.tv_sec) + "." + std::to_string(status.st_mtim.tv_nsec);
    return nameUuid(path + "\n" + moment + "\n" + std::to_string(size)) + ".png";
}

std::shared_ptr<const XImage> readPicture(const std::string& path, int size) {
    SurfacePtr surface(cairo_image_surface_create_from_png(path.c_str()));
    const int width = cairo_image_surface_get_width(surface.get());
    const int height = cairo_image_surface_get_height(surface.get());
    const bool isSound = cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS && width > 0 && height > 0 &&
                         width <= size && height <= size;
    if (!isSound) return nullptr;
    return std::make_shared<XImage>(std::move(surface), Size{double(width), double(height)});
}

void startAfreshWhenFull(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> pictures;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        pictures.push_back(entry->path());
    if (pictures.size() < kMostPictures) return;
    for (const fs::path& picture : pictures) fs::remove(picture, error);
}

// Under another name first: a program that ends half-way, or a second one, leaves no half picture.
void keepPicture(const XImage& image, const fs::path& path) {
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    startAfreshWhenFull(path.parent_path());
    const std::string temporary = path.string() + ".new";
    const bool isWritten = cairo_surface_write_to_png(image.surface(), temporary.c_str()) == CAIRO_STATUS_SUCCESS;
    if (!isWritten || std::rename(temporary.c_str(), path.c_str()) != 0) fs::remove(temporary, error);
}

}  // namespace

std::shared_ptr<const XImage> RenderedIcons::load(const std::string& path, int size) const {
    const auto name = path.ends_with(".svg") ? pictureName(path, size) : std::nullopt;
    if (!name) return loadImage(path, size);
    const fs::path picture = fs::path(folder_) / *name;
    if (auto kept = readPicture(picture, size)) return kept;
    auto image = loadImage(path, size);
    if (image) keepPicture(*image, picture);
    return image;
}

std::string RenderedIcons::defaultFolder() {
    const char* cache = std::getenv("XDG_CACHE_HOME");
    const char* home = std::getenv("HOME");
    return (cache && cache[0] == '/' ? cache : std::string(home ? home : "") + "/.cache") + "/morvel/icons";
}

}  // namespace morvel::x11
