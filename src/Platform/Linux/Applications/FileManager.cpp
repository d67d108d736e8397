#include "Platform/Linux/Applications/FileManager.h"

#include <gio/gio.h>

#include <memory>

#include "Platform/Linux/System/GLibPointers.h"

namespace morvel::x11 {

namespace {

struct Reveal {
    std::string path;
    Log& log;
};

// Starting a file manager takes seconds on a cold disk; beyond this it is not coming.
constexpr int kAnswerTimeoutMs = 10'000;

std::string failure(GError*& error) {
    const std::string message = error ? error->message : "unknown";
    g_clear_error(&error);
    return message;
}

void folderOpened(GObject*, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Reveal> reveal(static_cast<Reveal*>(data));
    GError* error = nullptr;
    if (!g_app_info_launch_default_for_uri_finish(result, &error))
        reveal->log.error("cannot open the folder of " + reveal->path + ": " + failure(error));
}

void openFolder(std::unique_ptr<Reveal> reveal) {
    const GText folder(g_path_get_dirname(reveal->path.c_str()));
    const GText uri(g_filename_to_uri(folder.get(), nullptr, nullptr));
    if (!uri) return;
    g_app_info_launch_default_for_uri_async(uri.get(), nullptr, nullptr, folderOpened, reveal.release());
}

void itemsShown(GObject* bus, GAsyncResult* result, gpointer data) {
    std::unique_ptr<Reveal> reveal(static_cast<Reveal*>(data));
    GError* error = nullptr;
    if (GVariant* answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error)) {
        g_variant_unref(answer);
        return;
    }
    reveal->log.debug("no file manager answers: " + failure(error));
    openFolder(std::move(reveal));
}

void busReached(GObject*, GAsyncResult* result, gpointer data) {
    std::unique_ptr<Reveal> reveal(static_cast<Reveal*>(data));
    GError* error = nullptr;
    GDBusConnection* bus = g_bus_get_finish(result, &error);
    const GText uri(g_filename_to_uri(reveal->path.c_str(), nullptr, nullptr));
    if (!bus || !uri) {
        g_clear_error(&error);
        if (bus) g_object_unref(bus);
        return openFolder(std::move(reveal));
    }
    const char* uris[] = {uri.get(), nullptr};
    g_dbus_connection_call(bus, "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                           "org.freedesktop.FileManager1", "ShowItems", g_variant_new("(^ass)", uris, ""), nullptr,
                           G_DBUS_CALL_FLAGS_NONE, kAnswerTimeoutMs, nullptr, itemsShown, reveal.release());
    g_object_unref(bus);
}

}  // namespace

void revealFile(const std::string& path, Log& log) {
    if (!g_path_is_absolute(path.c_str())) return;
    g_bus_get(G_BUS_TYPE_SESSION, nullptr, busReached, new Reveal{path, log});
}

}  // namespace morvel::x11
