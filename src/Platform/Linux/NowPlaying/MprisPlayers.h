// Every media player on the session bus, as they come and go.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "Platform/Linux/NowPlaying/MprisPlayer.h"

namespace morvel::x11 {

/// Main thread only. Without a session bus, and once it is lost, there are none.
class MprisPlayers {
public:
    /// By connection: a player may go by several names.
    using ByOwner = std::map<std::string, std::unique_ptr<MprisPlayer>>;

    /// `changed` is called in a later turn after any change of the players; it may destroy this.
    explicit MprisPlayers(std::function<void()> changed);
    ~MprisPlayers();
    MprisPlayers(const MprisPlayers&) = delete;
    MprisPlayers& operator=(const MprisPlayers&) = delete;

    const ByOwner& all() const { return players_; }

private:
    void connected(GDBusConnection* bus);
    void disconnected();
    void askNames();
    void ownerChanged(const std::string& busName, const std::string& owner);

    std::function<void()> changed_;
    Subscription reaching_;
    std::unique_ptr<BusCalls> calls_;  // once connected
    guint subscription_ = 0;
    gulong closedHandler_ = 0;
    std::map<std::string, std::string> owners_;  // by bus name
    ByOwner players_;
};

}  // namespace morvel::x11
