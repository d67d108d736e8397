// Whether the person sees their session: it is shown, the displays are awake, and the screen is not locked.
#pragma once

#include <functional>

#include "Util/Signal.h"

namespace morvel::mac {

/// Main thread only. At first the session counts as seen: there is no asking, only notices of what changes.
class SessionWatch {
public:
    SessionWatch();
    SessionWatch(const SessionWatch&) = delete;
    SessionWatch& operator=(const SessionWatch&) = delete;

    bool isActive() const { return isShown_ && isAwake_ && isUnlocked_; }
    [[nodiscard]] Subscription observeActivated(std::function<void()> activated) {
        return activated_.subscribe(std::move(activated));
    }

private:
    void set(bool SessionWatch::*part, bool value);

    bool isShown_ = true;
    bool isAwake_ = true;
    bool isUnlocked_ = true;
    Signal<> activated_;
    Subscriptions notices_;
};

}  // namespace morvel::mac
