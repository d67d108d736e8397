// A serial dispatch queue of utility quality: the system runs it when nothing more urgent waits.
#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "Platform/Mac/apple/Dispatch.h"
#include "Platform/WorkQueue.h"

namespace morvel::mac {

class DispatchQueue : public WorkQueue {
public:
    explicit DispatchQueue(const std::string& label);
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
