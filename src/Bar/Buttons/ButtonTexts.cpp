#include "Bar/Buttons/ButtonTexts.h"

namespace morvel {

namespace {

constexpr double kWindowlessAlpha = 0.6;

}  // namespace

ButtonTexts buttonTexts(const WindowSnapshot& window) {
    ButtonTexts texts;
    texts.label = window.title.empty() ? window.appName : window.title;
    if (window.isWindowless) {
        texts.tooltip = window.appName + " — no window open";
        texts.alpha = kWindowlessAlpha;
    } else {
        texts.tooltip = window.appName + " — " + texts.label;
    }
    return texts;
}

std::string groupAccessibilityLabel(const std::string& appName, size_t count) {
    return appName + ", " + std::to_string(count) + (count == 1 ? " window" : " windows");
}

}  // namespace morvel
