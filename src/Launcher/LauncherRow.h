// One application in the launcher's list.
#pragma once

#include <functional>
#include <string>

#include "Theme/IconCache.h"
#include "UI/ImageView.h"
#include "UI/Label.h"

namespace morvel {

enum class RowState { Plain, Selected };

/// Shows one application after another as the list is scrolled.
class LauncherRow : public ui::View {
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

    bool acceptsMouse() const override { return true; }
    bool tracksHover() const override { return true; }
    void mouseUp(const ui::MouseEvent& event) override;
    void mouseEntered(const ui::MouseEvent& event) override;
    void mouseExited() override;
    ui::AccessibilityRole accessibilityRole() const override { return ui::AccessibilityRole::Button; }
    bool accessibilityPress() override;

protected:
    void layout() override;

private:
    void applyAppearance();

    IconCache& icons_;
    std::function<void(const LauncherRow&)> onClick_;
    ui::ImageView iconView_;
    ui::Label nameLabel_;
    std::string path_;
    RowState state_ = RowState::Plain;
    bool isHovered_ = false;
    Subscription request_;  // last member, so that nothing is delivered to a half-dead row
};

}  // namespace morvel
