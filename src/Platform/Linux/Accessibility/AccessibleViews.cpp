#include "Platform/Linux/Accessibility/AccessibleViews.h"

#include <string_view>

#include "Platform/Linux/System/GLibPointers.h"
#include "UI/Label.h"

namespace morvel::x11 {

namespace {

constexpr size_t kMaxBytes = 2048;  // nobody listens to more of a title

std::string spoken(std::string_view text) {
    text = text.substr(0, kMaxBytes);
    const GText valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    return valid.get();
}

const std::string& rawName(const ui::View& view) {
    if (!view.accessibilityLabel().empty() || view.kind() != ui::View::Kind::Label) return view.accessibilityLabel();
    return static_cast<const ui::Label&>(view).text();
}

bool isButton(const ui::View& view) {
    return view.accessibilityRole() == ui::AccessibilityRole::Button;
}

bool isTold(const ui::View& view, bool isInButton) {
    if (view.accessibilityRole() != ui::AccessibilityRole::None || !view.accessibilityLabel().empty()) return true;
    return !isInButton && !rawName(view).empty();
}

void collect(const ui::View& from, bool isInButton, std::vector<ui::View*>& out) {
    for (ui::View* view : from.subviews()) {
        if (view->isHidden()) continue;
        if (isTold(*view, isInButton))
            out.push_back(view);
        else
            collect(*view, isInButton, out);
    }
}

}  // namespace

std::vector<ui::View*> accessibleSubviews(const ui::View& view) {
    std::vector<ui::View*> out;
    collect(view, isButton(view), out);
    return out;
}

std::string accessibleName(const ui::View& view) {
    return spoken(rawName(view));
}

std::string accessibleDescription(const ui::View& view) {
    return view.tooltip() == rawName(view) ? std::string() : spoken(view.tooltip());
}

}  // namespace morvel::x11
