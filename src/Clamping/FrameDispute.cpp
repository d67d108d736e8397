#include "Clamping/FrameDispute.h"

namespace morvel {

namespace {

using namespace std::chrono_literals;

/// Some applications need a second word; one that has refused this often means it.
constexpr int kMostRefusals = 3;
/// Another frame so soon after a write is the application's answer to it: it has limits, or rounds to its own grid.
constexpr Duration kAnswerTime = 300ms;
/// The very frame again so soon is insistence, even when ours was taken in between. A person zooming a window back
/// and forth shows another frame in between, and is not that quick.
constexpr Duration kInsistenceTime = 10s;

}  // namespace

bool FrameDispute::mayWrite(const Rect<AXSpace>& overlapping, Instant now) {
    refusals_ = isRefusal(overlapping, now) ? refusals_ + 1 : 0;
    if (refusals_ > kMostRefusals) return false;
    hasWritten_ = true;
    overlapping_ = overlapping;
    writtenAt_ = now;
    wasAccepted_ = false;
    return true;
}

void FrameDispute::movedClear(Instant now) {
    // Sooner it may be a step on the way to where the application puts it back.
    if (now - writtenAt_ >= kAnswerTime) *this = {};
}

bool FrameDispute::isRefusal(const Rect<AXSpace>& overlapping, Instant now) const {
    if (!hasWritten_) return false;
    const Duration since = now - writtenAt_;
    return (!wasAccepted_ && since < kAnswerTime) || (overlapping == overlapping_ && since < kInsistenceTime);
}

}  // namespace morvel
