#include "Platform/Linux/Accessibility/AccessibilityRequest.h"

#include <string_view>
#include <utility>

#include "Platform/Linux/System/BusCalls.h"

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

/// The answer to a call, or null when there was none. A cancelled call's owner is gone: `self` must not be used then.
struct Answer {
    Answer(GObject* source, GAsyncResult* result) {
        GError* error = nullptr;
        value = g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &error);
        isCancelled = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED);
        g_clear_error(&error);
    }
    ~Answer() {
        if (value) g_variant_unref(value);
    }
    Answer(const Answer&) = delete;
    Answer& operator=(const Answer&) = delete;

    GVariant* value = nullptr;
    bool isCancelled = false;
};

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
    : wish_(wish), requested_(std::move(requested)), pending_(g_cancellable_new()) {
    if (wish_ == AccessibilityWish::Never || !hasSessionBus()) return;
    g_bus_get(
        G_BUS_TYPE_SESSION, pending_,
        [](GObject*, GAsyncResult* result, gpointer self) {
            // An absent bus and a cancelled question end alike: nothing is asked.
            if (GDBusConnection* bus = g_bus_get_finish(result, nullptr))
                static_cast<AccessibilityRequest*>(self)->connected(bus);
        },
        this);
}

AccessibilityRequest::~AccessibilityRequest() {
    g_cancellable_cancel(pending_);
    stopListening();
    g_clear_object(&bus_);
    g_object_unref(pending_);
}

void AccessibilityRequest::connected(GDBusConnection* bus) {
    bus_ = bus;
    // The bar has windows to show, whatever becomes of the bus.
    g_dbus_connection_set_exit_on_close(bus_, FALSE);
    wish_ == AccessibilityWish::Always ? askAddress() : listen();
}

void AccessibilityRequest::listen() {
    changes_ = g_dbus_connection_signal_subscribe(
        bus_, kService, kProperties, "PropertiesChanged", kPath, kStatus, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant*, gpointer self) {
            static_cast<AccessibilityRequest*>(self)->askStatus();
        },
        this, nullptr);
    watch_ = g_bus_watch_name_on_connection(
        bus_, kService, G_BUS_NAME_WATCHER_FLAGS_NONE,
        [](GDBusConnection*, const gchar*, const gchar*, gpointer self) {
            static_cast<AccessibilityRequest*>(self)->askStatus();
        },
        nullptr, this, nullptr);
}

void AccessibilityRequest::stopListening() {
    if (changes_) g_dbus_connection_signal_unsubscribe(bus_, std::exchange(changes_, 0));
    if (watch_) g_bus_unwatch_name(std::exchange(watch_, 0));
}

void AccessibilityRequest::call(const char* interface, const char* method, GVariant* arguments, GDBusCallFlags flags,
                                GAsyncReadyCallback answered) {
    g_dbus_connection_call(bus_, kService, kPath, interface, method, arguments, nullptr, flags, -1, pending_, answered,
                           this);
}

void AccessibilityRequest::askStatus() {
    call(kProperties, "GetAll", g_variant_new("(s)", kStatus), G_DBUS_CALL_FLAGS_NO_AUTO_START,
         [](GObject* source, GAsyncResult* result, gpointer self) {
             const Answer answer(source, result);
             if (!answer.value || !g_variant_is_of_type(answer.value, G_VARIANT_TYPE("(a{sv})"))) return;
             GVariant* properties = g_variant_get_child_value(answer.value, 0);
             const bool isWanted = isOn(properties, "IsEnabled") || isOn(properties, "ScreenReaderEnabled");
             g_variant_unref(properties);
             if (isWanted) static_cast<AccessibilityRequest*>(self)->askAddress();
         });
}

// Asked here, where nobody waits: the library that talks on that bus would ask for it too, and wait.
void AccessibilityRequest::askAddress() {
    if (std::exchange(isAddressAsked_, true)) return;
    call(kService, "GetAddress", nullptr, G_DBUS_CALL_FLAGS_NONE,
         [](GObject* source, GAsyncResult* result, gpointer data) {
             const Answer answer(source, result);
             if (answer.isCancelled) return;
             auto& self = *static_cast<AccessibilityRequest*>(data);
             self.isAddressAsked_ = false;  // when there is none now, the next sign of the service asks again
             if (!answer.value || !g_variant_is_of_type(answer.value, G_VARIANT_TYPE("(s)"))) return;
             const gchar* address = nullptr;
             g_variant_get(answer.value, "(&s)", &address);
             if (!*address) return;
             self.stopListening();
             const auto requested = std::exchange(self.requested_, nullptr);
             if (requested) requested(address);
         });
}

}  // namespace morvel::x11
