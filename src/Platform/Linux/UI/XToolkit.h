// The toolkit of the Linux host: panels, popovers and menus as windows of this program, text by Pango.
#pragma once

#include <memory>
#include <vector>

#include "Platform/Linux/Forms/FormService.h"
#include "Platform/Linux/UI/Drag/DragSession.h"
#include "Platform/Linux/UI/Drag/XdndTarget.h"
#include "Platform/Linux/UI/MenuSession.h"
#include "Platform/Linux/UI/OutsidePresses.h"
#include "Platform/Linux/UI/ToolkitContext.h"
#include "UI/Toolkit.h"

namespace morvel::x11 {

/// Main thread only; outlives everything it made. With MORVEL_INSPECT=1 in the environment, each window says in its
/// property _MORVEL_VIEWS what it shows (see ViewInspection.h).
class XToolkit : public ui::Toolkit {
public:
    /// All outlive the toolkit; the screens are known already.
    XToolkit(XConnection& connection, MainLoop& mainLoop, XScreens& screens);
    ~XToolkit() override;

    void setAppearance(ui::Appearance appearance) override;
    /// Light or dark, and the accent: what is shown changes at once.
    void setPalette(const Palette& palette) { context_.setPalette(palette); }
    const Palette& palette() const { return context_.palette(); }

    /// From now on tells the bridge what the windows show; null ends it, which has to come before the bridge's end.
    void setAccessibilityBridge(AccessibilityBridge* bridge);

    /// Makes the form windows, which end before it.
    void setFormService(FormService* forms) { forms_ = forms; }

    std::unique_ptr<ui::PanelPeer> makePanel(const ui::PanelOptions& options, ui::View& content) override;
    std::unique_ptr<ui::PopoverPeer> makePopover(ui::View& content, std::function<void()> closed,
                                                 ui::PopoverKind kind) override;
    void popUpMenu(ui::Menu menu, ui::View& anchor, Point<ViewSpace> locationInRoot,
                   std::function<void()> closed) override;
    void beginDrag(ui::View& view, ui::DragItem item, std::function<void(ui::DragOperation)> ended) override;
    std::unique_ptr<ui::FormWindowPeer> makeFormWindow(ui::Form form) override;
    Size textSize(std::string_view text, const ui::Font& font) override;
    /// Both wait for the server: nothing tells of the pointer while it is over other programs' windows.
    std::optional<Point<ScreenSpace>> pointerLocation() override;
    bool isMouseButtonDown() override;
    /// By the desktop's published settings.
    bool reducesMotion() override;
    [[nodiscard]] Subscription observeOutsidePresses(std::function<void()> pressed) override;

private:
    /// A menu that is gone but whose consequences are still to come.
    struct EndedMenu {
        std::function<void()> action;  ///< may be empty
        std::function<void()> closed;
        std::unique_ptr<MenuSession> session;
    };

    /// A drag that is over but whose beginner is still to be told.
    struct EndedDrag {
        ui::DragOperation operation;
        std::function<void(ui::DragOperation)> ended;
        std::unique_ptr<DragSession> session;
    };

    /// What the person has chosen for all programs; light where that cannot be told.
    Appearance systemAppearance();
    XPtr<xcb_query_pointer_reply_t> queryPointer();
    void menuEnded(EndedMenu ended);
    void dragEnded(EndedDrag ended);
    void finishDrags();
    void finishMenus();

    ToolkitContext context_;
    OutsidePresses outsidePresses_;
    FormService* forms_ = nullptr;
    XdndTarget dropTarget_;
    std::unique_ptr<MenuSession> menu_;
    std::vector<EndedMenu> endedMenus_;
    Timer finish_;
    std::unique_ptr<DragSession> drag_;
    std::vector<EndedDrag> endedDrags_;
    Timer finishDrags_;
};

}  // namespace morvel::x11
