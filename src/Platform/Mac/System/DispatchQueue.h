// A serial dispatch queue.
#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "Platform/Mac/apple/Dispatch.h"
#include "Platform/WorkQueue.h"

namespace morvel::mac {

class DispatchQueue : public WorkQueue {
public:
    /// Utility: the system runs it when nothing more urgent waits. UserInitiated: a person waits for it.
    enum class Quality { Utility, UserInitiated };

    explicit DispatchQueue(const std::string& label, Quality quality = Quality::Utility);
    ~DispatchQueue() override;
    DispatchQueue(const DispatchQueue&) = delete;
    DispatchQueue& operator=(const DispatchQueue&) = delete;

    void run(std::function<void()> work) override;

private:
    struct Piece;

    dispatch_queue_t queue_;
    std::shared_ptr<std::atomic<bool>> isAlive_;  // shared with the pieces that wait
};

}  // namespace morvel::mac
