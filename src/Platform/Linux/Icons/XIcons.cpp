#include "Platform/Linux/Icons/XIcons.h"

#include <gio/gio.h>
#include <sys/stat.h>

#include "Platform/Linux/Icons/ImageLoading.h"
#include "Platform/Linux/Icons/Symbols.h"

namespace morvel::x11 {

namespace {

constexpr int kIconSize = 48;                   // pixels; the largest that is shown, and the size that every theme has
constexpr uint32_t kLargestProperty = 1 << 18;  // units of four bytes: a picture of 512 by 512

std::vector<std::string> namesOf(GIcon* icon) {
    std::vector<std::string> out;
    if (!icon || !G_IS_THEMED_ICON(icon)) return out;
    for (const char* const* name = g_themed_icon_get_names(G_THEMED_ICON(icon)); name && *name; ++name)
        out.emplace_back(*name);
    return out;
}

}  // namespace

XIcons::XIcons(XConnection& connection, ClientWindows& clients, DesktopEntries& entries)
    : connection_(connection), clients_(clients), entries_(entries) {}

IconTheme& XIcons::theme() {
    if (!theme_) theme_.emplace(IconTheme::systemRoots(), IconTheme::chosenName());
    return *theme_;
}

ui::ImageRef XIcons::namedIcon(const std::vector<std::string>& names) {
    const auto path = theme().find(names, kIconSize);
    return path ? rendered_.load(*path, kIconSize) : nullptr;
}

ui::ImageRef XIcons::entryIcon(const DesktopEntry& entry) {
    if (entry.icon.empty()) return nullptr;
    return entry.icon.front() == '/' ? ui::ImageRef(rendered_.load(entry.icon, kIconSize)) : namedIcon({entry.icon});
}

ui::ImageRef XIcons::applicationIcon(const std::string& bundleID) {
    const auto entry = entries_.find(bundleID);
    return entry ? entryIcon(*entry) : nullptr;
}

ui::ImageRef XIcons::processIcon(ProcessID pid) {
    for (const ClientWindow* client : clients_.all()) {
        if (client->pid != pid) continue;
        if (ui::ImageRef icon = windowIcon(client->window)) return icon;
        if (const auto entry = entries_.findForClass(client->classInstance, client->className))
            if (ui::ImageRef icon = entryIcon(*entry)) return icon;
    }
    return nullptr;
}

ui::ImageRef XIcons::windowIcon(xcb_window_t window) {
    const auto cookie = xcb_get_property(connection_.get(), 0, window, connection_.atoms().netWmIcon, XCB_ATOM_CARDINAL,
                                         0, kLargestProperty);
    const XPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_.get(), cookie, nullptr));
    if (!reply || reply->format != 32) return nullptr;
    const std::span<const uint32_t> property(static_cast<const uint32_t*>(xcb_get_property_value(reply.get())),
                                             reply->value_len);
    const auto chosen = choosePropertyIcon(property, kIconSize);
    return chosen ? makeImage(*chosen) : nullptr;
}

ui::ImageRef XIcons::fileIcon(const std::string& path) {
    constexpr std::string_view kEntrySuffix = ".desktop";
    if (path.ends_with(kEntrySuffix)) {
        const GPtr<GDesktopAppInfo> info(g_desktop_app_info_new_from_filename(path.c_str()));
        GIcon* icon = info ? g_app_info_get_icon(G_APP_INFO(info.get())) : nullptr;
        if (icon && G_IS_FILE_ICON(icon)) {
            const std::unique_ptr<char, decltype(&g_free)> file(g_icon_to_string(icon), &g_free);
            return file ? rendered_.load(file.get(), kIconSize) : nullptr;
        }
        if (icon) return namedIcon(namesOf(icon));
    }
    // By its name and not its content: reading may block on a network folder.
    struct stat status {};
    const bool isFolder = ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    const std::unique_ptr<char, decltype(&g_free)> type(
        isFolder ? g_strdup("inode/directory") : g_content_type_guess(path.c_str(), nullptr, 0, nullptr), &g_free);
    const GPtr<GIcon> icon(g_content_type_get_icon(type.get()));
    auto names = namesOf(icon.get());
    names.emplace_back(isFolder ? "folder" : "text-x-generic");
    return namedIcon(names);
}

ui::ImageRef XIcons::symbol(const std::string& name, double pointSize) {
    return drawSymbol(name, pointSize);
}

ui::ImageRef XIcons::empty(Size size) {
    return emptyImage(size);
}

ui::ImageRef XIcons::baked(const ui::ImageRef& image, Size size) {
    const auto* ours = dynamic_cast<const XImage*>(image.get());
    return ours ? scaled(*ours, size) : nullptr;
}

}  // namespace morvel::x11
