#include "FakePlayer.h"

#include <stdexcept>

namespace morvel::e2e {
namespace {

constexpr const char* kPath = "/org/mpris/MediaPlayer2";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

// Only what is called; signals and properties need no declaration here.
constexpr const char* kInterfaces =
    "<node><interface name='org.freedesktop.DBus.Properties'>"
    "<method name='GetAll'><arg type='s' direction='in'/><arg type='a{sv}' direction='out'/></method></interface>"
    "<interface name='org.mpris.MediaPlayer2.Player'><method name='Play'/><method name='Pause'/>"
    "<method name='PlayPause'/><method name='Next'/><method name='Previous'/></interface></node>";

}  // namespace

FakePlayer::FakePlayer(SessionBus& session, const std::string& name, Manner manner)
    : session_(session), manner_(manner), bus_(connectToBus(session.address())) {
    if (!bus_) throw std::runtime_error("the player finds no bus");
    offer(kProperties);
    offer(kPlayer);
    callMethod(bus_, {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName"},
               g_variant_new("(su)", ("org.mpris.MediaPlayer2." + name).c_str(), 0U));
}

FakePlayer::~FakePlayer() {
    bus_.reset();
    session_.serve();  // what has arrived by now still comes to us
}

void FakePlayer::offer(const char* interface) {
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

void FakePlayer::called(const char* interface, const char* method, GDBusMethodInvocation* invocation) {
    if (manner_ == Manner::IsSilent) return;  // the caller has to give up by itself
    if (std::string_view(interface) == kProperties) {
        const gchar* asked = nullptr;
        g_variant_get(g_dbus_method_invocation_get_parameters(invocation), "(&s)", &asked);
        const Variant all = properties(asked);
        return g_dbus_method_invocation_return_value(invocation, g_variant_new("(@a{sv})", all.get()));
    }
    calls_.emplace_back(method);
    g_dbus_method_invocation_return_value(invocation, nullptr);
}

Variant FakePlayer::properties(const std::string& interface) const {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
    if (const auto known = properties_.find(interface); known != properties_.end())
        for (const auto& [name, value] : known->second)
            g_variant_builder_add(&builder, "{sv}", name.c_str(), value.get());
    return Variant(g_variant_ref_sink(g_variant_builder_end(&builder)));
}

void FakePlayer::set(const std::string& interface, const std::string& property, GVariant* value) {
    const Variant owned(g_variant_ref_sink(value));
    properties_[interface][property] = Variant(g_variant_ref(owned.get()));
    GVariantBuilder changed;
    g_variant_builder_init(&changed, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&changed, "{sv}", property.c_str(), owned.get());
    g_dbus_connection_emit_signal(bus_.get(), nullptr, kPath, kProperties, "PropertiesChanged",
                                  g_variant_new("(sa{sv}as)", interface.c_str(), &changed, nullptr), nullptr);
}

void FakePlayer::play(const std::string& title, const std::string& artist, const std::string& artUrl) {
    GVariantBuilder track;
    g_variant_builder_init(&track, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&track, "{sv}", "xesam:title", g_variant_new_string(title.c_str()));
    const gchar* artists[] = {artist.c_str(), nullptr};
    g_variant_builder_add(&track, "{sv}", "xesam:artist", g_variant_new_strv(artists, -1));
    if (!artUrl.empty()) g_variant_builder_add(&track, "{sv}", "mpris:artUrl", g_variant_new_string(artUrl.c_str()));
    set("Metadata", g_variant_builder_end(&track));
    set("PlaybackStatus", g_variant_new_string("Playing"));
}

}  // namespace morvel::e2e
