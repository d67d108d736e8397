#include "App/SettingsSources.h"

namespace morvel {

namespace {

std::string nameOf(Workspace& workspace, const std::string& bundleID) {
    for (const RunningApplication& application : workspace.runningApplications())
        if (application.bundleID == bundleID && application.localizedName) return *application.localizedName;
    return bundleID;
}

EditableList listOf(ClampingBlacklist& blacklist, Workspace& workspace) {
    const auto items = [&blacklist, &workspace] {
        std::vector<ListedItem> listed;
        for (const std::string& bundleID : blacklist.bundleIDs().value())
            listed.push_back({ListedItem::Kind::Application, bundleID, bundleID, nameOf(workspace, bundleID)});
        return listed;
    };
    return {.items = items,
            .remove = [&blacklist](const std::string& bundleID) { blacklist.remove(bundleID); },
            .add = [&blacklist](const std::string& bundleID) { blacklist.add(bundleID); },
            .observe =
                [&blacklist](std::function<void()> changed) {
                    return blacklist.bundleIDs().subscribe([changed = std::move(changed)](const auto&) { changed(); },
                                                           Current::Skip);
                }};
}

}  // namespace

SettingsSources settingsSources(const Platform& platform, SettingsStore& settings,
                                ClampingBlacklist& clampingBlacklist) {
    return {.settings = settings,
            .features = platform.features,
            .icons = platform.icons,
            .clampingBlacklist = listOf(clampingBlacklist, platform.workspace),
            .nameOf = [&workspace = platform.workspace](const std::string& id) { return nameOf(workspace, id); },
            .openPage = [&workspace = platform.workspace](const std::string& page) { workspace.openPage(page); },
            .now = [] { return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now()); }};
}

}  // namespace morvel
