// One media player on the session bus.
#pragma once

#include <functional>
#include <string>

#include "Platform/Linux/NowPlaying/MprisValues.h"
#include "Platform/Linux/System/BusCalls.h"
#include "Platform/NowPlayingPoller.h"
#include "Util/Identity.h"

namespace morvel::x11 {

/// Asks the player once and then listens. Main thread only.
class MprisPlayer {
public:
    /// `owner` is the player's connection, as in ":1.42"; `busName` one of the names it goes by. `changed` is called
    /// after each change, in a later turn; it must not destroy the player.
    MprisPlayer(GDBusConnection* bus, std::string owner, std::string busName, std::function<void()> changed);
    ~MprisPlayer();
    MprisPlayer(const MprisPlayer&) = delete;
    MprisPlayer& operator=(const MprisPlayer&) = delete;

    const std::string& owner() const { return owner_; }
    const std::string& busName() const { return busName_; }
    /// 0 until it is known.
    ProcessID pid() const { return pid_; }
    const MprisValues& values() const { return values_; }
    /// When its status changed last, in microseconds of the monotonic clock; 0 while it has not.
    int64_t statusChange() const { return statusChange_; }

    /// `completion` is called when the player has answered, refused, or not answered in time.
    void send(TransportCommand command, std::function<void()> completion);

private:
    void askProcess();
    void askProperties(const char* interface);
    void propertiesChanged(GVariant* arguments);
    void take(GVariant* properties);

    BusCalls calls_;
    std::string owner_;
    std::string busName_;
    std::function<void()> changed_;
    ProcessID pid_{0};
    MprisValues values_;
    int64_t statusChange_ = 0;
    guint subscription_ = 0;
};

}  // namespace morvel::x11
