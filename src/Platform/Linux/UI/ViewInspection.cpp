#include "Platform/Linux/UI/ViewInspection.h"

#include <nlohmann/json.hpp>

#include "Platform/Linux/UI/TextLayouts.h"
#include "UI/Label.h"
#include "UI/TextField.h"

namespace morvel::x11 {

namespace {

struct Inherited {
    Point<RootSpace> corner;
    bool isHidden = false;
    double alpha = 1;
};

std::string labelOf(const ui::View& view) {
    if (view.kind() == ui::View::Kind::TextField) {
        const auto& field = static_cast<const ui::TextField&>(view);
        return field.text().empty() ? field.placeholder() : field.text();
    }
    if (!view.accessibilityLabel().empty() || view.kind() != ui::View::Kind::Label) return view.accessibilityLabel();
    return static_cast<const ui::Label&>(view).text();
}

void describe(const ui::View& view, const Inherited& own, nlohmann::json& out) {
    // Texts as they are shown: JSON has to be UTF-8, and nobody wants a megabyte of title.
    out.push_back({{"label", shownText(labelOf(view))},
                   {"tooltip", shownText(view.tooltip())},
                   {"frame", {own.corner.x, own.corner.y, view.frame().width, view.frame().height}},
                   {"hidden", own.isHidden},
                   {"alpha", own.alpha}});
    for (const ui::View* subview : view.subviews())
        describe(*subview,
                 {{own.corner.x + subview->frame().x, own.corner.y + subview->frame().y},
                  own.isHidden || subview->isHidden(),
                  own.alpha * subview->alpha()},
                 out);
}

}  // namespace

std::string describeViews(const ui::View& root, Point<RootSpace> corner) {
    nlohmann::json out = nlohmann::json::array();
    describe(root, {corner, root.isHidden(), root.alpha()}, out);
    return out.dump();
}

}  // namespace morvel::x11
