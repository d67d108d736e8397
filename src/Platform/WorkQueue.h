// Work off the main thread, one piece after the other.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace morvel {

/// A serial queue. Destroying it drops the pieces that have not begun; one that has begun may still run afterwards, so
/// a piece uses only what it owns. What it finds out goes back to the main thread with `MainLoop::post`.
class WorkQueue {
public:
    virtual ~WorkQueue() = default;

    /// Runs `work` on a background thread after what was given before it. Any thread. `work` must not throw.
    virtual void run(std::function<void()> work) = 0;
};

/// Makes a queue; the label is for the system's own tools.
using MakeWorkQueue = std::function<std::unique_ptr<WorkQueue>(const std::string& label)>;

}  // namespace morvel
