// The main loop's timers as the clock of resting drags.
#pragma once

#include <unordered_map>

#include "Bar/DragHoverRaise/DragHoverClock.h"
#include "Platform/MainLoop.h"

namespace morvel {

class RunLoopDragHoverClock : public DragHoverClock {
public:
    /// The loop outlives the clock.
    explicit RunLoopDragHoverClock(MainLoop& mainLoop) : mainLoop_(mainLoop) {}

    Token schedule(Seconds after, std::function<void()> action) override;
    void cancel(Token token) override;

private:
    MainLoop& mainLoop_;
    uint64_t lastToken_ = 0;
    std::unordered_map<Token, Timer> timers_;
};

}  // namespace morvel
