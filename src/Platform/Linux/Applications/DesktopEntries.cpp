#include "Platform/Linux/Applications/DesktopEntries.h"

#include <string_view>

#include "Platform/Linux/Applications/EntryCandidates.h"

namespace morvel::x11 {

namespace {

constexpr std::string_view kSuffix = ".desktop";
constexpr size_t kMostAnswers = 256;  // programs invent names without end; the answers are cheap to find again

std::string textOrEmpty(const char* text) {
    return text ? text : "";
}

std::string iconOf(GAppInfo* info) {
    GIcon* icon = g_app_info_get_icon(info);  // the entry's own
    if (!icon) return {};
    const GText text(g_icon_to_string(icon));
    return textOrEmpty(text.get());
}

/// There is no agreed name for it; these are in use.
std::string newWindowActionOf(GDesktopAppInfo* info) {
    for (const gchar* const* action = g_desktop_app_info_list_actions(info); *action; ++action) {
        std::string name = foldCase(*action);
        std::erase_if(name, [](char c) { return c == '-' || c == '_'; });
        if (name == "newwindow" || name == "openwindow" || name == "opennewwindow") return *action;
    }
    return {};
}

std::string withoutSuffix(std::string id) {
    if (id.ends_with(kSuffix)) id.resize(id.size() - kSuffix.size());
    return id;
}

}  // namespace

DesktopEntries::DesktopEntries() : monitor_(g_app_info_monitor_get()) {
    handler_ = g_signal_connect(monitor_.get(), "changed", G_CALLBACK(installedChanged), this);
}

DesktopEntries::~DesktopEntries() {
    g_signal_handler_disconnect(monitor_.get(), handler_);
}

void DesktopEntries::installedChanged(GAppInfoMonitor*, gpointer self) {
    auto& entries = *static_cast<DesktopEntries*>(self);
    entries.index_.reset();
    entries.classes_.clear();
}

std::optional<DesktopEntry> DesktopEntries::find(const std::string& id) {
    if (id.empty() || id.find('\0') != std::string::npos) return std::nullopt;
    const GPtr<GDesktopAppInfo> info(g_desktop_app_info_new((id + std::string(kSuffix)).c_str()));
    if (!info || g_desktop_app_info_get_is_hidden(info.get())) return std::nullopt;
    auto* app = G_APP_INFO(info.get());
    return DesktopEntry{id, textOrEmpty(g_app_info_get_display_name(app)),
                        textOrEmpty(g_desktop_app_info_get_filename(info.get())), iconOf(app),
                        newWindowActionOf(info.get())};
}

std::optional<DesktopEntry> DesktopEntries::findForType(const std::string& contentType) {
    const GPtr<GAppInfo> handler(g_app_info_get_default_for_type(contentType.c_str(), FALSE));
    if (!handler) return std::nullopt;
    auto* info = G_DESKTOP_APP_INFO(handler.get());
    // What menus do not show may be a second entry of the program, made for this type alone.
    const std::string program = execProgram(textOrEmpty(g_app_info_get_commandline(handler.get())));
    const auto shown = g_desktop_app_info_get_nodisplay(info) ? findForClass(program, program) : std::nullopt;
    return shown ? shown : find(withoutSuffix(textOrEmpty(g_app_info_get_id(handler.get()))));
}

std::optional<DesktopEntry> DesktopEntries::findForClass(const std::string& classInstance,
                                                         const std::string& className) {
    const auto key = std::pair(classInstance, className);
    if (const auto known = classes_.find(key); known != classes_.end())
        return known->second ? find(*known->second) : std::nullopt;
    if (classes_.size() >= kMostAnswers) classes_.clear();

    std::optional<DesktopEntry> found;
    for (const std::string& id : entryCandidates(classInstance, className))
        if (!found) found = find(id);
    for (const std::string& name : {foldCase(classInstance), foldCase(className)}) {
        if (found || name.empty()) continue;
        for (const auto* map : {&index().byStartupClass, &index().byProgram})
            if (const auto entry = map->find(name); !found && entry != map->end()) found = find(entry->second);
    }
    classes_[key] = found ? std::optional(found->id) : std::nullopt;
    return found;
}

const DesktopEntries::Index& DesktopEntries::index() {
    if (index_) return *index_;
    Index& index = index_.emplace();
    GList* all = g_app_info_get_all();
    for (GList* item = all; item; item = item->next) {
        auto* info = G_DESKTOP_APP_INFO(item->data);
        const std::string id = withoutSuffix(textOrEmpty(g_app_info_get_id(G_APP_INFO(info))));
        const std::string wmClass = textOrEmpty(g_desktop_app_info_get_startup_wm_class(info));
        const std::string program = execProgram(textOrEmpty(g_app_info_get_commandline(G_APP_INFO(info))));
        if (!wmClass.empty()) index.byStartupClass.try_emplace(foldCase(wmClass), id);
        // An entry that menus do not show is a helper of another one.
        if (!program.empty() && !g_desktop_app_info_get_nodisplay(info))
            index.byProgram.try_emplace(foldCase(program), id);
    }
    g_list_free_full(all, g_object_unref);
    return index;
}

}  // namespace morvel::x11
