#include "Platform/Linux/Applications/ProgramLauncher.h"

#include <gio/gdesktopappinfo.h>
#include <unistd.h>

#include <functional>
#include <memory>
#include <system_error>
#include <thread>

#include "Platform/Linux/System/GLibPointers.h"

namespace morvel::x11 {

namespace {

constexpr const char* kMainGroup = G_KEY_FILE_DESKTOP_GROUP;

struct Complaint {
    Log& log;
    std::string text;

    static gboolean tell(gpointer self) {
        const std::unique_ptr<Complaint> complaint(static_cast<Complaint*>(self));
        complaint->log.error(complaint->text);
        return G_SOURCE_REMOVE;
    }
};

/// From any thread. On the main loop, since the log may end before a thread that hangs; after the loop's end never.
void complain(Log& log, const std::string& text) {
    g_idle_add(&Complaint::tell, new Complaint{log, text});
}

/// Gives each piece its thread. `work` says what went wrong; empty: nothing.
void runApart(Log& log, const std::string& what, std::function<std::string()> work) {
    const auto piece = [&log, what, work = std::move(work)] {
        const std::string failure = work();
        if (!failure.empty()) complain(log, "cannot open " + what + ": " + failure);
    };
    try {
        std::thread(piece).detach();
    } catch (const std::system_error& error) {
        log.error("cannot open " + what + ": " + error.what());
    }
}

std::string taken(GError* error) {
    const std::string message = error ? error->message : "unknown reason";
    g_clear_error(&error);
    return message;
}

/// Between fork and exec. Keeps what ends our terminal or session from ending the program.
void leaveSession(gpointer) {
    setsid();
}

/// GIO asks the session bus on the way, and a connection that it makes would end us with the bus.
void outliveBus() {
    if (GDBusConnection* bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr)) {
        g_dbus_connection_set_exit_on_close(bus, FALSE);
        g_object_unref(bus);
    }
}

std::string start(GDesktopAppInfo* entry, const char* uri = nullptr) {
    outliveBus();
    const GPtr<GAppLaunchContext> context(g_app_launch_context_new());
    // They are about our own start.
    for (const char* name : {"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"})
        g_app_launch_context_unsetenv(context.get(), name);
    GList uris{const_cast<char*>(uri), nullptr, nullptr};
    constexpr auto kFlags =
        static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL);
    GError* error = nullptr;
    const bool isStarted = g_desktop_app_info_launch_uris_as_manager(
        entry, uri ? &uris : nullptr, context.get(), kFlags, leaveSession, nullptr, nullptr, nullptr, &error);
    return isStarted ? std::string() : taken(error);
}

/// Starts the Exec line of one of the entry's groups as if it were a plain entry's only one.
std::string startGroup(const std::string& entryPath, const std::string& group) {
    const std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)> file(g_key_file_new(), &g_key_file_unref);
    GError* error = nullptr;
    if (!g_key_file_load_from_file(file.get(), entryPath.c_str(), G_KEY_FILE_NONE, &error)) return taken(error);
    const GText line(g_key_file_get_string(file.get(), group.c_str(), G_KEY_FILE_DESKTOP_KEY_EXEC, &error));
    if (!line) return taken(error);
    g_key_file_set_string(file.get(), kMainGroup, G_KEY_FILE_DESKTOP_KEY_EXEC, line.get());
    g_key_file_remove_key(file.get(), kMainGroup, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE, nullptr);
    const GPtr<GDesktopAppInfo> entry(g_desktop_app_info_new_from_keyfile(file.get()));
    return entry ? start(entry.get()) : "it is no usable desktop entry";
}

std::string startHandler(GAppInfo* handler, const char* uri) {
    const GPtr<GAppInfo> owner(handler);
    return start(G_DESKTOP_APP_INFO(handler), uri);
}

}  // namespace

void ProgramLauncher::open(const std::string& entryPath) {
    runApart(log_, entryPath, [entryPath]() -> std::string {
        const GPtr<GDesktopAppInfo> entry(g_desktop_app_info_new_from_filename(entryPath.c_str()));
        return entry ? start(entry.get()) : "it is no usable desktop entry";
    });
}

void ProgramLauncher::openNewInstance(const std::string& entryPath) {
    runApart(log_, entryPath, [entryPath] { return startGroup(entryPath, kMainGroup); });
}

void ProgramLauncher::openAction(const std::string& entryPath, const std::string& action) {
    runApart(log_, entryPath, [entryPath, action] { return startGroup(entryPath, "Desktop Action " + action); });
}

void ProgramLauncher::openFile(const std::string& path) {
    runApart(log_, path, [path] {
        const GPtr<GFile> file(g_file_new_for_path(path.c_str()));
        GError* error = nullptr;
        GAppInfo* handler = g_file_query_default_handler(file.get(), nullptr, &error);
        return handler ? startHandler(handler, GText(g_file_get_uri(file.get())).get()) : taken(error);
    });
}

void ProgramLauncher::openAddress(const std::string& address) {
    runApart(log_, address, [address]() -> std::string {
        const GText scheme(g_uri_parse_scheme(address.c_str()));
        GAppInfo* handler = scheme ? g_app_info_get_default_for_uri_scheme(scheme.get()) : nullptr;
        return handler ? startHandler(handler, address.c_str()) : "no application is for it";
    });
}

}  // namespace morvel::x11
