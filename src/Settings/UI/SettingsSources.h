// What the settings window shows and changes, and whom it asks for it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Platform/Features.h"
#include "Platform/Icons.h"
#include "Settings/SettingsStore.h"
#include "Util/Subscription.h"

namespace morvel {

/// A row of a list of applications or folders.
struct ListedItem {
    enum class Kind { Application, Folder };
    Kind kind = Kind::Application;
    std::string id;          ///< among the list's items
    std::string identifier;  ///< the bundle identifier or the path
    std::string name;
};

/// A list that is kept elsewhere. Without its functions it is not offered.
struct EditableList {
    std::function<std::vector<ListedItem>()> items;
    std::function<void(const std::string& id)> remove;
    /// A bundle identifier or the path of a folder.
    std::function<void(const std::string& identifier)> add;
    std::function<Subscription(std::function<void()> changed)> observe;
};

/// What the search for a newer release has come to.
struct UpdateState {
    enum class Kind { Idle, Checking, UpToDate, Available, Failed };
    Kind kind = Kind::Idle;
    // Of the available release.
    std::string version = {};
    std::string build = {};
    std::string downloadPage = {};
    std::string notesPage = {};
    bool isSkipped = false;
};

/// Without its functions nothing is said of updates.
struct UpdateSource {
    std::function<UpdateState()> state;
    std::function<void()> checkNow;
    std::function<void()> skip;  ///< the available release
    std::function<Subscription(std::function<void()> changed)> observe;
};

/// All that is referred to outlives the window.
struct SettingsSources {
    SettingsStore& settings;
    Features features;
    Icons& icons;
    EditableList pinnedItems = {};
    EditableList clampingBlacklist = {};
    UpdateSource updates = {};
    /// What people call an application; its identifier where that is not known.
    std::function<std::string(const std::string& bundleID)> nameOf = {};
    std::function<void(const std::string& httpsAddress)> openPage = {};
    std::function<Date()> now = {};
};

}  // namespace morvel
