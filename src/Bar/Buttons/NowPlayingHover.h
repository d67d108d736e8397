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
    /// A button of the bar is pressed: controls that are open close.
    std::function<void()> close;
};

/// Of one button, which owns it.
class NowPlayingHover {
public:
    explicit NowPlayingHover(NowPlayingControls controls) : controls_(std::move(controls)) {}

    /// The delay starts anew.
    void entered(ui::View& button, const std::string& bundleID) {
        constexpr Duration kDelay = std::chrono::milliseconds(500);
        if (!controls_.mainLoop) return;
        timer_ =
            controls_.mainLoop->after(kDelay, [open = controls_.open, &button, bundleID] { open(button, bundleID); });
    }
    void cancel() { timer_.reset(); }
    void pressed() {
        cancel();
        if (controls_.close) controls_.close();
    }

private:
    NowPlayingControls controls_;
    Timer timer_;
};

}  // namespace morvel
