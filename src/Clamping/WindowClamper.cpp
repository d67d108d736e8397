#include "Clamping/WindowClamper.h"

#include <algorithm>
#include <utility>

#include "Clamping/ClampingMath.h"

namespace morvel {

namespace {

using namespace std::chrono_literals;

/// Applications restore a new window's place in steps; shrinking it between two of them loses the saved size.
constexpr Duration kFirstClampDelay = 500ms;
/// Many windows that come one after the other, as at log-in, are then looked at together.
constexpr Duration kFirstLooksPeriod = 50ms;
/// While displays come and go the system moves windows to others and back.
constexpr Duration kScreensSettleDelay = 500ms;
/// There is no notice of a button that is released over another program.
constexpr Duration kReleasePollPeriod = 100ms;

}  // namespace

WindowClamper::WindowClamper(System system, const WindowStore& store, const ClampingBlacklist& blacklist,
                             const SettingsStore& settings)
    : system_(std::move(system)), store_(store), blacklist_(blacklist), settings_(settings) {}

void WindowClamper::start() {
    const auto looks = [this](const auto&) { lookSoon(); };
    const auto reexamines = [this](const auto&) { reexamine(); };
    lookSoon();
    subscriptions_.push_back(store_.observeEvents([this](const WindowEvent& event) {
        const bool isOfPlaces =
            !std::holds_alternative<event::TitleChanged>(event) && !std::holds_alternative<event::Focused>(event);
        if (isOfPlaces) lookSoon();
    }));
    subscriptions_.push_back(settings_.barEdge.subscribe(reexamines, Current::Skip));
    subscriptions_.push_back(settings_.barHeight.subscribe(reexamines, Current::Skip));
    subscriptions_.push_back(settings_.compactAtTop.subscribe(reexamines, Current::Skip));
    subscriptions_.push_back(settings_.matchMenuBarHeight.subscribe(reexamines, Current::Skip));
    subscriptions_.push_back(blacklist_.bundleIDs().subscribe(looks, Current::Skip));
    subscriptions_.push_back(settings_.clampWindows.subscribe(looks, Current::Skip));
    subscriptions_.push_back(settings_.autoHide.subscribe(looks, Current::Skip));
    subscriptions_.push_back(system_.workspace.observeSessionActivated([this] { lookSoon(); }));
    subscriptions_.push_back(system_.screens.observeChanges([this] {
        screensSettled_ = system_.mainLoop.after(kScreensSettleDelay, [this] {
            screensSettled_.reset();
            reexamine();
        });
    }));
}

std::optional<Rect<ScreenSpace>> WindowClamper::reservedRect(const Screen& screen) const {
    const bool isBesideMenuBar = settings_.compactAtTop.value() && settings_.matchMenuBarHeight.value();
    return ClampingMath::reservedRect(screen.frame, settings_.barEdge.value(), settings_.barHeight.value(),
                                      isBesideMenuBar);
}

/// In a later turn, because a setting out of range is published before the one that takes its place, and because many
/// windows may change in one turn.
void WindowClamper::lookSoon() {
    if (std::exchange(isLookPosted_, true)) return;
    system_.mainLoop.post(lifetime_.whileAlive([this] {
        isLookPosted_ = false;
        applyAll();
    }));
}

void WindowClamper::reexamine() {
    for (auto& [id, record] : records_) {
        record.lastSeenFrame.reset();
        record.lastWrittenFrame.reset();
        record.dispute = {};
    }
    lookSoon();
}

void WindowClamper::applyAll() {
    const WindowMapRef windows = store_.windows().value();
    std::erase_if(records_, [&](const auto& entry) { return !windows->contains(entry.first); });
    if (screensSettled_ || !system_.workspace.isSessionActive()) return;
    for (const auto& [id, window] : *windows)
        if (!window.isWindowless) apply(window);
}

void WindowClamper::apply(const WindowSnapshot& window) {
    if (window.isFullscreen) return;
    Record& record = records_[window.id];
    if (isExempt(window)) return release(window, record);
    if (!record.wasSeen) return scheduleFirstLook(record);
    if (record.firstLook) return;
    if (record.lastWrittenFrame && ClampingMath::framesApproxEqual(window.frame, *record.lastWrittenFrame)) {
        record.dispute.accepted();
        return;
    }
    if (record.lastSeenFrame == window.frame) return;
    clamp(window, record);
}

void WindowClamper::scheduleFirstLook(Record& record) {
    record.wasSeen = true;
    record.firstLook = system_.mainLoop.now() + kFirstClampDelay;
    if (!firstLooks_) firstLooks_ = system_.mainLoop.after(kFirstClampDelay, [this] { takeFirstLooks(); });
}

void WindowClamper::takeFirstLooks() {
    firstLooks_.reset();
    const Instant now = system_.mainLoop.now();
    std::optional<Duration> next;
    for (auto& [id, record] : records_) {
        if (!record.firstLook) continue;
        const Duration left = *record.firstLook - now;
        if (left > Duration{}) {
            next = std::min(next.value_or(left), left);
            continue;
        }
        record.firstLook.reset();
        lookSoon();
    }
    if (!next) return;
    firstLooks_ = system_.mainLoop.after(std::max(*next, kFirstLooksPeriod), [this] { takeFirstLooks(); });
}

bool WindowClamper::isExempt(const WindowSnapshot& window) const {
    // A bar that hides itself leaves its strip to the windows.
    if (!settings_.clampWindows.value() || settings_.autoHide.value()) return true;
    return window.bundleID && blacklist_.contains(*window.bundleID);
}

void WindowClamper::release(const WindowSnapshot& window, Record& record) {
    const auto original = ClampingMath::restoreTarget(window.frame, record.originalFrame, record.didClamp);
    if (original && mustAwaitRelease()) return;
    // When the window is clamped again, its frame of that time is the original and neither seen nor written by us.
    record.didClamp = false;
    record.lastSeenFrame.reset();
    record.lastWrittenFrame.reset();
    record.dispute = {};
    if (original) system_.setWindowFrame(window.id, *original);
}

void WindowClamper::clamp(const WindowSnapshot& window, Record& record) {
    record.lastSeenFrame = window.frame;
    const std::vector<Screen> screens = system_.screens.screens();
    if (screens.empty()) return;
    const double mainHeight = screens.front().frame.height;
    const Rect<ScreenSpace> frame = toScreen(window.frame, mainHeight);
    const Screen* screen = ClampingMath::screenOf(frame, screens);
    if (!screen) return;
    const auto clear = ClampingMath::corrected(frame, screen->frame, reservedRect(*screen), settings_.barEdge.value());
    if (!clear) return record.dispute.movedClear(system_.mainLoop.now());
    if (mustAwaitRelease()) {
        record.lastSeenFrame.reset();
        return;
    }
    if (!record.dispute.mayWrite(window.frame, system_.mainLoop.now())) return;
    if (!record.didClamp) record.originalFrame = window.frame;
    record.didClamp = true;
    record.lastWrittenFrame = toAX(*clear, mainHeight);
    system_.setWindowFrame(window.id, *record.lastWrittenFrame);
}

bool WindowClamper::mustAwaitRelease() {
    if (!system_.isMouseButtonDown()) return false;
    if (!buttonReleased_) awaitRelease();
    return true;
}

void WindowClamper::awaitRelease() {
    buttonReleased_ = system_.mainLoop.after(kReleasePollPeriod, [this] {
        buttonReleased_.reset();
        system_.isMouseButtonDown() ? awaitRelease() : applyAll();
    });
}

}  // namespace morvel
