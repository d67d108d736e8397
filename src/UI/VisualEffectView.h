// A background that lets what is behind the window shine through, blurred where the platform can.
#pragma once

#include "UI/View.h"

namespace morvel::ui {

/// The platform's materials by what they were made for. Values of Apple's NSVisualEffectMaterial.
enum class Material { Popover = 6, Sidebar = 7, HUDWindow = 13 };

class VisualEffectView : public View {
public:
    explicit VisualEffectView(Material material) : material_(material) {}

    Kind kind() const override { return Kind::VisualEffect; }
    Material material() const { return material_; }

private:
    Material material_;
};

}  // namespace morvel::ui
