#include "Platform/Mac/System/DispatchQueue.h"

#include <utility>

#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Platform/Mac/objc/Guard.h"

namespace morvel::mac {

struct DispatchQueue::Piece {
    std::shared_ptr<std::atomic<bool>> isQueueAlive;
    std::function<void()> work;

    static void run(void* context) {
        const std::unique_ptr<Piece> piece(static_cast<Piece*>(context));
        const objc::AutoreleasePool pool;
        if (*piece->isQueueAlive) objc::guarded("background work", piece->work);
    }
};

namespace {

std::uint32_t qosClass(DispatchQueue::Quality quality) {
    return quality == DispatchQueue::Quality::Utility ? QOS_CLASS_UTILITY : QOS_CLASS_USER_INITIATED;
}

}  // namespace

DispatchQueue::DispatchQueue(const std::string& label, Quality quality)
    : queue_(
          dispatch_queue_create(label.c_str(), dispatch_queue_attr_make_with_qos_class(nullptr, qosClass(quality), 0))),
      isAlive_(std::make_shared<std::atomic<bool>>(true)) {}

DispatchQueue::~DispatchQueue() {
    *isAlive_ = false;
    dispatch_release(dispatchObject(queue_));
}

void DispatchQueue::run(std::function<void()> work) {
    dispatch_async_f(queue_, new Piece{isAlive_, std::move(work)}, &Piece::run);
}

}  // namespace morvel::mac
