// One application in the launcher's list.
#pragma once

#include <functional>
#include <string>

#include "Theme/AppIconView.h"
#include "UI/ButtonView.h"
#include "UI/Label.h"

namespace morvel {

enum class RowState { Plain, Selected };

/// Shows one application after another as the list is scrolled.
class LauncherRow : public ui::ButtonView {
public:
    static constexpr double kHeight = 28;  ///< in points
    static constexpr double kMargin = 4;   ///< between the highlight and the list's edges

    /// Both outlive the row. `onClick` may destroy it.
    LauncherRow(ui::Toolkit& toolkit, IconCache& icons, std::function<void(const LauncherRow&)> onClick);

    /// `path` is that of the application, whose icon arrives later if it was never shown before.
    void show(const std::string& name, const std::string& path, RowState state);

    const ui::Label& nameLabel() const { return nameLabel_; }
    const ui::ImageView& iconView() const { return iconView_; }
    RowState state() const { return state_; }

    void mouseUp(const ui::MouseEvent& event) override;
    bool accessibilityPress() override;

protected:
    void applyAppearance() override;
    void layout() override;

private:
    std::function<void(const LauncherRow&)> onClick_;
    AppIconView iconView_;
    ui::Label nameLabel_;
    RowState state_ = RowState::Plain;
};

}  // namespace morvel
