// Everything a host offers, gathered once by the host's `main` and handed to the application.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Platform/Accessibility.h"
#include "Platform/Features.h"
#include "Platform/HttpClient.h"
#include "Platform/Icons.h"
#include "Platform/InstalledApplications.h"
#include "Platform/Log.h"
#include "Platform/LoginItem.h"
#include "Platform/MainLoop.h"
#include "Platform/NowPlayingPoller.h"
#include "Platform/Screens.h"
#include "Platform/ScriptRunner.h"
#include "Platform/ShellCommands.h"
#include "Platform/UserDefaults.h"
#include "Platform/WallClock.h"
#include "Platform/WindowServer.h"
#include "Platform/WorkQueue.h"
#include "Platform/Workspace.h"
#include "UI/Toolkit.h"

namespace morvel {

/// The host owns all of these and outlives the application.
struct Platform {
    MainLoop& mainLoop;
    Log& log;
    Accessibility& accessibility;
    WindowServer& windowServer;
    Workspace& workspace;
    Screens& screens;
    UserDefaults& defaults;
    Icons& icons;
    ui::Toolkit& toolkit;
    /// Ends the program: the host leaves its event loop after this turn and then tells the application.
    std::function<void()> terminate;
    MakeWorkQueue makeWorkQueue;
    std::shared_ptr<InstalledApplications> installedApplications;  ///< never null
    WallClock wallClock;
    HttpClient& httpClient;
    /// The version of this program as its package says it; absent where it does not.
    std::optional<std::string> programVersion;
    /// The version of macOS, as in "14.2.1"; absent on other systems.
    std::optional<std::string> systemVersion;
    /// What knows of the media players: a poller of the host's own, or scripts for the players that take them. Where
    /// both are null nothing ever plays.
    NowPlayingPoller* nowPlayingPoller = nullptr;
    std::shared_ptr<ScriptRunner> scriptRunner = nullptr;
    Features features = {};
    /// Null where the program cannot be started at login.
    LoginItem* loginItem = nullptr;
    /// Null where there is no Dock to hide and nothing else that is changed by commands.
    ShellCommands* shellCommands = nullptr;
};

}  // namespace morvel
