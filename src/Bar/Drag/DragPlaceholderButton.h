// The tile that stands in a strip for something from elsewhere while it is dragged over the strip.
#pragma once

#include "Bar/Buttons/AppIconView.h"

namespace morvel {

class DragPlaceholderButton : public ui::View {
public:
    DragPlaceholderButton(IconCache& icons, const std::optional<std::string>& bundleID, ProcessID pid);

    Size intrinsicSize() const override;

protected:
    void layout() override;

private:
    AppIconView iconView_;
};

}  // namespace morvel
