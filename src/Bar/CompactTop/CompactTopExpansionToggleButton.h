// The button that uncovers all of the system's status items beside a compact top bar, or only a few of them.
#pragma once

#include <functional>

#include "Platform/Icons.h"
#include "UI/ImageButton.h"

namespace morvel {

/// Its owner keeps the state and tells it with `setExpanded`.
class CompactTopExpansionToggleButton : public ui::ImageButton {
public:
    /// `icons` outlives the button. It starts collapsed.
    CompactTopExpansionToggleButton(Icons& icons, std::function<void()> onToggle);

    void setExpanded(bool expanded);

    bool tracksHover() const override { return true; }
    void mouseEntered(const ui::MouseEvent&) override { imageView().setTint(ui::kLabelColor); }
    void mouseExited() override { imageView().setTint(ui::kSecondaryLabelColor); }

protected:
    void layout() override;

private:
    Icons& icons_;
};

}  // namespace morvel
