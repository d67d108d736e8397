#include "Bar/BarBackgroundLayer.h"

namespace morvel {

namespace {

std::unique_ptr<ui::View> makeBackground(BarBackgroundStyle style, BarBlurIntensity intensity) {
    switch (style) {
        case BarBackgroundStyle::Translucent:
            return std::make_unique<ui::VisualEffectView>(BarBackgroundLayer::material(intensity));
        case BarBackgroundStyle::Opaque: {
            auto view = std::make_unique<ui::View>();
            view->setBackground(ui::kWindowBackgroundColor);
            return view;
        }
        case BarBackgroundStyle::Clear:
            break;
    }
    return nullptr;
}

}  // namespace

void BarBackgroundLayer::apply(BarBackgroundStyle style, BarBlurIntensity intensity) {
    currentBackgroundView_ = makeBackground(style, intensity);
    if (!currentBackgroundView_) return;
    host_.insertSubview(*currentBackgroundView_, 0);
    layout();
}

void BarBackgroundLayer::layout() {
    if (currentBackgroundView_) currentBackgroundView_->setFrame(host_.bounds());
}

ui::Material BarBackgroundLayer::material(BarBlurIntensity intensity) {
    switch (intensity) {
        case BarBlurIntensity::Subtle:
            return ui::Material::Popover;
        case BarBlurIntensity::Medium:
            break;
        case BarBlurIntensity::Strong:
            return ui::Material::Sidebar;
    }
    return ui::Material::HUDWindow;
}

}  // namespace morvel
