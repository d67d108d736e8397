// A vnode source of the main queue on a folder's descriptor: the folder's own or that of one above it.
#include "Platform/Mac/System/FolderWatch.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <optional>
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

constexpr std::uint64_t kChanges = DISPATCH_VNODE_WRITE | DISPATCH_VNODE_DELETE | DISPATCH_VNODE_RENAME;

/// Lives until the source has been cancelled for good: only then may the descriptor be closed.
struct Watch {
    int descriptor;
    std::function<void()> changed;
    bool isEnded = false;

    static void fired(void* context) {
        const objc::AutoreleasePool pool;
        auto& watch = *static_cast<Watch*>(context);
        const std::function<void()> changed = watch.changed;  // it may end the token
        if (!watch.isEnded) objc::guarded("folder watch", changed);
    }
    static void cancelled(void* context) {
        const std::unique_ptr<Watch> watch(static_cast<Watch*>(context));
        ::close(watch->descriptor);
    }
};

/// Of a folder that exists. An empty token when it cannot be watched.
Subscription watchExisting(const std::string& path, std::function<void()> changed) {
    const int descriptor = ::open(path.c_str(), kForEventsOnly | O_CLOEXEC | O_DIRECTORY);
    if (descriptor < 0) return {};
    const dispatch_source_t source = dispatch_source_create(
        &_dispatch_source_type_vnode, static_cast<std::uint64_t>(descriptor), kChanges, &_dispatch_main_q);
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

/// What tells a folder from another one that later has its name.
struct FolderIdentity {
    dev_t device;
    ino_t file;
    bool operator==(const FolderIdentity&) const = default;
};

std::optional<FolderIdentity> identityOf(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return std::nullopt;
    return FolderIdentity{status.st_dev, status.st_ino};
}

/// Watches the folder while there is one, and else the nearest one above it, in which the way to it will begin.
class PathWatch {
public:
    PathWatch(std::string path, std::function<void()> changed) : path_(std::move(path)), changed_(std::move(changed)) {
        follow();
    }

private:
    void follow() {
        std::string nearest = path_;
        auto found = identityOf(nearest);
        while (!found && nearest.size() > 1) {
            nearest.resize(std::max<size_t>(nearest.rfind('/'), 1));
            found = identityOf(nearest);
        }
        isThere_ = found && nearest == path_;
        if (std::exchange(watched_, found) != found) watch_ = watchExisting(nearest, [this] { somethingChanged(); });
    }

    void somethingChanged() {
        const bool wasThere = isThere_;
        follow();
        const auto changed = changed_;  // may end this watch
        if (wasThere || isThere_) changed();
    }

    std::string path_;
    std::function<void()> changed_;
    bool isThere_ = false;
    std::optional<FolderIdentity> watched_;
    Subscription watch_;
};

}  // namespace

Subscription watchFolder(const std::string& path, std::function<void()> changed) {
    if (!path.starts_with('/')) return {};
    auto watch = std::make_shared<PathWatch>(path, std::move(changed));
    return Subscription([watch]() mutable { watch.reset(); });
}

}  // namespace morvel::mac
