#include "Platform/Linux/System/BusCalls.h"

#include <string>
#include <utility>

#include "Platform/Linux/System/GLibPointers.h"

namespace morvel::x11 {

namespace {

/// In milliseconds. Longer than a busy program takes, and shorter than a person waits.
constexpr int kPatience = 5000;
constexpr int kUsualPatience = -1;  // the library's, with which a service has the time to start

}  // namespace

bool hasSessionBus() {
    const char* address = g_getenv("DBUS_SESSION_BUS_ADDRESS");
    if (address && *address) return true;
    return g_file_test((std::string(g_get_user_runtime_dir()) + "/bus").c_str(), G_FILE_TEST_EXISTS);
}

Subscription reachSessionBus(std::function<void(GDBusConnection*)> reached) {
    if (!hasSessionBus()) return {};
    using Reached = std::function<void(GDBusConnection*)>;
    GCancellable* const reaching = g_cancellable_new();
    g_bus_get(
        G_BUS_TYPE_SESSION, reaching,
        [](GObject*, GAsyncResult* result, gpointer data) {
            const std::unique_ptr<Reached> call(static_cast<Reached*>(data));
            // An absent bus and a cancelled question end alike.
            const GPtr<GDBusConnection> bus(g_bus_get_finish(result, nullptr));
            if (!bus) return;
            // The bar has windows to show, whatever becomes of the bus.
            g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
            (*call)(bus.get());
        },
        new Reached(std::move(reached)));
    return Subscription([reaching] {
        g_cancellable_cancel(reaching);
        g_object_unref(reaching);
    });
}

BusCalls::BusCalls(GDBusConnection* bus) : bus_(G_DBUS_CONNECTION(g_object_ref(bus))), pending_(g_cancellable_new()) {}

BusCalls::~BusCalls() {
    g_cancellable_cancel(pending_);
    g_object_unref(pending_);
    g_object_unref(bus_);
}

void BusCalls::call(const BusMethod& method, GVariant* arguments, const char* answerType, Answered answered,
                    StartService start) const {
    struct Pending {
        Lifetime::Watch watch;
        Answered answered;
    };
    g_dbus_connection_call(
        bus_, method.service, method.path, method.interface, method.name, arguments, G_VARIANT_TYPE(answerType),
        start == StartService::Yes ? G_DBUS_CALL_FLAGS_NONE : G_DBUS_CALL_FLAGS_NO_AUTO_START,
        start == StartService::Yes ? kUsualPatience : kPatience, pending_,
        [](GObject* source, GAsyncResult* result, gpointer data) {
            const std::unique_ptr<Pending> pending(static_cast<Pending*>(data));
            const Variant answer(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
            if (pending->watch.isAlive()) pending->answered(answer.get());
        },
        new Pending{lifetime_.watch(), std::move(answered)});
}

}  // namespace morvel::x11
