// The installed applications as desktop entries, found by identifier or by what a window says of its program.
#pragma once

#include <gio/gdesktopappinfo.h>

#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "Platform/Linux/System/GLibPointers.h"

namespace morvel::x11 {

struct DesktopEntry {
    std::string id;    ///< without ".desktop"
    std::string name;  ///< in the person's language
    std::string path;
    std::string icon;             ///< a name of the icon theme or an absolute path; empty where it has none
    std::string newWindowAction;  ///< the additional action that opens a window; empty where it has none
};

/// Main thread only. Entries are read when they are first asked for. All of them are read only when a program's name
/// alone does not lead to one, and again after what is installed has changed.
class DesktopEntries {
public:
    DesktopEntries();
    ~DesktopEntries();
    DesktopEntries(const DesktopEntries&) = delete;
    DesktopEntries& operator=(const DesktopEntries&) = delete;

    std::optional<DesktopEntry> find(const std::string& id);
    /// The application that files of this content type are opened with, as its windows are known.
    std::optional<DesktopEntry> findForType(const std::string& contentType);
    std::optional<DesktopEntry> findForClass(const std::string& classInstance, const std::string& className);

private:
    /// Identifiers by a name in lower case, the likeliest first. Not all are of applications that can be started.
    using Names = std::unordered_map<std::string, std::vector<std::string>>;
    struct Index {
        Names byStartupClass, byProgram;
    };
    static void installedChanged(GAppInfoMonitor*, gpointer self);
    const Index& index();
    std::optional<DesktopEntry> findNamed(const Names& names, const std::string& name);

    GPtr<GAppInfoMonitor> monitor_;
    gulong handler_ = 0;
    std::optional<Index> index_;
    std::map<std::pair<std::string, std::string>, std::optional<std::string>> classes_;  // answers given, by id
};

}  // namespace morvel::x11
