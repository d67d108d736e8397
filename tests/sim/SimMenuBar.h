// The menu bar of the simulated desktop: menus and status items as accessibility tells them and the window list shows
// them.
#pragma once

#include <vector>

#include "sim/Desktop.h"

namespace morvel::sim {

class SimMenuBar {
public:
    static constexpr int kStatusLevel = 25;
    static constexpr double kHeight = 24;

    explicit SimMenuBar(Desktop& desktop) : desktop_(desktop) {}

    /// The application's menu titles, from the left, as high as the menu bar, their top at `y`.
    void setTitles(SimApp& app, const std::vector<double>& lefts, double right, double y = 0);
    void removeTitles(SimApp& app);
    /// The element of the application's title at this index.
    ElementID title(SimApp& app, size_t index);

    /// The process's status items on the display whose top right corner is given, by what they are wide, from the right
    /// end on; `offset` is the room between that end and the first.
    void setItems(SimApp& owner, const std::vector<double>& widths, Point<AXSpace> topRight, double offset = 0);

    void unlistOwnedBy(ProcessID owner);

    /// How often the process was asked for anything since this was last called for it.
    int questions(ProcessID process);

private:
    void list(ProcessID owner, int layer, const Rect<AXSpace>& frame);
    std::vector<AXElement> elements(ProcessID pid, const std::vector<Rect<AXSpace>>& frames);
    void setBar(ProcessID pid, std::string_view attribute, const std::vector<Rect<AXSpace>>& frames);

    Desktop& desktop_;
    uint32_t lastNumber_ = 5000;
    std::map<ProcessID, int> seen_;
};

}  // namespace morvel::sim
