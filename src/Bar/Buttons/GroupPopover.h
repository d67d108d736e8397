// The list of one application's windows that opens from its grouped button.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "Bar/Buttons/AppActions.h"
#include "Bar/Buttons/GroupRowButton.h"
#include "Bar/Buttons/OtherScreen.h"
#include "Settings/SettingsEnums.h"
#include "Theme/ButtonServices.h"
#include "UI/Popover.h"
#include "UI/StackView.h"

namespace morvel {

/// What the popover does. A callback that is not set does nothing; the provider is set. Menus keep copies, so nothing
/// in here may refer to the popover.
struct GroupPopoverBindings {
    std::function<void(WindowID)> onActivate;
    std::function<void(WindowID)> onClose;
    std::function<void(ProcessID)> onPinApp;
    std::function<void(WindowID, DisplayID)> onMoveWindow;
    AppActions app;
    std::function<std::vector<OtherScreen>()> otherScreensProvider;
    /// A drag is over the row of a window.
    std::function<void(WindowID, const ui::DragPasteboard&)> onRowDragEntered;
    std::function<void(WindowID)> onRowDragExited;
    std::function<void()> onRowDragEnded;
    /// Called in pairs, however often the popover moves from one button to another while it is open, to keep the bar
    /// shown meanwhile; and around the menu of a row, which may stay open when the popover closes.
    std::function<void()> onWillShow = [] {};
    std::function<void()> onDidClose = [] {};
};

/// One per bar, owned by it. Activating a window leaves the popover open; whoever wants it otherwise closes it.
class GroupPopover {
public:
    GroupPopover(ButtonServices services, GroupPopoverBindings bindings);
    GroupPopover(const GroupPopover&) = delete;
    GroupPopover& operator=(const GroupPopover&) = delete;

    /// Opens beside `anchor`, on the side away from the screen edge. Open already, it moves there and lists the new
    /// windows.
    void show(ui::View& anchor, const std::vector<WindowSnapshot>& windows, MorvelEdge barEdge);
    void close() { popover_->close(); }
    bool isShown() const { return popover_->isShown(); }

    /// Lets the rows follow their windows' titles and vanish when their windows leave the group. `group` is as the
    /// button has it now; its new windows get no rows. Does nothing while closed.
    void windowsChanged(const std::vector<WindowSnapshot>& group);
    /// Shows a window's new title, if it has a row.
    void retitle(const WindowSnapshot& window);

    /// The windows listed, in their rows' order. Empty while closed.
    std::vector<WindowSnapshot> currentWindows() const;

private:
    using Row = std::unique_ptr<GroupRowButton>;

    Row makeRow(const WindowSnapshot& window);
    void closeClicked(WindowID id);
    /// Fits the popover to its rows; without any it closes.
    void rowsChanged();
    void popoverDidClose();

    ButtonServices services_;
    GroupPopoverBindings bindings_;
    ui::StackView stack_{ui::StackView::Axis::Vertical};
    std::vector<Row> rows_;
    Subscription outsideClickMonitor_;
    // Shared only so that the actions of a menu, which may outlive us, can hold it weakly. Last, so that it is
    // destroyed first and never calls a half-dead object.
    std::shared_ptr<ui::Popover> popover_;
};

}  // namespace morvel
