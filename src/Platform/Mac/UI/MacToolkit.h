// The views' toolkit on AppKit.
#pragma once

#include "Platform/MainLoop.h"
#include "UI/Toolkit.h"
#include "Util/Lifetime.h"

namespace morvel::mac {

class MacToolkit : public ui::Toolkit {
public:
    /// The loop outlives the toolkit.
    explicit MacToolkit(MainLoop& mainLoop) : mainLoop_(mainLoop) {}

    void setAppearance(ui::Appearance appearance) override;
    std::unique_ptr<ui::PanelPeer> makePanel(const ui::PanelOptions& options, ui::View& content) override;
    std::unique_ptr<ui::PopoverPeer> makePopover(ui::View& content, std::function<void()> closed,
                                                 ui::PopoverKind kind) override;
    /// Returns when the menu has closed.
    void popUpMenu(ui::Menu menu, ui::View& anchor, Point<ViewSpace> locationInRoot,
                   std::function<void()> closed) override;
    void beginDrag(ui::View& view, ui::DragItem item, std::function<void(ui::DragOperation)> ended) override;
    std::unique_ptr<ui::PromptPeer> showPrompt(ui::Prompt prompt) override;
    std::unique_ptr<ui::FormWindowPeer> makeFormWindow(ui::Form form) override;
    /// Returns before the answer.
    void showAlert(ui::Alert alert, std::function<void(std::optional<size_t>)> answered) override;
    std::unique_ptr<ui::StatusItemPeer> makeStatusItem(ui::Menu menu) override;
    Size textSize(std::string_view text, const ui::Font& font) override;
    std::optional<Point<ScreenSpace>> pointerLocation() override;
    bool isMouseButtonDown() override;
    bool reducesMotion() override;
    Subscription observeOutsidePresses(std::function<void()> pressed) override;

private:
    MainLoop& mainLoop_;
    Lifetime lifetime_;
};

}  // namespace morvel::mac
