#include "Bar/MenuBar/MacOSMenuTitlesDetector.h"

#include "Platform/AXNames.h"
#include "WindowSource/AXReader.h"

namespace morvel::MacOSMenuTitlesDetector {

namespace {

/// Titles for which there was no room have no size. No application hides more than this many, and one that claims to
/// have thousands is not asked about all of them.
constexpr int kMostTitlesAsked = 16;

}  // namespace

std::optional<Rect<AXSpace>> lastTitle(Accessibility& accessibility, ProcessID owner) {
    AXReader reader(accessibility);
    const auto menuBar = reader.readElement(accessibility.applicationElement(owner), ax::kMenuBar);
    if (!menuBar) return std::nullopt;
    const auto titles = reader.readElements(*menuBar, ax::kChildren);
    if (!titles) return std::nullopt;
    // They stand in a row in their order, the Apple menu first, so the last one is asked alone as a rule.
    int asked = 0;
    for (auto title = titles->rbegin(); title != titles->rend() && asked < kMostTitlesAsked; ++title, ++asked)
        if (const auto frame = reader.readFrame(*title); frame && !frame->isEmpty()) return frame;
    return std::nullopt;
}

std::optional<double> rightmostMenuTitleX(const std::optional<Rect<AXSpace>>& lastTitle, const Rect<AXSpace>& strip) {
    // The left end decides: a title that is long, or pushed past a camera housing, may end anywhere.
    if (!lastTitle || !strip.contains({lastTitle->minX(), lastTitle->midY()})) return std::nullopt;
    return lastTitle->maxX();
}

}  // namespace morvel::MacOSMenuTitlesDetector
