// A private session bus on the test's desktop, with the desktop's switch for accessibility on it.
#pragma once

#include <gio/gio.h>

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "harness/VirtualDesktop.h"

namespace morvel::e2e {

struct UnrefVariant {
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
using Variant = std::unique_ptr<GVariant, UnrefVariant>;

struct CloseBus {
    void operator()(GDBusConnection* bus) const {
        g_dbus_connection_close_sync(bus, nullptr, nullptr);
        g_object_unref(bus);
    }
};
using BusConnection = std::unique_ptr<GDBusConnection, CloseBus>;

/// Null when nobody listens there.
inline BusConnection connectToBus(const std::string& address) {
    constexpr auto kFlags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    return BusConnection(g_dbus_connection_new_for_address_sync(address.c_str(), kFlags, nullptr, nullptr, nullptr));
}

/// Which method of whom.
struct BusMethod {
    std::string service;
    std::string path;
    std::string interface;
    std::string name;
};
/// The answer, a tuple; null when the call failed. Takes over the arguments, which may be null.
inline Variant callMethod(const BusConnection& bus, const BusMethod& method, GVariant* arguments = nullptr) {
    constexpr int kMilliseconds = 5000;
    return Variant(g_dbus_connection_call_sync(bus.get(), method.service.c_str(), method.path.c_str(),
                                               method.interface.c_str(), method.name.c_str(), arguments, nullptr,
                                               G_DBUS_CALL_FLAGS_NONE, kMilliseconds, nullptr, nullptr));
}

/// While the harness waits, this process handles what it is told on its buses.
class SessionBus : public EventSource {
public:
    /// Throws std::runtime_error when it does not come up.
    explicit SessionBus(VirtualDesktop& world)
        : desktop_(world.desktop),
          address_("unix:path=" + (world.server.home() / "runtime/session-bus").string()),
          program_(world.run({"dbus-daemon", "--session", "--nofork", "--address=" + address_})) {
        if (!desktop_.waitUntil([&] { return (connection_ = connectToBus(address_)) != nullptr; }))
            throw std::runtime_error("the session bus does not start");
        desktop_.attend(*this);
    }
    ~SessionBus() override { desktop_.forget(*this); }

    const std::string& address() const { return address_; }
    /// For programs that are to find this bus and may be accessible.
    Environment environment() const { return {{"DBUS_SESSION_BUS_ADDRESS", address_}, {"NO_AT_BRIDGE", "0"}}; }

    /// Whether this machine has the accessibility service at all.
    bool hasAccessibility() const { return property("GetAll", g_variant_new("(s)", kStatus)) != nullptr; }
    void setAccessibilityEnabled(bool enabled) {
        property("Set", g_variant_new("(ssv)", kStatus, "IsEnabled", g_variant_new_boolean(enabled)));
    }
    /// Where assistive programs and others meet. No value: the service does not say.
    std::optional<std::string> accessibilityAddress() const {
        const Variant answer = callMethod(connection_, {"org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress"});
        const char* address = nullptr;
        if (!answer) return std::nullopt;
        g_variant_get(answer.get(), "(&s)", &address);
        return address;
    }

    /// Ends the bus, and with it the services that it started.
    void kill() { program_.kill(); }

    int descriptor() const override { return -1; }  // GLib has several, so it is asked whenever the harness looks
    void serve() override {
        while (g_main_context_iteration(nullptr, FALSE)) continue;
    }

private:
    static constexpr const char* kStatus = "org.a11y.Status";

    Variant property(const char* method, GVariant* arguments) const {
        return callMethod(connection_, {"org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", method},
                          arguments);
    }

    Desktop& desktop_;  // outlives us
    std::string address_;
    Program program_;
    BusConnection connection_;
};

}  // namespace morvel::e2e
