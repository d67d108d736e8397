#include "Platform/Linux/Applications/DesktopEntries.h"

#include <algorithm>
#include <set>

#include "Platform/Linux/Applications/EntryCandidates.h"
#include "Platform/Linux/Applications/EntryFiles.h"

namespace morvel::x11 {

namespace {

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

struct FreeKeyFile {
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
};

/// What a desktop entry's file says under some keys; all are empty where it cannot be read.
class EntryKeys {
public:
    explicit EntryKeys(const std::string& path) : file_(g_key_file_new()) {
        g_key_file_load_from_file(file_.get(), path.c_str(), G_KEY_FILE_NONE, nullptr);
    }
    std::string text(const char* key) const {
        const GText value(g_key_file_get_string(file_.get(), G_KEY_FILE_DESKTOP_GROUP, key, nullptr));
        return textOrEmpty(value.get());
    }
    bool isSet(const char* key) const {
        return g_key_file_get_boolean(file_.get(), G_KEY_FILE_DESKTOP_GROUP, key, nullptr) != FALSE;
    }

private:
    std::unique_ptr<GKeyFile, FreeKeyFile> file_;
};

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
    const GPtr<GDesktopAppInfo> info(g_desktop_app_info_new((id + std::string(kEntrySuffix)).c_str()));
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
    return shown ? shown : find(entryIdentifier(textOrEmpty(g_app_info_get_id(handler.get()))));
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
        found = findNamed(index().byStartupClass, name);
        if (!found) found = findNamed(index().byProgram, name);
    }
    classes_[key] = found ? std::optional(found->id) : std::nullopt;
    return found;
}

std::optional<DesktopEntry> DesktopEntries::findNamed(const Names& names, const std::string& name) {
    const auto ids = names.find(name);
    if (ids == names.end()) return std::nullopt;
    for (const std::string& id : ids->second)
        if (auto entry = find(id)) return entry;
    return std::nullopt;
}

// GLib's list of all applications would do, but it looks for each one's program, and brings the modules of GVfs into
// the process (half a megabyte) for an entry whose icon is a file. Here only a few keys count.
const DesktopEntries::Index& DesktopEntries::index() {
    if (index_) return *index_;
    Index& index = index_.emplace();
    std::set<std::string> seen;
    for (const std::string& folder : entryFolders()) {
        auto files = entryFiles(folder).value_or(std::vector<std::string>());
        std::ranges::sort(files);
        for (const std::string& file : files) {
            const std::string id = entryIdentifier(file);
            if (!seen.insert(id).second) continue;
            const EntryKeys keys(folder + "/" + file);
            const std::string wmClass = keys.text(G_KEY_FILE_DESKTOP_KEY_STARTUP_WM_CLASS);
            const std::string program = execProgram(keys.text(G_KEY_FILE_DESKTOP_KEY_EXEC));
            if (!wmClass.empty()) index.byStartupClass[foldCase(wmClass)].push_back(id);
            // An entry that menus do not show is a helper of another one.
            if (!program.empty() && !keys.isSet(G_KEY_FILE_DESKTOP_KEY_NO_DISPLAY))
                index.byProgram[foldCase(program)].push_back(id);
        }
    }
    return index;
}

}  // namespace morvel::x11
