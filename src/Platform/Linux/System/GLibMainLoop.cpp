#include "Platform/Linux/System/GLibMainLoop.h"

#include <glib-unix.h>

#include <algorithm>
#include <utility>

namespace morvel::x11 {

namespace {

gboolean callCallback(GSource*, GSourceFunc callback, gpointer data) {
    return callback ? callback(data) : G_SOURCE_REMOVE;
}

// A source without a descriptor that becomes ready at its ready time alone.
GSourceFuncs timeFuncs{nullptr, nullptr, callCallback, nullptr, nullptr, nullptr};

// Rounded up, so that a timer never fires before its time.
gint64 toMicroseconds(Duration duration) {
    return std::chrono::ceil<std::chrono::microseconds>(std::max(duration, Duration{})).count();
}

// What a source calls. GLib keeps it alive while it runs, even when the call destroys the source.
struct Closure {
    std::function<void()> call;
    GSource* source = nullptr;
    Duration period{};
};

void deleteClosure(gpointer data) {
    delete static_cast<Closure*>(data);
}

gboolean fireTimer(gpointer data) {
    auto& closure = *static_cast<Closure*>(data);
    if (closure.period <= Duration{}) {
        closure.call();
        return G_SOURCE_REMOVE;
    }
    // The next time is counted from the one that was due, so that a period does not drift; what was missed while
    // the program stood still is not made up for.
    const gint64 period = std::max<gint64>(toMicroseconds(closure.period), 1);
    const gint64 next = g_source_get_ready_time(closure.source) + period;
    g_source_set_ready_time(closure.source, std::max(next, g_get_monotonic_time()));
    closure.call();
    return G_SOURCE_CONTINUE;
}

gboolean callReadable(gint, GIOCondition, gpointer data) {
    static_cast<Closure*>(data)->call();
    return G_SOURCE_CONTINUE;
}

gboolean callRaised(gpointer data) {
    static_cast<Closure*>(data)->call();
    return G_SOURCE_CONTINUE;
}

// Takes over the reference.
Subscription endSource(GSource* source) {
    return Subscription([source] {
        g_source_destroy(source);
        g_source_unref(source);
    });
}

}  // namespace

/// Asks whether there is work before each wait. Ready times would wake the loop by a write to itself and a turn more
/// for each of their changes.
struct GLibMainLoop::PostedSource {
    GSource base;
    GLibMainLoop* loop;

    static gboolean prepare(GSource* source, gint* timeout) {
        *timeout = -1;
        return check(source);
    }
    static gboolean check(GSource* source) {
        return reinterpret_cast<PostedSource*>(source)->loop->hasPosted() ? TRUE : FALSE;
    }
    static gboolean dispatch(GSource* source, GSourceFunc, gpointer) {
        reinterpret_cast<PostedSource*>(source)->loop->runPosted();
        return G_SOURCE_CONTINUE;
    }
};

GLibMainLoop::GLibMainLoop() : loop_(g_main_loop_new(nullptr, FALSE)), mainThread_(std::this_thread::get_id()) {
    static GSourceFuncs funcs{
        PostedSource::prepare, PostedSource::check, PostedSource::dispatch, nullptr, nullptr, nullptr};
    postedSource_ = g_source_new(&funcs, sizeof(PostedSource));
    reinterpret_cast<PostedSource*>(postedSource_)->loop = this;
    g_source_attach(postedSource_, nullptr);
}

GLibMainLoop::~GLibMainLoop() {
    g_source_destroy(postedSource_);
    g_source_unref(postedSource_);
    g_main_loop_unref(loop_);
}

Instant GLibMainLoop::now() const {
    return Instant(std::chrono::duration_cast<Duration>(std::chrono::steady_clock::now().time_since_epoch()));
}

void GLibMainLoop::post(std::function<void()> work) {
    {
        const std::lock_guard lock(mutex_);
        posted_.push_back(std::move(work));
    }
    if (std::this_thread::get_id() != mainThread_) g_main_context_wakeup(nullptr);
}

bool GLibMainLoop::hasPosted() {
    const std::lock_guard lock(mutex_);
    return !posted_.empty();
}

void GLibMainLoop::runPosted() {
    std::vector<std::function<void()>> work;
    {
        const std::lock_guard lock(mutex_);
        work.swap(posted_);
    }
    for (auto& each : work) std::exchange(each, nullptr)();
}

Timer GLibMainLoop::after(Duration delay, std::function<void()> fire) {
    return arm(delay, {}, std::move(fire));
}

Timer GLibMainLoop::every(Duration first, Duration period, std::function<void()> fire) {
    return arm(first, std::max<Duration>(period, std::chrono::microseconds(1)), std::move(fire));
}

Timer GLibMainLoop::arm(Duration first, Duration period, std::function<void()> fire) {
    GSource* source = g_source_new(&timeFuncs, sizeof(GSource));
    g_source_set_ready_time(source, g_get_monotonic_time() + toMicroseconds(first));
    g_source_set_callback(source, fireTimer, new Closure{std::move(fire), source, period}, deleteClosure);
    g_source_attach(source, nullptr);
    return endSource(source);
}

Subscription GLibMainLoop::watchReadable(int fd, std::function<void()> readable) {
    GSource* source = g_unix_fd_source_new(fd, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR));
    g_source_set_callback(source, G_SOURCE_FUNC(callReadable), new Closure{std::move(readable)}, deleteClosure);
    g_source_attach(source, nullptr);
    return endSource(source);
}

Subscription GLibMainLoop::watchSignal(int signal, std::function<void()> raised) {
    GSource* source = g_unix_signal_source_new(signal);
    g_source_set_callback(source, callRaised, new Closure{std::move(raised)}, deleteClosure);
    g_source_attach(source, nullptr);
    return endSource(source);
}

int GLibMainLoop::run() {
    if (!hasQuit_) g_main_loop_run(loop_);
    return exitCode_;
}

void GLibMainLoop::quit(int exitCode) {
    if (hasQuit_) return;
    hasQuit_ = true;
    exitCode_ = exitCode;
    g_main_loop_quit(loop_);
}

bool GLibMainLoop::turn(bool mayBlock) {
    return g_main_context_iteration(nullptr, mayBlock ? TRUE : FALSE) != FALSE;
}

}  // namespace morvel::x11
