// Tells when the pointer comes into a panel and leaves it, whatever views it is over there.
#pragma once

#include <functional>

#include "UI/View.h"

namespace morvel {

/// Lies behind a panel's other views, as large as its content; it takes no presses and shows nothing.
class PanelMouseObserver : public ui::View {
public:
    /// `moved` is called with true when the pointer has entered, with false when it has left.
    explicit PanelMouseObserver(std::function<void(bool)> moved) : moved_(std::move(moved)) {}

    bool tracksHover() const override { return true; }
    void mouseEntered(const ui::MouseEvent&) override { moved_(true); }
    void mouseExited() override { moved_(false); }

private:
    std::function<void(bool)> moved_;
};

}  // namespace morvel
