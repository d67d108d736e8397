#include "Platform/Linux/NowPlaying/MprisPlayers.h"

#include <algorithm>
#include <utility>

namespace morvel::x11 {

namespace {

constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";
constexpr const char* kPlayers = "org.mpris.MediaPlayer2";
/// A person has a few; a program that makes up names gets no further.
constexpr size_t kMostPlayers = 64;

}  // namespace

MprisPlayers::MprisPlayers(std::function<void()> changed)
    : changed_(std::move(changed)), reaching_(reachSessionBus([this](GDBusConnection* bus) { connected(bus); })) {}

MprisPlayers::~MprisPlayers() {
    if (!calls_) return;
    g_signal_handler_disconnect(calls_->bus(), closedHandler_);
    g_dbus_connection_signal_unsubscribe(calls_->bus(), subscription_);
}

void MprisPlayers::connected(GDBusConnection* bus) {
    calls_ = std::make_unique<BusCalls>(bus);
    closedHandler_ =
        g_signal_connect(bus, "closed", G_CALLBACK(+[](GDBusConnection*, gboolean, GError*, gpointer self) {
                             static_cast<MprisPlayers*>(self)->disconnected();
                         }),
                         this);
    subscription_ = g_dbus_connection_signal_subscribe(
        bus, kBus, kBus, "NameOwnerChanged", kBusPath, kPlayers, G_DBUS_SIGNAL_FLAGS_MATCH_ARG0_NAMESPACE,
        [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant* arguments,
           gpointer self) {
            const char *name = nullptr, *owner = nullptr;
            if (!g_variant_is_of_type(arguments, G_VARIANT_TYPE("(sss)"))) return;
            g_variant_get(arguments, "(&s&s&s)", &name, nullptr, &owner);
            static_cast<MprisPlayers*>(self)->ownerChanged(name, owner);
        },
        this, nullptr);
    askNames();
}

void MprisPlayers::disconnected() {
    owners_.clear();
    players_.clear();
    changed_();
}

void MprisPlayers::askNames() {
    calls_->call({kBus, kBusPath, kBus, "ListNames"}, nullptr, "(as)", [this](GVariant* answer) {
        if (!answer) return;
        const Variant names(g_variant_get_child_value(answer, 0));
        GVariantIter each;
        g_variant_iter_init(&each, names.get());
        const char* name = nullptr;
        while (g_variant_iter_next(&each, "&s", &name)) {
            if (!g_str_has_prefix(name, "org.mpris.MediaPlayer2.")) continue;
            calls_->call({kBus, kBusPath, kBus, "GetNameOwner"}, g_variant_new("(s)", name), "(s)",
                         [this, busName = std::string(name)](GVariant* ownerAnswer) {
                             const char* owner = nullptr;
                             if (ownerAnswer) g_variant_get(ownerAnswer, "(&s)", &owner);
                             if (owner) ownerChanged(busName, owner);
                         });
        }
    });
}

void MprisPlayers::ownerChanged(const std::string& busName, const std::string& owner) {
    const std::string former = std::exchange(owners_[busName], owner);
    if (owner.empty()) owners_.erase(busName);
    if (owner == former) return;
    if (!owner.empty() && !players_.contains(owner) && players_.size() < kMostPlayers)
        players_[owner] = std::make_unique<MprisPlayer>(calls_->bus(), owner, busName, changed_);
    const auto owns = [&](const auto& entry) { return entry.second == former; };
    if (std::ranges::none_of(owners_, owns) && players_.erase(former) > 0) changed_();
}

}  // namespace morvel::x11
