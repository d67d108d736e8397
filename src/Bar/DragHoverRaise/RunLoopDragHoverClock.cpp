#include "Bar/DragHoverRaise/RunLoopDragHoverClock.h"

#include <utility>

namespace morvel {

DragHoverClock::Token RunLoopDragHoverClock::schedule(Seconds after, std::function<void()> action) {
    const Token token{++lastToken_};
    timers_[token] =
        mainLoop_.after(std::chrono::duration_cast<Duration>(after), [this, token, action = std::move(action)] {
            const auto fired = action;  // forgetting the timer destroys this closure; the action may destroy the clock
            timers_.erase(token);
            fired();
        });
    return token;
}

void RunLoopDragHoverClock::cancel(Token token) {
    timers_.erase(token);
}

}  // namespace morvel
