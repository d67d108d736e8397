#include "sim/SimMenuBar.h"

#include "Platform/AXNames.h"

namespace morvel::sim {

void SimMenuBar::setTitles(SimApp& app, const std::vector<double>& lefts, double right, double y) {
    std::vector<Rect<AXSpace>> frames;
    for (size_t i = 0; i < lefts.size(); ++i)
        frames.push_back({lefts[i], y, (i + 1 < lefts.size() ? lefts[i + 1] : right) - lefts[i], kHeight});
    setBar(app.pid(), ax::kMenuBar, frames);
}

void SimMenuBar::removeTitles(SimApp& app) {
    SimAccessibility& accessibility = desktop_.accessibility();
    accessibility.at(accessibility.applicationID(app.pid())).attributes.erase(std::string(ax::kMenuBar));
}

ElementID SimMenuBar::title(SimApp& app, size_t index) {
    SimAccessibility& accessibility = desktop_.accessibility();
    const auto bar = std::get<AXElement>(
        accessibility.at(accessibility.applicationID(app.pid())).attributes.at(std::string(ax::kMenuBar)));
    const AXAnswer children = accessibility.attribute(bar, ax::kChildren);
    return accessibility.idOf(std::get<std::vector<AXElement>>(children.value.value()).at(index));
}

void SimMenuBar::setItems(SimApp& owner, const std::vector<double>& widths, Point<AXSpace> topRight, double offset) {
    unlistOwnedBy(owner.pid());
    std::vector<Rect<AXSpace>> frames;
    double right = topRight.x - offset;
    for (const double width : widths) {
        right -= width;
        frames.push_back({right, topRight.y, width, kHeight});
        list(owner.pid(), kStatusLevel, frames.back());
    }
    setBar(owner.pid(), ax::kExtrasMenuBar, frames);
}

void SimMenuBar::list(ProcessID owner, int layer, const Rect<AXSpace>& frame) {
    desktop_.windowServer().windows.push_back({.number = WindowNumber{++lastNumber_},
                                               .owner = owner,
                                               .layer = layer,
                                               .bounds = frame,
                                               .ownerName = {},
                                               .name = {}});
}

void SimMenuBar::unlistOwnedBy(ProcessID owner) {
    std::erase_if(desktop_.windowServer().windows,
                  [owner](const ListedWindow& w) { return w.owner == owner && w.layer == kStatusLevel; });
}

int SimMenuBar::questions(ProcessID process) {
    const int now = desktop_.accessibility().calls(process);
    return now - std::exchange(seen_[process], now);
}

std::vector<AXElement> SimMenuBar::elements(ProcessID pid, const std::vector<Rect<AXSpace>>& frames) {
    std::vector<AXElement> made;
    for (const Rect<AXSpace>& frame : frames) {
        SimElement element{.pid = pid};
        element.attributes.emplace(ax::kPosition, frame.origin());
        element.attributes.emplace(ax::kSize, frame.size());
        made.push_back(desktop_.accessibility().handle(desktop_.accessibility().add(std::move(element))));
    }
    return made;
}

void SimMenuBar::setBar(ProcessID pid, std::string_view attribute, const std::vector<Rect<AXSpace>>& frames) {
    SimAccessibility& accessibility = desktop_.accessibility();
    SimElement bar{.pid = pid};
    bar.attributes.emplace(ax::kChildren, elements(pid, frames));
    const AXElement handle = accessibility.handle(accessibility.add(std::move(bar)));
    accessibility.at(accessibility.applicationID(pid)).attributes.insert_or_assign(std::string(attribute), handle);
}

}  // namespace morvel::sim
