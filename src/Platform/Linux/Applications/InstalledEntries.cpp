#include "Platform/Linux/Applications/InstalledEntries.h"

#include <gio/gdesktopappinfo.h>

#include <filesystem>

#include "Platform/Linux/Applications/EntryFiles.h"
#include "Platform/Linux/System/GLibPointers.h"

namespace morvel::x11 {

namespace {

/// Texts of files may be in any encoding.
GText validText(const std::string& text) {
    return GText(g_utf8_make_valid(text.c_str(), static_cast<gssize>(text.size())));
}

std::string sortKey(const std::string& name) {
    const GText folded(g_utf8_casefold(validText(name).get(), -1));
    const GText key(g_utf8_collate_key_for_filename(folded.get(), -1));
    return key.get();
}

std::optional<std::string> textOrNothing(const char* text) {
    return text ? std::optional<std::string>(text) : std::nullopt;
}

/// The listener behind a token; it dies with the monitor's signal handler.
struct ChangeListener {
    std::function<void()> changed;

    static void notify(GAppInfoMonitor*, gpointer self) { static_cast<ChangeListener*>(self)->changed(); }
    static void destroy(gpointer self, GClosure*) { delete static_cast<ChangeListener*>(self); }
};

}  // namespace

std::vector<std::string> InstalledEntries::folders() {
    return entryFolders();
}

std::string_view InstalledEntries::suffix() {
    return kEntrySuffix;
}

std::optional<std::vector<std::string>> InstalledEntries::list(const std::string& folder) {
    return entryFiles(folder);
}

std::string InstalledEntries::identifierOf(const std::string& path) {
    for (const std::string& folder : folders())
        if (path.starts_with(folder + "/")) return entryIdentifier(path.substr(folder.size() + 1));
    return entryIdentifier(std::filesystem::path(path).filename().string());
}

std::optional<ApplicationBundle> InstalledEntries::bundle(const std::string& path) {
    if (!path.ends_with(kEntrySuffix) || path.find('\0') != std::string::npos) return std::nullopt;
    const std::string id = identifierOf(path);
    const GPtr<GDesktopAppInfo> info(g_desktop_app_info_new((id + std::string(kEntrySuffix)).c_str()));
    if (!info || g_desktop_app_info_get_is_hidden(info.get())) return std::nullopt;
    auto* app = G_APP_INFO(info.get());
    return ApplicationBundle{.identifier = id,
                             .displayName = textOrNothing(g_app_info_get_display_name(app)),
                             .name = textOrNothing(g_app_info_get_name(app)),
                             .isHidden = !g_app_info_should_show(app)};
}

int InstalledEntries::compareNames(const std::string& a, const std::string& b) {
    const int order = sortKey(a).compare(sortKey(b));
    return order != 0 ? order : a.compare(b);
}

Subscription InstalledEntries::observeChanges(std::function<void()> changed) {
    GAppInfoMonitor* monitor = g_app_info_monitor_get();
    auto* listener = new ChangeListener{std::move(changed)};
    const gulong handler = g_signal_connect_data(monitor, "changed", G_CALLBACK(&ChangeListener::notify), listener,
                                                 &ChangeListener::destroy, G_CONNECT_DEFAULT);
    return Subscription([monitor, handler] {
        g_signal_handler_disconnect(monitor, handler);
        g_object_unref(monitor);
    });
}

}  // namespace morvel::x11
