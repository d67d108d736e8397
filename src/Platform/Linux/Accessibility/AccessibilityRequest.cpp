#include "Platform/Linux/Accessibility/AccessibilityRequest.h"

#include <string_view>
#include <utility>

namespace morvel::x11 {

namespace {

constexpr const char* kService = "org.a11y.Bus";
constexpr const char* kPath = "/org/a11y/bus";
constexpr const char* kStatus = "org.a11y.Status";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

bool isOn(GVariant* properties, const char* name) {
    gboolean value = FALSE;
    return g_variant_lookup(properties, name, "b", &value) && value;
}

}  // namespace

AccessibilityWish accessibilityWish(const std::function<const char*(const char* variable)>& value) {
    const auto isSet = [&](const char* variable) {
        const char* text = value(variable);
        return text && std::string_view(text) == "1";
    };
    if (isSet("NO_AT_BRIDGE")) return AccessibilityWish::Never;
    if (isSet("GNOME_ACCESSIBILITY") || isSet("QT_LINUX_ACCESSIBILITY_ALWAYS_ON")) return AccessibilityWish::Always;
    return AccessibilityWish::Ask;
}

AccessibilityRequest::AccessibilityRequest(AccessibilityWish wish, std::function<void(std::string)> requested)
    : wish_(wish), requested_(std::move(requested)) {
    if (wish_ != AccessibilityWish::Never)
        reaching_ = reachSessionBus([this](GDBusConnection* bus) { connected(bus); });
}

AccessibilityRequest::~AccessibilityRequest() {
    stopListening();
}

void AccessibilityRequest::connected(GDBusConnection* bus) {
    calls_ = std::make_unique<BusCalls>(bus);
    wish_ == AccessibilityWish::Always ? askAddress() : listen();
}

void AccessibilityRequest::listen() {
    changes_ = g_dbus_connection_signal_subscribe(
        calls_->bus(), kService, kProperties, "PropertiesChanged", kPath, kStatus, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant*, gpointer self) {
            static_cast<AccessibilityRequest*>(self)->askStatus();
        },
        this, nullptr);
    watch_ = g_bus_watch_name_on_connection(
        calls_->bus(), kService, G_BUS_NAME_WATCHER_FLAGS_NONE,
        [](GDBusConnection*, const gchar*, const gchar*, gpointer self) {
            static_cast<AccessibilityRequest*>(self)->askStatus();
        },
        nullptr, this, nullptr);
}

void AccessibilityRequest::stopListening() {
    if (changes_) g_dbus_connection_signal_unsubscribe(calls_->bus(), std::exchange(changes_, 0));
    if (watch_) g_bus_unwatch_name(std::exchange(watch_, 0));
}

void AccessibilityRequest::askStatus() {
    calls_->call({kService, kPath, kProperties, "GetAll"}, g_variant_new("(s)", kStatus), "(a{sv})",
                 [this](GVariant* answer) {
                     if (!answer) return;
                     const Variant properties(g_variant_get_child_value(answer, 0));
                     if (isOn(properties.get(), "IsEnabled") || isOn(properties.get(), "ScreenReaderEnabled"))
                         askAddress();
                 });
}

// Asked here, where nobody waits: the library that talks on that bus would ask for it too, and wait.
void AccessibilityRequest::askAddress() {
    if (std::exchange(isAddressAsked_, true)) return;
    const auto answered = [this](GVariant* answer) {
        isAddressAsked_ = false;  // when there is none now, the next sign of the service asks again
        const gchar* address = nullptr;
        if (answer) g_variant_get(answer, "(&s)", &address);
        if (!address || !*address) return;
        stopListening();
        const auto requested = std::exchange(requested_, nullptr);
        if (requested) requested(address);
    };
    calls_->call({kService, kPath, kService, "GetAddress"}, nullptr, "(s)", answered, StartService::Yes);
}

}  // namespace morvel::x11
