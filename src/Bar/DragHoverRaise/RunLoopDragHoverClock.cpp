#include "Bar/DragHoverRaise/RunLoopDragHoverClock.h"

#include <utility>

namespace morvel {

DragHoverClock::Token RunLoopDragHoverClock::schedule(Seconds after, std::function<void()> action) {
    const Token token{++lastToken_};
    timers_[token] =
        mainLoop_.after(std::chrono::duration_cast<Duration>(after), [this, token, action = std::move(action)] {
            timers_.erase(token);
            action();  // may destroy the clock
        });
    return token;
}

void RunLoopDragHoverClock::cancel(Token token) {
    timers_.erase(token);
}

}  // namespace morvel
