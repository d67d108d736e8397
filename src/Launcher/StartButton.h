// A system button at the front of the bar: the Start button, or the Apple-menu button.
#pragma once

#include <functional>
#include <string>

#include "Platform/Icons.h"
#include "UI/ButtonView.h"
#include "UI/ImageView.h"

namespace morvel {

/// Acts when it is pressed, without waiting for the release. Files dropped on it are left to the strip around it, which
/// pins them: a drag goes to the deepest view that accepts it, and this one accepts none.
class StartButton : public ui::ButtonView {
public:
    enum class Kind { Start, AppleMenu };

    /// `onClick` is handed the button, as the anchor for what it opens, and may destroy it.
    StartButton(Icons& icons, Kind kind, std::function<void(ui::View&)> onClick);

    static std::string symbolName(Kind kind);
    static std::string tooltip(Kind kind);
    using View::tooltip;

    const ui::ImageView& iconView() const { return iconView_; }

    Size intrinsicSize() const override;
    void mouseDown(const ui::MouseEvent& event) override;
    bool accessibilityPress() override;

protected:
    void applyAppearance() override;
    void layout() override;

private:
    std::function<void(ui::View&)> onClick_;
    ui::ImageView iconView_{ui::ImageScaling::None};
};

}  // namespace morvel
