#include "UI/Animation.h"

#include <chrono>
#include <utility>

namespace morvel::ui {

namespace {

/// Sixty times a second: what any display shows.
constexpr Duration kFrame = std::chrono::microseconds(16667);

/// Slow, fast, slow, as a thing with weight moves.
double eased(double t) {
    return t * t * (3 - 2 * t);
}

}  // namespace

void Animation::start(Duration duration, std::function<void(double)> step) {
    frames_.reset();
    step_ = std::move(step);
    began_ = mainLoop_.now();
    duration_ = duration;
    if (duration_ <= Duration{}) return step_(1);
    frames_ = mainLoop_.every(kFrame, kFrame, [this] { frame(); });
}

void Animation::frame() {
    const double t = std::chrono::duration<double>(mainLoop_.now() - began_) / duration_;
    const auto step = step_;  // may start the animation anew
    if (t < 1) return step(eased(t));
    frames_.reset();
    step(1);
}

}  // namespace morvel::ui
