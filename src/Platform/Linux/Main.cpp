// The bar on Linux/X11: puts the host together, hands it to the application, and turns the main loop until the end.
#include <malloc.h>

#include <csignal>
#include <filesystem>
#include <memory>

#include "App/AppDelegate.h"
#include "Platform/Linux/Accessibility/AccessibilityService.h"
#include "Platform/Linux/Applications/Autostart.h"
#include "Platform/Linux/Applications/InstalledEntries.h"
#include "Platform/Linux/Applications/SingleInstance.h"
#include "Platform/Linux/Forms/FormService.h"
#include "Platform/Linux/NowPlaying/MprisPoller.h"
#include "Platform/Linux/System/ProgramParts.h"
#include "Platform/Linux/System/StderrLog.h"
#include "Platform/Linux/System/ThreadQueue.h"
#include "Platform/Linux/UI/TextLayouts.h"
#include "Platform/Linux/UI/XToolkit.h"
#include "Platform/Linux/Web/FetchClient.h"
#include "Platform/Linux/XSystem.h"

namespace morvel::x11 {
namespace {

constexpr int kExitNoDisplay = 1;
constexpr int kExitDisplayLost = 2;

std::string configFolder() {
    return std::filesystem::path(JsonDefaults::defaultPath()).parent_path().parent_path().string();
}

int run() {
    startReadingFonts();
    StderrLog log;
    // Never destroyed: a thread that is still at work when the program ends may yet post what it has found.
    GLibMainLoop& loop = *new GLibMainLoop;
    const auto connection = XConnection::open("", log, [&] {
        log.error("The X server is gone.");
        loop.quit(kExitDisplayLost);
    });
    if (!connection) {
        log.error("There is no X display to show the bar on.");
        return kExitNoDisplay;
    }
    std::function<void()> openedAgain;
    SingleInstance instance(*connection, [&] {
        if (openedAgain) openedAgain();
    });
    if (!instance.claim()) return 0;
    Autostart autostart(log, configFolder(), Autostart::ownProgram());
    XSystem system(loop, log, *connection, JsonDefaults::defaultPath());
    XToolkit toolkit(*connection, loop, system.screens());
    FetchClient web(loop, programPart(FetchClient::kProgram));
    MprisPoller players(loop, system.workspace());
    FormService forms(log);
    toolkit.setFormService(&forms);
    AppDelegate delegate({.mainLoop = loop,
                          .log = log,
                          .accessibility = system.accessibility(),
                          .windowServer = system.windowServer(),
                          .workspace = system.workspace(),
                          .screens = system.screens(),
                          .defaults = system.defaults(),
                          .icons = system.icons(),
                          .toolkit = toolkit,
                          .terminate = [&loop] { loop.quit(); },
                          .makeWorkQueue = [](const std::string&) { return std::make_unique<ThreadQueue>(); },
                          .installedApplications = std::make_shared<InstalledEntries>(),
                          .wallClock = [] { return Date(std::chrono::system_clock::now()); },
                          .httpClient = web,
                          .programVersion = MORVEL_VERSION,
                          .systemVersion = std::nullopt,
                          .nowPlayingPoller = &players,
                          .loginItem = &autostart});
    openedAgain = [&delegate] { delegate.openSettings(); };
    delegate.applicationDidFinishLaunching();
    AccessibilityService accessibility(loop, log, toolkit);

    // Log-out and Ctrl-C end the program like its own menu does.
    Subscriptions signals;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        signals.push_back(loop.watchSignal(signal, [&loop] { loop.quit(); }));
    const int exitCode = loop.run();
    delegate.applicationWillTerminate();
    return exitCode;
}

}  // namespace
}  // namespace morvel::x11

int main() {
    // Pictures of whole windows are seldom needed and go back to the system, which the library would learn not to do.
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    // What the threads beside the main one allocate is little and seldom; a heap of its own for each wastes more.
    mallopt(M_ARENA_MAX, 1);
    return morvel::x11::run();
}
