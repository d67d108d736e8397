// The tile that stands in a strip for something from elsewhere while it is dragged over the strip.
#pragma once

#include "Theme/AppIconView.h"

namespace morvel {

class DragPlaceholderButton : public ui::View {
public:
    DragPlaceholderButton(IconCache& icons, const std::optional<std::string>& bundleID, ProcessID pid);
    /// Of what is no application; null for no icon.
    DragPlaceholderButton(IconCache& icons, ui::ImageRef icon);

    Size intrinsicSize() const override;

protected:
    void layout() override;

private:
    AppIconView iconView_;
};

}  // namespace morvel
