// The toolkit of the Linux host: panels, popovers and menus as windows of this program, text by Pango.
#pragma once

#include <memory>
#include <vector>

#include "Platform/Linux/Forms/FormService.h"
#include "Platform/Linux/System/PublishedSettings.h"
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

    /// The system's is the theme that the desktop publishes, whenever that changes, unless the environment names one.
    void setAppearance(ui::Appearance appearance) override;

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
    /// A menu or drag that is over but whose consequences are still to come.
    struct Ended {
        std::shared_ptr<void> session;
        std::function<void()> consequences;
    };

    /// What the person has chosen for all programs; light where that cannot be told.
    Appearance systemAppearance() const;
    void applyAppearance();
    XPtr<xcb_query_pointer_reply_t> queryPointer();
    void finishLater(Ended ended);
    void finish();

    ToolkitContext context_;
    PublishedSettings desktopSettings_;
    ui::Appearance appearance_ = ui::Appearance::System;
    OutsidePresses outsidePresses_;
    FormService* forms_ = nullptr;
    XdndTarget dropTarget_;
    std::unique_ptr<MenuSession> menu_;
    std::unique_ptr<DragSession> drag_;
    std::vector<Ended> ended_;
    Timer finish_;
    Subscription desktopChanges_;
};

}  // namespace morvel::x11
