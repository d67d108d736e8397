#include "Bar/MenuBar/MenuBar.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "Bar/MenuBar/MacOSMenuExtrasDetector.h"
#include "Bar/MenuBar/MacOSMenuTitlesDetector.h"
#include "Bar/MenuBar/MenuBarFrameProbe.h"
#include "Bar/MenuBar/MenuBarStrip.h"

namespace morvel {

namespace {

/// The system's own owners of status items, which are asked even when the window list does not show whose its items
/// are. The programs behind all others are known by their windows in the strip, so that the many that have no item are
/// never asked. Notification Center is not among them: the clock, which opens it, is Control Center's item.
constexpr std::array<std::string_view, 4> kSystemOwners = {"com.apple.controlcenter", "com.apple.systemuiserver",
                                                           "com.apple.Spotlight", "com.apple.TextInputMenuAgent"};

bool areSameItems(const std::vector<ListedWindow>& a, const std::vector<ListedWindow>& b) {
    return std::ranges::equal(a, b, [](const ListedWindow& x, const ListedWindow& y) {
        return x.number == y.number && x.owner == y.owner && x.bounds == y.bounds;
    });
}

}  // namespace

std::optional<double> MenuBar::height(const Screen& screen) {
    const auto frame = MenuBarFrameProbe::frame(windows(), screen, firstScreenHeight());
    return frame ? std::optional(frame->height) : std::nullopt;
}

std::optional<double> MenuBar::rightmostMenuTitleX(const Screen& screen) {
    if (!lastTitle_) {
        const auto owner = system_.workspace.menuBarOwner();
        lastTitle_ = owner && *owner != system_.workspace.ownProcess()
                         ? MacOSMenuTitlesDetector::lastTitle(system_.accessibility, *owner)
                         : std::nullopt;
    }
    return MacOSMenuTitlesDetector::rightmostMenuTitleX(*lastTitle_, menuBarStrip(screen, firstScreenHeight()));
}

StatusItemXs MenuBar::statusItems(const Screen& screen, int collapsedCount) {
    using namespace MacOSMenuExtrasDetector;
    const Rect<AXSpace> area = statusArea(screen, firstScreenHeight());
    StatusItemXs xs{.listed = statusItemXsViaWindowList(windows(), area, system_.workspace.ownProcess()),
                    .probedLeftmost = {}};
    const std::vector<double> probed = probe(probedItems(), area);
    // Where fewer items were told than stand there, some program did not answer, or told them for another display, and
    // those told need not be the rightmost ones.
    if (probed.size() < xs.listed.size()) return xs;
    xs.probedLeftmost = systemAreaLeftmostX(probed, static_cast<int>(probed.size()));
    xs.probedCollapsed = systemAreaLeftmostX(probed, collapsedCount);
    return xs;
}

void MenuBar::forget() {
    windows_.reset();
    lastTitle_.reset();
    areItemsProbed_ = false;
}

const std::vector<ListedWindow>& MenuBar::windows() {
    if (!windows_) windows_ = system_.windowServer.windowList(WindowListScope::OnScreen);
    return *windows_;
}

const std::vector<Rect<AXSpace>>& MenuBar::probedItems() {
    if (areItemsProbed_) return probedItems_;
    areItemsProbed_ = true;
    std::vector<ListedWindow> items = itemsOnAllScreens();
    // An empty list says nothing about what has changed.
    if (!items.empty() && areSameItems(items, probedFor_)) return probedItems_;
    probedItems_.clear();
    for (const ProcessID owner : ownersToAsk(items))
        for (const Rect<AXSpace>& item : MacOSMenuExtrasDetector::itemsOf(system_.accessibility, owner))
            probedItems_.push_back(item);
    probedFor_ = std::move(items);
    return probedItems_;
}

std::vector<ListedWindow> MenuBar::itemsOnAllScreens() {
    std::vector<ListedWindow> items;
    for (const Screen& screen : system_.screens.screens()) {
        const Rect<AXSpace> area = MacOSMenuExtrasDetector::statusArea(screen, firstScreenHeight());
        std::ranges::move(MacOSMenuExtrasDetector::statusItems(windows(), area, system_.workspace.ownProcess()),
                          std::back_inserter(items));
    }
    return items;
}

std::vector<ProcessID> MenuBar::ownersToAsk(const std::vector<ListedWindow>& items) {
    std::vector<ProcessID> owners;
    const auto add = [&](ProcessID owner) {
        // This program's own item is not asked for: the answer would have to come from the thread that waits for it.
        if (owner != system_.workspace.ownProcess() && std::ranges::count(owners, owner) == 0) owners.push_back(owner);
    };
    for (const RunningApplication& application : system_.workspace.runningApplications())
        if (application.bundleID && std::ranges::count(kSystemOwners, *application.bundleID) > 0) add(application.pid);
    for (const ListedWindow& item : items)
        if (item.owner) add(*item.owner);
    return owners;
}

double MenuBar::firstScreenHeight() const {
    const std::vector<Screen> screens = system_.screens.screens();
    return screens.empty() ? 0 : screens.front().frame.height;
}

}  // namespace morvel
