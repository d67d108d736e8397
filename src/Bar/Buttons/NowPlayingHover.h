// The delay after which a badged button that the pointer rests on opens the controls of what it plays.
#pragma once

#include <functional>
#include <string>

#include "Platform/MainLoop.h"
#include "UI/View.h"

namespace morvel {

/// What the buttons of a bar do about the controls. By default nothing.
struct NowPlayingControls {
    MainLoop* mainLoop = nullptr;  ///< outlives the buttons; null where there are no controls
    /// Opens them beside the button, if the application with this identifier is the one that plays.
    std::function<void(ui::View& button, const std::string& bundleID)> open;
    /// The button is pressed, or it goes: controls that are open beside it close.
    std::function<void(const ui::View& button)> close;
};

/// Of one button, which owns it.
class NowPlayingHover {
public:
    NowPlayingHover(ui::View& button, NowPlayingControls controls) : button_(button), controls_(std::move(controls)) {}
    ~NowPlayingHover() { pressed(); }
    NowPlayingHover(const NowPlayingHover&) = delete;
    NowPlayingHover& operator=(const NowPlayingHover&) = delete;

    /// The delay starts anew.
    void entered(const std::string& bundleID) {
        constexpr Duration kDelay = std::chrono::milliseconds(500);
        if (!controls_.mainLoop) return;
        timer_ = controls_.mainLoop->after(kDelay, [this, bundleID] { controls_.open(button_, bundleID); });
    }
    void cancel() { timer_.reset(); }
    void pressed() {
        cancel();
        if (controls_.close) controls_.close(button_);
    }

private:
    ui::View& button_;
    NowPlayingControls controls_;
    Timer timer_;
};

}  // namespace morvel
