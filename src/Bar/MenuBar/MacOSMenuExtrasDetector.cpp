#include "Bar/MenuBar/MacOSMenuExtrasDetector.h"

#include <algorithm>

#include "Bar/BarFrame.h"
#include "Bar/MenuBar/MenuBarStrip.h"
#include "Platform/AXNames.h"
#include "WindowSource/AXReader.h"

namespace morvel::MacOSMenuExtrasDetector {

namespace {

/// Each status item is a window of its own at the status level, one on each display that has a menu bar.
constexpr int kStatusLevel = 25;
/// How far an item may stand out of the strip: frames are rounded, and the strip is a point higher than its items.
constexpr double kTolerance = 2;
/// Of the strip's height. Overlays and bars of other programs at the same level are lower, or longer than half of it.
constexpr double kLeastShareOfHeight = 0.5;
/// A status item of this program is an icon. Its bars are longer.
constexpr double kWidestOwnItem = 60;
/// Control Center shows about a dozen; a process that claims to have thousands is not asked about all of them.
constexpr size_t kMostItemsAsked = 40;

/// Items for which there is no room are kept out of the area or without size; so is the one of the input menu while it
/// is switched off, which its agent tells nevertheless. The banners of notifications are windows at the same level,
/// but hang below the strip. Programs that hide items make one so long that it pushes others off the screen.
bool isItem(const Rect<AXSpace>& frame, const Rect<AXSpace>& area) {
    return !frame.isEmpty() && frame.minX() >= area.minX() - kTolerance && frame.maxX() <= area.maxX() + kTolerance &&
           frame.minY() >= area.minY() - kTolerance && frame.maxY() <= area.maxY() + kTolerance &&
           frame.height >= area.height * kLeastShareOfHeight && frame.width <= area.width / 2;
}

bool isPanelOfOurs(const ListedWindow& window, ProcessID ownProcess) {
    return window.owner == ownProcess &&
           (window.bounds.width > kWidestOwnItem || window.bounds.width == kCompactTopStripWidth);
}

}  // namespace

Rect<AXSpace> statusArea(const Screen& screen, double firstScreenHeight) {
    Rect<AXSpace> area = menuBarStrip(screen, firstScreenHeight);
    if (!screen.auxiliaryTopRight) return area;
    const double taken = screen.auxiliaryTopRight->minX() - area.minX();
    area.x += taken;
    area.width -= taken;
    return area;
}

std::vector<ListedWindow> statusItems(const std::vector<ListedWindow>& windows, const Rect<AXSpace>& area,
                                      ProcessID ownProcess) {
    std::vector<ListedWindow> items;
    for (const ListedWindow& window : windows)
        if (window.layer == kStatusLevel && isItem(window.bounds, area) && !isPanelOfOurs(window, ownProcess))
            items.push_back(window);
    return items;
}

std::vector<double> statusItemXsViaWindowList(const std::vector<ListedWindow>& windows, const Rect<AXSpace>& area,
                                              ProcessID ownProcess) {
    std::vector<double> xs;
    for (const ListedWindow& item : statusItems(windows, area, ownProcess)) xs.push_back(item.bounds.minX());
    std::ranges::sort(xs);
    return xs;
}

std::vector<Rect<AXSpace>> itemsOf(Accessibility& accessibility, ProcessID process) {
    AXReader reader(accessibility);
    const auto bar = reader.readElement(accessibility.applicationElement(process), ax::kExtrasMenuBar);
    if (!bar) return {};
    const auto children = reader.readElements(*bar, ax::kChildren).value_or(std::vector<AXElement>{});
    std::vector<Rect<AXSpace>> items;
    for (size_t i = 0; i < std::min(children.size(), kMostItemsAsked); ++i)
        if (const auto frame = reader.readFrame(children[i])) items.push_back(*frame);
    return items;
}

std::vector<double> probe(const std::vector<Rect<AXSpace>>& items, const Rect<AXSpace>& area) {
    std::vector<double> xs;
    for (const Rect<AXSpace>& item : items)
        if (isItem(item, area)) xs.push_back(item.minX());
    std::ranges::sort(xs);
    return xs;
}

std::optional<double> systemAreaLeftmostX(const std::vector<double>& ascendingXs, int rightmostCount) {
    if (ascendingXs.empty() || rightmostCount < 1) return std::nullopt;
    const size_t count = std::min(ascendingXs.size(), static_cast<size_t>(rightmostCount));
    return ascendingXs[ascendingXs.size() - count];
}

}  // namespace morvel::MacOSMenuExtrasDetector
