#include "App/SettingsSources.h"

#include <filesystem>
#include <map>
#include <memory>

namespace morvel {

namespace {

/// What people call the application: as it says where it is installed, or as it calls itself while it runs.
std::string nameOf(const Platform& platform, const std::string& bundleID) {
    const auto path = platform.workspace.locate(bundleID);
    const auto bundle = path ? platform.installedApplications->bundle(*path) : std::nullopt;
    if (bundle && bundle->displayName) return *bundle->displayName;
    if (bundle && bundle->name) return *bundle->name;
    for (const RunningApplication& application : platform.workspace.runningApplications())
        if (application.bundleID == bundleID && application.localizedName) return *application.localizedName;
    return bundleID;
}

/// The notices of a published value or of a setting.
template <class Source>
std::function<Subscription(std::function<void()>)> changesOf(const Source& source) {
    return [&source](std::function<void()> changed) {
        return source.subscribe([changed = std::move(changed)](const auto&) { changed(); }, Current::Skip);
    };
}

EditableList listOf(PinnedAppsStore& store) {
    const auto items = [&store] {
        std::vector<ListedItem> listed;
        for (const PinnedItem& item : store.pinnedItems().value()) {
            const bool isApp = item.kind == PinnedItem::Kind::App;
            listed.push_back({isApp ? ListedItem::Kind::Application : ListedItem::Kind::Folder, item.id(),
                              item.identifier, item.displayName});
        }
        return listed;
    };
    const auto pinFolder = [&store](const std::string& path) {
        const std::filesystem::path folder(path);
        store.pinFolder(path, folder.has_filename() ? folder.filename().string() : path);
    };
    return {items, [&store](const std::string& id) { store.unpin(id); }, pinFolder, changesOf(store.pinnedItems())};
}

EditableList listOf(ClampingBlacklist& blacklist, const std::function<std::string(const std::string&)>& name) {
    const auto items = [&blacklist, name] {
        std::vector<ListedItem> listed;
        for (const std::string& bundleID : blacklist.bundleIDs().value())
            listed.push_back({ListedItem::Kind::Application, bundleID, bundleID, name(bundleID)});
        return listed;
    };
    return {items, [&blacklist](const std::string& bundleID) { blacklist.remove(bundleID); },
            [&blacklist](const std::string& bundleID) { blacklist.add(bundleID); }, changesOf(blacklist.bundleIDs())};
}

UpdateState stateOf(const UpdateController& controller) {
    const UpdateController::Status& status = controller.status().value();
    if (std::holds_alternative<UpdateController::Checking>(status)) return {UpdateState::Kind::Checking};
    if (std::holds_alternative<UpdateController::UpToDate>(status)) return {UpdateState::Kind::UpToDate};
    if (std::holds_alternative<UpdateController::Failed>(status)) return {UpdateState::Kind::Failed};
    const auto* release = std::get_if<RemoteVersion>(&status);
    if (!release) return {UpdateState::Kind::Idle};
    return {UpdateState::Kind::Available, release->version.description(), release->build,
            release->downloadURL,         release->releaseNotesURL,       !controller.updateAvailable()};
}

UpdateSource updatesOf(UpdateController& controller) {
    const auto skip = [&controller] {
        if (const auto* release = std::get_if<RemoteVersion>(&controller.status().value()))
            controller.skip(release->version);
    };
    return {[&controller] { return stateOf(controller); }, [&controller] { controller.checkNow(); }, skip,
            changesOf(controller.status())};
}

}  // namespace

SettingsSources settingsSources(const Platform& platform, SettingsStore& settings, PinnedAppsStore& pinnedItems,
                                ClampingBlacklist& clampingBlacklist, UpdateController& updates) {
    // The window asks for all names with each change in it, and telling one may read a file. Of what is not known yet,
    // the name may be known later.
    const auto name = [&platform,
                       known = std::make_shared<std::map<std::string, std::string>>()](const std::string& bundleID) {
        if (const auto found = known->find(bundleID); found != known->end()) return found->second;
        std::string told = nameOf(platform, bundleID);
        if (told != bundleID) (*known)[bundleID] = told;
        return told;
    };
    const auto openPage = [&platform](const std::string& page) { platform.workspace.openPage(page); };
    return {settings,
            platform.features,
            platform.icons,
            listOf(pinnedItems),
            listOf(clampingBlacklist, name),
            updatesOf(updates),
            name,
            openPage,
            platform.wallClock};
}

}  // namespace morvel
