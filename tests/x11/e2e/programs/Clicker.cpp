// The bar, which clicks one of its pinned items by itself: MORVEL_CLICK is "click" or "new", a kind ("app" or
// "folder"), an identifier and the number of the monitor from the left, separated by blanks. Each SIGUSR1 is a click.
#include <csignal>
#include <cstdlib>
#include <memory>
#include <sstream>

#include "App/AppDelegate.h"
#include "Platform/Linux/Applications/InstalledEntries.h"
#include "Platform/Linux/System/StderrLog.h"
#include "Platform/Linux/System/ThreadQueue.h"
#include "Platform/Linux/UI/XToolkit.h"
#include "Platform/Linux/XSystem.h"

namespace morvel::x11 {
namespace {

void click(AppDelegate& delegate, Screens& screens) {
    std::istringstream words(std::getenv("MORVEL_CLICK"));
    std::string how, kind, identifier;
    size_t monitor = 0;
    words >> how >> kind >> identifier >> monitor;
    const PinnedItem item = kind == "app" ? PinnedItem::app(identifier, "") : PinnedItem::folder(identifier, "");
    const DisplayID display = screens.screens().at(monitor).displayID.value();
    PinnedItemLauncher& launcher = *delegate.pinnedItemLauncher();
    how == "new" ? launcher.launchNewInstance(item, display) : launcher.click(item, display);
}

int run() {
    StderrLog log;
    GLibMainLoop loop;
    const auto connection = XConnection::open("", log, [&loop] { loop.quit(2); });
    if (!connection) return 1;
    XSystem system(loop, log, *connection, JsonDefaults::defaultPath());
    XToolkit toolkit(*connection, loop, system.screens());
    AppDelegate delegate({loop, log, system.accessibility(), system.windowServer(), system.workspace(),
                          system.screens(), system.defaults(), system.icons(), toolkit, [&loop] { loop.quit(); },
                          [](const std::string&) { return std::make_unique<ThreadQueue>(); },
                          std::make_shared<InstalledEntries>()});
    delegate.applicationDidFinishLaunching();
    const Subscription end = loop.watchSignal(SIGTERM, [&loop] { loop.quit(); });
    const Subscription clicks = loop.watchSignal(SIGUSR1, [&] { click(delegate, system.screens()); });
    const int code = loop.run();
    delegate.applicationWillTerminate();
    return code;
}

}  // namespace
}  // namespace morvel::x11

int main() {
    return morvel::x11::run();
}
