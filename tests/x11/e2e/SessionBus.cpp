#include "SessionBus.h"

#include <stdexcept>

namespace morvel::e2e {
namespace {

constexpr int kCallPatience = 5000;  // ms

BusMethod propertiesOfBus(const char* method) {
    return {"org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", method};
}

}  // namespace

BusConnection connectToBus(const std::string& address) {
    constexpr auto kFlags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    return BusConnection(g_dbus_connection_new_for_address_sync(address.c_str(), kFlags, nullptr, nullptr, nullptr));
}

Variant callMethod(const BusConnection& bus, const BusMethod& method, GVariant* arguments) {
    return Variant(g_dbus_connection_call_sync(bus.get(), method.service.c_str(), method.path.c_str(),
                                               method.interface.c_str(), method.name.c_str(), arguments, nullptr,
                                               G_DBUS_CALL_FLAGS_NONE, kCallPatience, nullptr, nullptr));
}

SessionBus::SessionBus(VirtualDesktop& world)
    : desktop_(world.desktop),
      address_("unix:path=" + (world.server.home() / "runtime/session-bus").string()),
      program_(world.run({"dbus-daemon", "--session", "--nofork", "--address=" + address_})) {
    if (!world.desktop.waitUntil([&] { return (connection_ = connectToBus(address_)) != nullptr; }))
        throw std::runtime_error("the session bus does not start");
    desktop_.attend(*this);
}

bool SessionBus::hasAccessibility() const {
    return callMethod(connection_, propertiesOfBus("GetAll"), g_variant_new("(s)", "org.a11y.Status")) != nullptr;
}

void SessionBus::setAccessibilityEnabled(bool enabled) {
    callMethod(connection_, propertiesOfBus("Set"),
               g_variant_new("(ssv)", "org.a11y.Status", "IsEnabled", g_variant_new_boolean(enabled)));
}

std::optional<std::string> SessionBus::accessibilityAddress() const {
    const Variant answer = callMethod(connection_, {"org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress"});
    const char* address = nullptr;
    if (!answer) return std::nullopt;
    g_variant_get(answer.get(), "(&s)", &address);
    return address;
}

}  // namespace morvel::e2e
