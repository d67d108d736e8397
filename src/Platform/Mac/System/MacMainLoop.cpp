// Posted work is gathered and run by one wake-up of the main queue; timers are dispatch sources.
#include "Platform/Mac/System/MacMainLoop.h"

#include <mutex>
#include <vector>

#include "Platform/Mac/System/DispatchTimer.h"
#include "Platform/Mac/apple/Dispatch.h"
#include "Platform/Mac/apple/Uptime.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Platform/Mac/objc/Guard.h"

namespace morvel::mac {

/// Work for the next turn. A turn that is scheduled with the system only refers to it, so that one that comes after the
/// main loop's end does nothing.
class MacMainLoop::Posted : public std::enable_shared_from_this<Posted> {
public:
    void add(std::function<void()> work) {
        bool isFirst = false;
        {
            const std::lock_guard lock(mutex_);
            isFirst = work_.empty();
            work_.push_back(std::move(work));
        }
        if (isFirst) dispatch_async_f(&_dispatch_main_q, new std::weak_ptr<Posted>(weak_from_this()), &turn);
    }

private:
    static void turn(void* context) {
        const objc::AutoreleasePool pool;
        const std::unique_ptr<std::weak_ptr<Posted>> owned(static_cast<std::weak_ptr<Posted>*>(context));
        if (const auto posted = owned->lock()) posted->run();
    }

    void run() {
        std::vector<std::function<void()>> work;
        {
            const std::lock_guard lock(mutex_);
            work.swap(work_);
        }
        for (const auto& piece : work) objc::guarded("posted work", piece);
    }

    std::mutex mutex_;
    std::vector<std::function<void()>> work_;
};

MacMainLoop::MacMainLoop() : posted_(std::make_shared<Posted>()) {}
MacMainLoop::~MacMainLoop() = default;

Instant MacMainLoop::now() const {
    return Instant(Duration(static_cast<Duration::rep>(uptimeNanoseconds())));
}

void MacMainLoop::post(std::function<void()> work) {
    posted_->add(std::move(work));
}

Timer MacMainLoop::after(Duration delay, std::function<void()> fire) {
    return DispatchTimer::start(delay, std::nullopt, std::move(fire));
}

Timer MacMainLoop::every(Duration first, Duration period, std::function<void()> fire) {
    return DispatchTimer::start(first, period, std::move(fire));
}

}  // namespace morvel::mac
