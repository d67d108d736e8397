#include "Platform/Linux/Applications/FileManager.h"

#include <gio/gio.h>

#include <memory>

#include "Platform/Linux/System/BusCalls.h"
#include "Platform/Linux/System/GLibPointers.h"

namespace morvel::x11 {

namespace {

struct Reveal {
    std::string path;
    ProgramLauncher& launcher;
    Log& log;

    void openFolder() const { launcher.openFile(GText(g_path_get_dirname(path.c_str())).get()); }
};

// Starting a file manager takes seconds on a cold disk; beyond this it is not coming.
constexpr int kAnswerTimeoutMs = 10'000;

void itemsShown(GObject* bus, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Reveal> reveal(static_cast<Reveal*>(data));
    GError* error = nullptr;
    const Variant answer(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
    if (answer) return;
    reveal->log.debug(std::string("no file manager answers: ") + error->message);
    g_error_free(error);
    reveal->openFolder();
}

void busReached(GObject*, GAsyncResult* result, gpointer data) {
    std::unique_ptr<Reveal> reveal(static_cast<Reveal*>(data));
    const GPtr<GDBusConnection> bus(g_bus_get_finish(result, nullptr));
    const GText uri(g_filename_to_uri(reveal->path.c_str(), nullptr, nullptr));
    if (!bus || !uri) return reveal->openFolder();
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    const char* uris[] = {uri.get(), nullptr};
    g_dbus_connection_call(bus.get(), "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                           "org.freedesktop.FileManager1", "ShowItems", g_variant_new("(^ass)", uris, ""), nullptr,
                           G_DBUS_CALL_FLAGS_NONE, kAnswerTimeoutMs, nullptr, itemsShown, reveal.release());
}

}  // namespace

void revealFile(const std::string& path, ProgramLauncher& launcher, Log& log) {
    if (!g_path_is_absolute(path.c_str())) return;
    auto reveal = std::make_unique<Reveal>(Reveal{path, launcher, log});
    if (!hasSessionBus()) return reveal->openFolder();
    g_bus_get(G_BUS_TYPE_SESSION, nullptr, busReached, reveal.release());
}

}  // namespace morvel::x11
