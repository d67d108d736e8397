// Tells an application that keeps putting its window back from a person who moves it there again.
#pragma once

#include "Platform/MainLoop.h"
#include "Util/Geometry.h"

namespace morvel {

/// Of one window that is to be shrunk. After too many refusals in a row nothing more is written until the window
/// changes by itself, so that two programs never fight over a frame.
class FrameDispute {
public:
    /// The window overlaps with this frame: whether shrinking it is worth a try. Counts, so it is asked once per try.
    bool mayWrite(const Rect<AXSpace>& overlapping, Instant now);
    /// The window has taken the frame that was written.
    void accepted() { wasAccepted_ = true; }
    /// The window has another frame that does not overlap.
    void movedClear(Instant now);

private:
    bool isRefusal(const Rect<AXSpace>& overlapping, Instant now) const;

    bool hasWritten_ = false;
    Rect<AXSpace> overlapping_;  // that the last write was about
    Instant writtenAt_;
    bool wasAccepted_ = false;
    int refusals_ = 0;  // in a row
};

}  // namespace morvel
