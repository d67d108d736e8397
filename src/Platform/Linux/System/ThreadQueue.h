// A serial queue on a thread of its own, which starts with the first piece of work.
#pragma once

#include <memory>

#include "Platform/WorkQueue.h"

namespace morvel::x11 {

class ThreadQueue : public WorkQueue {
public:
    ThreadQueue();
    /// The thread ends by itself after the piece it is in.
    ~ThreadQueue() override;
    ThreadQueue(const ThreadQueue&) = delete;
    ThreadQueue& operator=(const ThreadQueue&) = delete;

    void run(std::function<void()> work) override;

private:
    class State;

    std::shared_ptr<State> state_;
};

}  // namespace morvel::x11
