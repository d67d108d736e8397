// A media player on a session bus, as well-behaved or as hostile as a test wants it.
#pragma once

#include <map>
#include <string_view>
#include <vector>

#include "SessionBus.h"

namespace morvel::e2e {

/// Answers while the harness waits.
class FakePlayer {
public:
    enum class Manner { Answers, IsSilent };

    /// `name` is the last part of its name on the bus. Throws std::runtime_error when it cannot be there.
    FakePlayer(SessionBus& session, const std::string& name, Manner manner = Manner::Answers)
        : session_(session), manner_(manner), bus_(connectToBus(session.address())) {
        if (!bus_) throw std::runtime_error("the player finds no bus");
        offer(kProperties);
        offer(kPlayer);
        callMethod(bus_, {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName"},
                   g_variant_new("(su)", ("org.mpris.MediaPlayer2." + name).c_str(), 0U));
    }
    ~FakePlayer() {
        bus_.reset();
        session_.serve();  // what has arrived by now still comes to us
    }
    FakePlayer(const FakePlayer&) = delete;
    FakePlayer& operator=(const FakePlayer&) = delete;

    /// Takes over the floating value.
    void setRoot(const std::string& property, GVariant* value) { set(kRoot, property, value); }
    /// And announces it.
    void set(const std::string& property, GVariant* value) { set(kPlayer, property, value); }
    void play(const std::string& title, const std::string& artist, const std::string& artUrl = "") {
        GVariantBuilder track;
        g_variant_builder_init(&track, G_VARIANT_TYPE_VARDICT);
        g_variant_builder_add(&track, "{sv}", "xesam:title", g_variant_new_string(title.c_str()));
        const gchar* artists[] = {artist.c_str(), nullptr};
        g_variant_builder_add(&track, "{sv}", "xesam:artist", g_variant_new_strv(artists, -1));
        if (!artUrl.empty())
            g_variant_builder_add(&track, "{sv}", "mpris:artUrl", g_variant_new_string(artUrl.c_str()));
        set("Metadata", g_variant_builder_end(&track));
        set("PlaybackStatus", g_variant_new_string("Playing"));
    }

    /// The names of the methods that were called, in order, without the questions for properties.
    const std::vector<std::string>& calls() const { return calls_; }

private:
    static constexpr const char* kRoot = "org.mpris.MediaPlayer2";
    static constexpr const char* kPlayer = "org.mpris.MediaPlayer2.Player";
    static constexpr const char* kPath = "/org/mpris/MediaPlayer2";
    static constexpr const char* kProperties = "org.freedesktop.DBus.Properties";
    // Only what is called; signals and properties need no declaration here.
    static constexpr const char* kInterfaces =
        "<node><interface name='org.freedesktop.DBus.Properties'>"
        "<method name='GetAll'><arg type='s' direction='in'/><arg type='a{sv}' direction='out'/></method></interface>"
        "<interface name='org.mpris.MediaPlayer2.Player'><method name='Play'/><method name='Pause'/>"
        "<method name='PlayPause'/><method name='Next'/><method name='Previous'/></interface></node>";

    void set(const std::string& interface, const std::string& property, GVariant* value) {
        const Variant owned(g_variant_ref_sink(value));
        properties_[interface][property] = Variant(g_variant_ref(owned.get()));
        GVariantBuilder changed;
        g_variant_builder_init(&changed, G_VARIANT_TYPE_VARDICT);
        g_variant_builder_add(&changed, "{sv}", property.c_str(), owned.get());
        g_dbus_connection_emit_signal(bus_.get(), nullptr, kPath, kProperties, "PropertiesChanged",
                                      g_variant_new("(sa{sv}as)", interface.c_str(), &changed, nullptr), nullptr);
    }
    void offer(const char* interface) {
        static GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(kInterfaces, nullptr);
        static const GDBusInterfaceVTable table = {
            [](GDBusConnection*, const gchar*, const gchar*, const gchar* of, const gchar* method, GVariant*,
               GDBusMethodInvocation* invocation,
               gpointer self) { static_cast<FakePlayer*>(self)->called(of, method, invocation); },
            nullptr,
            nullptr,
            {}};
        g_dbus_connection_register_object(bus_.get(), kPath, g_dbus_node_info_lookup_interface(node, interface), &table,
                                          this, nullptr, nullptr);
    }
    void called(std::string_view interface, const char* method, GDBusMethodInvocation* invocation) {
        if (manner_ == Manner::IsSilent) return;  // the caller has to give up by itself
        if (interface != kProperties) {
            calls_.emplace_back(method);
            return g_dbus_method_invocation_return_value(invocation, nullptr);
        }
        const gchar* asked = nullptr;
        g_variant_get(g_dbus_method_invocation_get_parameters(invocation), "(&s)", &asked);
        GVariantBuilder all;
        g_variant_builder_init(&all, G_VARIANT_TYPE_VARDICT);
        for (const auto& [name, value] : properties_[asked])
            g_variant_builder_add(&all, "{sv}", name.c_str(), value.get());
        g_dbus_method_invocation_return_value(invocation, g_variant_new("(a{sv})", &all));
    }

    SessionBus& session_;  // outlives us
    const Manner manner_;
    BusConnection bus_;
    std::map<std::string, std::map<std::string, Variant>> properties_;
    std::vector<std::string> calls_;
};

}  // namespace morvel::e2e
