#include "App/SettingsSources.h"

namespace morvel {

namespace {

std::string nameOf(Workspace& workspace, const std::string& bundleID) {
    for (const RunningApplication& application : workspace.runningApplications())
        if (application.bundleID == bundleID && application.localizedName) return *application.localizedName;
    return bundleID;
}

}  // namespace

SettingsSources settingsSources(const Platform& platform, SettingsStore& settings) {
    return {.settings = settings,
            .features = platform.features,
            .icons = platform.icons,
            .nameOf = [&workspace = platform.workspace](const std::string& id) { return nameOf(workspace, id); },
            .openPage = [&workspace = platform.workspace](const std::string& page) { workspace.openPage(page); },
            .now = [] { return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now()); }};
}

}  // namespace morvel
