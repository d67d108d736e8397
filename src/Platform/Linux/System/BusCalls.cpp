#include "Platform/Linux/System/BusCalls.h"

#include <utility>

namespace morvel::x11 {

namespace {

/// In milliseconds. Longer than a busy program takes, and shorter than a person waits.
constexpr int kPatience = 5000;

}  // namespace

bool hasSessionBus() {
    const char* address = g_getenv("DBUS_SESSION_BUS_ADDRESS");
    if (address && *address) return true;
    return g_file_test((std::string(g_get_user_runtime_dir()) + "/bus").c_str(), G_FILE_TEST_EXISTS);
}

BusCalls::BusCalls(GDBusConnection* bus) : bus_(G_DBUS_CONNECTION(g_object_ref(bus))), pending_(g_cancellable_new()) {}

BusCalls::~BusCalls() {
    g_cancellable_cancel(pending_);
    g_object_unref(pending_);
    g_object_unref(bus_);
}

void BusCalls::call(const BusMethod& method, GVariant* arguments, const char* answerType, Answered answered) const {
    struct Pending {
        Lifetime::Watch watch;
        Answered answered;
    };
    g_dbus_connection_call(
        bus_, method.service, method.path, method.interface, method.name, arguments, G_VARIANT_TYPE(answerType),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, kPatience, pending_,
        [](GObject* source, GAsyncResult* result, gpointer data) {
            const std::unique_ptr<Pending> pending(static_cast<Pending*>(data));
            const Variant answer(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
            if (pending->watch.isAlive()) pending->answered(answer.get());
        },
        new Pending{lifetime_.watch(), std::move(answered)});
}

}  // namespace morvel::x11
