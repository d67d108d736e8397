#include "Bar/RebuildSchedule.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace morvel {

namespace {

/// A window that changes its title ten times a second must not have all windows looked at each time. Their order and
/// their Spaces, of which no notice tells, follow this much later.
constexpr Duration kWholeLookDelay = std::chrono::seconds(1);

}  // namespace

RebuildSchedule::RebuildSchedule(MainLoop& mainLoop, const WindowStore& store, Actions actions)
    : mainLoop_(mainLoop),
      store_(store),
      actions_(std::move(actions)),
      events_(store.observeEvents([this](const WindowEvent& event) { noteEvent(event); })),
      windows_(store.windows().subscribe([this](const WindowMapRef&) { windowsPublished(); }, Current::Skip)) {}

void RebuildSchedule::noteEvent(const WindowEvent& event) {
    const auto* change = actions_.doTitlesDecideWidths() ? nullptr : std::get_if<event::TitleChanged>(&event);
    if (change) {
        retitled_.insert(change->id);
    } else if (!std::holds_alternative<event::Focused>(event)) {
        isMoreThanRetitled_ = true;
    }
}

void RebuildSchedule::windowsPublished() {
    schedule(isMoreThanRetitled_ ? Rebuild::IfNeeded : Rebuild::Titles);
}

void RebuildSchedule::schedule(Rebuild rebuild) {
    if (std::exchange(scheduled_, std::max(scheduled_, rebuild)) != Rebuild::None) return;
    mainLoop_.post(lifetime_.whileAlive([this] { run(std::exchange(scheduled_, Rebuild::None)); }));
}

void RebuildSchedule::run(Rebuild due) {
    showTitles();
    if (due == Rebuild::Titles) {
        if (!wholeLook_) wholeLook_ = mainLoop_.after(kWholeLookDelay, [this] { run(Rebuild::IfNeeded); });
        return;
    }
    wholeLook_.reset();
    actions_.rebuild(due);
}

void RebuildSchedule::showTitles() {
    isMoreThanRetitled_ = false;
    const WindowMap& windows = *store_.windows().value();
    for (const WindowID& id : std::exchange(retitled_, {}))
        if (const auto window = windows.find(id); window != windows.end()) actions_.retitle(window->second);
}

}  // namespace morvel
