#include "Platform/Linux/System/ThreadQueue.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

namespace morvel::x11 {
namespace {

TEST(ThreadQueue, RunsOnePieceAfterTheOtherOnAnotherThread) {
    ThreadQueue queue;
    std::string order;  // touched by the queue alone until the end is reached
    std::promise<std::thread::id> ended;
    queue.run([&] { order += "a"; });
    queue.run([&] { order += "b"; });
    queue.run([&] { ended.set_value(std::this_thread::get_id()); });
    EXPECT_NE(ended.get_future().get(), std::this_thread::get_id());
    EXPECT_EQ(order, "ab");
}

TEST(ThreadQueue, GoingAwayDropsWhatWaitsAndDoesNotWaitForWhatHangs) {
    auto queue = std::make_unique<ThreadQueue>();
    const auto begun = std::make_shared<std::promise<void>>();
    const auto mayEnd = std::make_shared<std::promise<void>>();
    const auto hasEnded = std::make_shared<std::promise<void>>();
    queue->run([=] {
        begun->set_value();
        mayEnd->get_future().wait();
        hasEnded->set_value();
    });
    const auto carried = std::make_shared<int>(0);
    queue->run([carried] { FAIL() << "its queue is gone"; });
    begun->get_future().wait();
    queue.reset();
    EXPECT_EQ(carried.use_count(), 1);
    mayEnd->set_value();
    hasEnded->get_future().wait();
}

}  // namespace
}  // namespace morvel::x11
