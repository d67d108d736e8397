// The bar on Linux/X11: puts the host together, hands it to the application, and turns the main loop until the end.
#include <csignal>
#include <filesystem>
#include <memory>

#include "App/AppDelegate.h"
#include "Platform/Linux/Accessibility/AccessibilityService.h"
#include "Platform/Linux/Applications/Autostart.h"
#include "Platform/Linux/Applications/InstalledEntries.h"
#include "Platform/Linux/Applications/SingleInstance.h"
#include "Platform/Linux/System/StderrLog.h"
#include "Platform/Linux/System/ThreadQueue.h"
#include "Platform/Linux/UI/TextLayouts.h"
#include "Platform/Linux/UI/XToolkit.h"
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
    GLibMainLoop loop;
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
    FormService forms(log);
    toolkit.setFormService(&forms);
    AppDelegate delegate({loop,
                          log,
                          system.accessibility(),
                          system.windowServer(),
                          system.workspace(),
                          system.screens(),
                          system.defaults(),
                          system.icons(),
                          toolkit,
                          [&loop] { loop.quit(); },
                          [](const std::string&) { return std::make_unique<ThreadQueue>(); },
                          std::make_shared<InstalledEntries>(),
                          {},
                          &autostart});
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
    return morvel::x11::run();
}
