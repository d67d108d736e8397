#include "Platform/Mac/System/SignalWatch.h"

#include <csignal>
#include <memory>
#include <utility>
#include <vector>

#include "Platform/Mac/apple/Dispatch.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Platform/Mac/objc/Guard.h"

namespace morvel::mac {

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

void raised(void* context) {
    const objc::AutoreleasePool pool;
    objc::guarded("signal", *static_cast<const std::function<void()>*>(context));
}

}  // namespace

Subscription observeRequestsToEnd(std::function<void()> asked) {
    const auto call = std::make_shared<std::function<void()>>(std::move(asked));
    std::vector<dispatch_source_t> sources;
    for (const int signal : kSignals) {
        const dispatch_source_t source =
            dispatch_source_create(&_dispatch_source_type_signal, static_cast<uint64_t>(signal), 0, &_dispatch_main_q);
        if (!source) continue;
        // A handler rather than SIG_IGN, which programs that we start would inherit.
        std::signal(signal, [](int) {});
        dispatch_set_context(dispatchObject(source), call.get());
        dispatch_source_set_event_handler_f(source, &raised);
        dispatch_resume(dispatchObject(source));
        sources.push_back(source);
    }
    return Subscription([call, sources] {
        for (const dispatch_source_t source : sources) {
            dispatch_source_cancel(source);
            dispatch_release(dispatchObject(source));
        }
        for (const int signal : kSignals) std::signal(signal, SIG_DFL);
    });
}

}  // namespace morvel::mac
