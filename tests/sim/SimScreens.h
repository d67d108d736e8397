// Displays that a test arranges.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "Platform/Screens.h"
#include "Util/Signal.h"

namespace morvel::sim {

/// A display as it is plugged in. The first of a desktop has its origin at (0, 0) and carries the menu bar.
struct DisplaySpec {
    DisplayID id;
    std::string name;
    Rect<ScreenSpace> frame;
    double menuBarHeight = 24;  ///< what `visibleFrame` lacks at the top
};

inline std::vector<DisplaySpec> oneDisplay(double width, double height) {
    return {{DisplayID{1}, "Built-in Display", {0, 0, width, height}}};
}

/// A second display to the right of the first, their lower edges in line.
inline std::vector<DisplaySpec> twoDisplays(Size first = {1440, 900}, Size second = {1920, 1080}) {
    auto displays = oneDisplay(first.width, first.height);
    displays.push_back({DisplayID{2}, "Second Display", {first.width, 0, second.width, second.height}});
    return displays;
}

class SimScreens : public Screens {
public:
    std::vector<Screen> screens() override { return list; }
    DisplayID mainDisplay() override { return main; }
    std::optional<std::string> uuidString(DisplayID display) override {
        const bool known = std::ranges::any_of(list, [&](const Screen& s) { return s.displayID == display; });
        if (const auto given = uuids.find(display); given != uuids.end()) return given->second;
        return known ? std::optional(uuidOf(display)) : std::nullopt;
    }
    double statusBarThickness() override { return thickness; }
    Subscription observeChanges(std::function<void()> changed) override {
        return changes.subscribe(std::move(changed));
    }

    static std::string uuidOf(DisplayID display) {
        std::string digits = std::to_string(display.value);
        return "37D8832A-2D66-02CA-B9F7-" + std::string(12 - std::min<size_t>(12, digits.size()), '0') + digits;
    }
    static Screen screenOf(const DisplaySpec& spec) {
        Rect<ScreenSpace> visible = spec.frame;
        visible.height -= spec.menuBarHeight;
        return {spec.id, spec.name, spec.frame, visible};
    }

    /// Height of the first screen, which converts between the coordinate spaces; 0 without any.
    double firstHeight() const { return list.empty() ? 0 : list.front().frame.height; }

    std::vector<Screen> list;
    std::map<DisplayID, std::string> uuids;  ///< where they are not made of the display's number
    DisplayID main{1};
    double thickness = 24;
    Signal<> changes;
};

}  // namespace morvel::sim
