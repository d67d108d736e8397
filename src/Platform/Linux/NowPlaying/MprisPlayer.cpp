#include "Platform/Linux/NowPlaying/MprisPlayer.h"

#include <utility>

namespace morvel::x11 {

namespace {

constexpr const char* kPath = "/org/mpris/MediaPlayer2";
constexpr const char* kRoot = "org.mpris.MediaPlayer2";
constexpr const char* kPlayer = "org.mpris.MediaPlayer2.Player";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

const char* methodOf(TransportCommand command) {
    switch (command) {
        case TransportCommand::Play:
            return "Play";
        case TransportCommand::Pause:
            return "Pause";
        case TransportCommand::TogglePlayPause:
            return "PlayPause";
        case TransportCommand::Next:
            return "Next";
        case TransportCommand::Previous:
            return "Previous";
    }
    return "";
}

}  // namespace

MprisPlayer::MprisPlayer(GDBusConnection* bus, std::string owner, std::string busName, std::function<void()> changed)
    : calls_(bus), owner_(std::move(owner)), busName_(std::move(busName)), changed_(std::move(changed)) {
    // By the connection, not by the name: all players have the same path, and the library passes signals on to every
    // subscription by a name, whoever sent them.
    subscription_ = g_dbus_connection_signal_subscribe(
        bus, owner_.c_str(), kProperties, "PropertiesChanged", kPath, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant* arguments,
           gpointer self) { static_cast<MprisPlayer*>(self)->propertiesChanged(arguments); },
        this, nullptr);
    askProcess();
    askProperties(kRoot);
    askProperties(kPlayer);
}

MprisPlayer::~MprisPlayer() {
    g_dbus_connection_signal_unsubscribe(calls_.bus(), subscription_);
}

void MprisPlayer::askProcess() {
    calls_.call({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetConnectionUnixProcessID"},
                g_variant_new("(s)", owner_.c_str()), "(u)", [this](GVariant* answer) {
                    guint32 pid = 0;
                    if (answer) g_variant_get(answer, "(u)", &pid);
                    pid_ = ProcessID{static_cast<int32_t>(pid)};
                    changed_();
                });
}

void MprisPlayer::askProperties(const char* interface) {
    calls_.call({owner_.c_str(), kPath, kProperties, "GetAll"}, g_variant_new("(s)", interface), "(a{sv})",
                [this](GVariant* answer) {
                    if (answer) take(Variant(g_variant_get_child_value(answer, 0)).get());
                });
}

void MprisPlayer::propertiesChanged(GVariant* arguments) {
    if (!g_variant_is_of_type(arguments, G_VARIANT_TYPE("(sa{sv}as)"))) return;
    const char* interface = nullptr;
    g_variant_get_child(arguments, 0, "&s", &interface);
    if (std::string_view(interface) != kPlayer && std::string_view(interface) != kRoot) return;
    take(Variant(g_variant_get_child_value(arguments, 1)).get());
    // A player may only say that a property has changed, and leave it to others to ask for it.
    const Variant invalidated(g_variant_get_child_value(arguments, 2));
    if (g_variant_n_children(invalidated.get()) > 0)
        askProperties(interface == std::string_view(kRoot) ? kRoot : kPlayer);
}

void MprisPlayer::take(GVariant* properties) {
    const MprisValues before = values_;
    readProperties(properties, values_);
    if (values_ == before) return;
    if (values_.status != before.status) statusChange_ = g_get_monotonic_time();
    changed_();
}

void MprisPlayer::send(TransportCommand command, std::function<void()> completion) {
    calls_.call({owner_.c_str(), kPath, kPlayer, methodOf(command)}, nullptr, "()",
                [completion = std::move(completion)](GVariant*) { completion(); });
}

}  // namespace morvel::x11
