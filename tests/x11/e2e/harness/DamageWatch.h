// Records which parts of a window are drawn anew.
#pragma once

#include "harness/Desktop.h"
#include "harness/XServer.h"

namespace morvel::e2e {

class DamageWatch : public EventSource {
public:
    DamageWatch(XServer& server, Desktop& desktop, xcb_window_t window);
    ~DamageWatch() override;

    /// What was drawn since it was last asked, as boxes in the window's own space (origin: its top left corner).
    std::vector<Box> take();
    /// The same as one box around everything.
    Box takeExtents();

    int descriptor() const override { return connection_.descriptor(); }
    void serve() override;

private:
    Desktop& desktop_;  // outlives us
    Connection connection_;
    uint8_t firstEvent_ = 0;
    std::vector<Box> drawn_;
};

}  // namespace morvel::e2e
