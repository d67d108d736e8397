// Background work that a test can hold up.
#pragma once

#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "Platform/WorkQueue.h"
#include "sim/FakeMainLoop.h"

namespace morvel::sim {

/// All queues of a desktop. Pieces run as turns of the main loop, in the order they were given, unless they are held.
class SimWorkQueues {
public:
    explicit SimWorkQueues(FakeMainLoop& mainLoop) : mainLoop_(mainLoop) {}

    std::unique_ptr<WorkQueue> make(const std::string& label) {
        labels.push_back(label);
        return std::make_unique<Queue>(*this);
    }

    /// From now on nothing begins, as if a piece hung.
    void hold() { isHeld_ = true; }
    void letGo() {
        isHeld_ = false;
        for (auto& work : std::exchange(held_, {})) mainLoop_.post(std::move(work));
    }

    std::vector<std::string> labels;  ///< of the queues that were made

private:
    class Queue : public WorkQueue {
    public:
        explicit Queue(SimWorkQueues& all) : all_(all) {}
        void run(std::function<void()> work) override {
            all_.add([alive = std::weak_ptr(alive_), work = std::move(work)] {
                if (!alive.expired()) work();
            });
        }

    private:
        SimWorkQueues& all_;
        std::shared_ptr<int> alive_ = std::make_shared<int>();
    };

    void add(std::function<void()> work) {
        if (isHeld_) return held_.push_back(std::move(work));
        mainLoop_.post(std::move(work));
    }

    FakeMainLoop& mainLoop_;
    bool isHeld_ = false;
    std::deque<std::function<void()>> held_;
};

}  // namespace morvel::sim
