// A vnode source of the main queue on the folder's descriptor.
#include "Platform/Mac/System/FolderWatch.h"

#include <fcntl.h>
#include <unistd.h>

#include <memory>
#include <utility>

#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Platform/Mac/objc/Guard.h"

namespace morvel::mac {

namespace {

#if defined(O_EVTONLY)
constexpr int kForEventsOnly = O_EVTONLY;  // keeps no volume from being ejected
#else
constexpr int kForEventsOnly = O_RDONLY;
#endif

/// Lives until the source has been cancelled for good: only then may the descriptor be closed.
struct Watch {
    int descriptor;
    std::function<void()> changed;
    bool isEnded = false;

    static void fired(void* context) {
        const objc::AutoreleasePool pool;
        // What was cancelled is gone in a later turn at the earliest, so the handler may end the token.
        const auto& watch = *static_cast<const Watch*>(context);
        if (!watch.isEnded) objc::guarded("folder watch", watch.changed);
    }
    static void cancelled(void* context) {
        const std::unique_ptr<Watch> watch(static_cast<Watch*>(context));
        ::close(watch->descriptor);
    }
};

}  // namespace

Subscription watchFolder(const std::string& path, std::function<void()> changed) {
    const int descriptor = ::open(path.c_str(), kForEventsOnly | O_CLOEXEC | O_DIRECTORY);
    if (descriptor < 0) return {};
    const dispatch_source_t source =
        dispatch_source_create(&_dispatch_source_type_vnode, static_cast<std::uint64_t>(descriptor),
                               DISPATCH_VNODE_WRITE, &_dispatch_main_q);
    if (!source) {
        ::close(descriptor);
        return {};
    }
    auto* const watch = new Watch{descriptor, std::move(changed)};
    dispatch_set_context(dispatchObject(source), watch);
    dispatch_source_set_event_handler_f(source, &Watch::fired);
    dispatch_source_set_cancel_handler_f(source, &Watch::cancelled);
    dispatch_resume(dispatchObject(source));
    return Subscription([source, watch] {
        watch->isEnded = true;
        dispatch_source_cancel(source);
        dispatch_release(dispatchObject(source));
    });
}

}  // namespace morvel::mac
