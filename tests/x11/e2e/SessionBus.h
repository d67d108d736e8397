// A private session bus on the test's desktop, with the desktop's switch for accessibility on it.
#pragma once

#include <gio/gio.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

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
BusConnection connectToBus(const std::string& address);

/// Which method of whom.
struct BusMethod {
    std::string service;
    std::string path;
    std::string interface;
    std::string name;
};
/// The answer, a tuple; null when the call failed. Takes over the arguments, which may be null.
Variant callMethod(const BusConnection& bus, const BusMethod& method, GVariant* arguments = nullptr);

/// While the harness waits, this process handles what it is told on its buses.
class SessionBus : public EventSource {
public:
    /// Throws std::runtime_error when it does not come up.
    explicit SessionBus(VirtualDesktop& world);
    ~SessionBus() override { desktop_.forget(*this); }

    const std::string& address() const { return address_; }
    /// For programs that are to find this bus and may be accessible.
    Environment environment() const { return {{"DBUS_SESSION_BUS_ADDRESS", address_}, {"NO_AT_BRIDGE", "0"}}; }

    /// Whether this machine has the accessibility service at all.
    bool hasAccessibility() const;
    void setAccessibilityEnabled(bool enabled);
    /// Where assistive programs and others meet. No value: the service does not say.
    std::optional<std::string> accessibilityAddress() const;

    /// Ends the bus, and with it the services that it started.
    void kill() { program_.kill(); }

    int descriptor() const override { return -1; }  // GLib has several, so it is asked whenever the harness looks
    void serve() override {
        while (g_main_context_iteration(nullptr, FALSE)) continue;
    }

private:
    Desktop& desktop_;  // outlives us
    std::string address_;
    Program program_;
    BusConnection connection_;
};

}  // namespace morvel::e2e
