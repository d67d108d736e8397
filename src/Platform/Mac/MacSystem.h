// The host's system half: every seam but the views', in the order in which they need one another.
#pragma once

#include "Platform/Mac/Applications/MacWorkspace.h"
#include "Platform/Mac/Icons/MacIcons.h"
#include "Platform/Mac/Screens/MacScreens.h"
#include "Platform/Mac/System/MacDefaults.h"
#include "Platform/Mac/System/MacLog.h"
#include "Platform/Mac/System/MacLoginItem.h"
#include "Platform/Mac/System/MacMainLoop.h"
#include "Platform/Mac/System/MacShell.h"
#include "Platform/Mac/Web/MacHttp.h"
#include "Platform/Mac/Windows/MacAccessibility.h"
#include "Platform/Mac/Windows/MacWindowServer.h"

namespace morvel::mac {

/// Made on the main thread once the application object exists.
class MacSystem {
public:
    MacSystem() : accessibility_(mainLoop_), windowServer_(log_), http_(mainLoop_), loginItem_(log_) {}

    MainLoop& mainLoop() { return mainLoop_; }
    Log& log() { return log_; }
    Accessibility& accessibility() { return accessibility_; }
    WindowServer& windowServer() { return windowServer_; }
    Workspace& workspace() { return workspace_; }
    Screens& screens() { return screens_; }
    UserDefaults& defaults() { return defaults_; }
    Icons& icons() { return icons_; }
    HttpClient& httpClient() { return http_; }
    LoginItem& loginItem() { return loginItem_; }
    ShellCommands& shell() { return shell_; }

private:
    MacMainLoop mainLoop_;
    MacLog log_;
    MacAccessibility accessibility_;
    MacWindowServer windowServer_;
    MacWorkspace workspace_;
    MacScreens screens_;
    MacDefaults defaults_;
    MacIcons icons_;
    MacHttp http_;
    MacLoginItem loginItem_;
    MacShell shell_;
};

}  // namespace morvel::mac
