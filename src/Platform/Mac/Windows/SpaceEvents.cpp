// Registers with the server once, and brings its callback's event to the main thread.
#include "Platform/Mac/Windows/SpaceEvents.h"

#include "Platform/Mac/apple/Dispatch.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Platform/Mac/objc/Guard.h"

namespace morvel::mac {

namespace {

constexpr std::uint32_t kSpaceEvents[] = {1327, 1328};

/// Who hears. The server keeps the callback for the rest of the process, longer than any object that could be its
/// context, so the callback carries none and the way back is here. Read and written on the main thread only.
SpaceEvents* listening = nullptr;

}  // namespace

SpaceEvents::~SpaceEvents() {
    if (listening == this) listening = nullptr;
}

Subscription SpaceEvents::observe(std::function<void(std::uint32_t)> changed) {
    if (!ensureRegistered()) return {};
    return events_.subscribe(std::move(changed));
}

bool SpaceEvents::ensureRegistered() {
    if (isRegistered_) return true;
    auto* const registerNotify = functions_.registerNotify.get();
    if (!registerNotify) return false;
    listening = this;
    isRegistered_ = true;
    const std::int32_t connection = functions_.connection();
    for (const std::uint32_t event : kSpaceEvents) registerNotify(connection, &received, event, nullptr);
    return true;
}

void SpaceEvents::received(std::uint32_t event, void*, std::size_t, void*) {
    // Any thread: nothing but the hop. The number travels as the context itself.
    dispatch_async_f(&_dispatch_main_q, reinterpret_cast<void*>(static_cast<std::uintptr_t>(event)), &deliver);
}

void SpaceEvents::deliver(void* event) {
    const objc::AutoreleasePool pool;
    if (!listening) return;
    objc::guarded("Space change", [&] {
        listening->events_.emit(static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(event)));
    });
}

}  // namespace morvel::mac
