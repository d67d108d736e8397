// What is drawn behind everything else of a bar, in the style that the person chose.
#pragma once

#include <memory>

#include "Settings/SettingsEnums.h"
#include "UI/View.h"
#include "UI/VisualEffectView.h"

namespace morvel {

/// Owned by the host view, or by what the host view outlives.
class BarBackgroundLayer {
public:
    explicit BarBackgroundLayer(ui::View& host) : host_(host) {}

    /// Replaces the background by one of this style. The intensity matters for the translucent style alone.
    void apply(BarBackgroundStyle style, BarBlurIntensity intensity);
    /// Fits the background to the host's bounds; the host calls this in its own layout.
    void layout();

    static ui::Material material(BarBlurIntensity intensity);

private:
    ui::View& host_;
    std::unique_ptr<ui::View> currentBackgroundView_;  // none for the clear style
};

}  // namespace morvel
