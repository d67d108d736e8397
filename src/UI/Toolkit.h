// What the views need of the platform's windowing: panels, popovers, menus, and the measuring of text.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "Platform/MainLoop.h"
#include "UI/Alert.h"
#include "UI/Drag.h"
#include "UI/Edge.h"
#include "UI/Font.h"
#include "UI/Form.h"
#include "UI/Menu.h"
#include "UI/Prompt.h"
#include "UI/StatusItem.h"
#include "Util/Geometry.h"
#include "Util/Subscription.h"

namespace morvel::ui {

class View;

/// The platform's window behind a `Panel`. Destroying it takes the window away.
class PanelPeer {
public:
    virtual ~PanelPeer() = default;
    /// Moves and resizes the window, unless it is there already, or gliding there; the caller resizes the content view.
    /// Systems move windows themselves while displays are rearranged, so a frame may be set again to put it back.
    virtual void setFrame(const Rect<ScreenSpace>& frame) = 0;
    /// The same over `duration`, from where the window is now; a later frame takes over from what is reached by then.
    virtual void animateFrame(const Rect<ScreenSpace>& frame, Duration duration) = 0;
    virtual void orderFront() = 0;
    virtual void orderOut() = 0;
    /// Asks the window manager to keep maximized windows clear of this panel at its edge, or no longer. Systems
    /// whose windows are kept clear in another way ignore it.
    virtual void setReservesSpace(bool reserves) = 0;
};

/// Bar: a whole bar. Strip: an unseen strip in front of everything, whose content is only told of the pointer and of
/// what is dragged into it. Companion: a small panel that stands beside a bar.
enum class PanelKind { Bar, Strip, Companion };

/// What kind of window a panel is. None ever takes the focus or appears among other programs' windows.
struct PanelOptions {
    Rect<ScreenSpace> frame;
    Edge edge = Edge::Bottom;  ///< the screen edge it is docked to
    PanelKind kind = PanelKind::Bar;
};

/// List: comes and goes at once, so that the press that closes it can show it at another button, and leaves the presses
/// in its anchor's window to that window, where a drag into the list may begin. Controls: comes and goes as the system
/// animates popovers. Search: the same, and it takes the keyboard while it is shown, so that a person can type into it;
/// the application in front stays in front.
enum class PopoverKind { List, Controls, Search };

/// The platform's popover behind a `Popover`. It closes by itself before a press in another window of this program goes
/// to its view, except for a press on the anchor, which decides for itself, and for what a list leaves to others.
class PopoverPeer {
public:
    virtual ~PopoverPeer() = default;
    /// Shows the content at `size` beside the anchor, on its `edge` side where there is room.
    virtual void show(View& anchor, Edge edge, Size size) = 0;
    virtual void resize(Size size) = 0;
    virtual void close() = 0;
};

/// How roles of colours are resolved; System follows what the person chose for all programs.
enum class Appearance { System, Light, Dark };

/// Main thread only.
class Toolkit {
public:
    virtual ~Toolkit() = default;

    /// From now on everything is shown in this appearance, what is on the screen included.
    virtual void setAppearance(Appearance appearance) = 0;

    /// The content view fills the panel and outlives the peer.
    virtual std::unique_ptr<PanelPeer> makePanel(const PanelOptions& options, View& content) = 0;

    /// `closed` is called each time it has closed, whoever closed it, never inside `show`. The content view outlives
    /// the peer.
    virtual std::unique_ptr<PopoverPeer> makePopover(View& content, std::function<void()> closed, PopoverKind kind) = 0;

    /// Shows the menu at a point of the anchor's window (in its root's space). Calls the chosen item's action, if one
    /// was chosen, and then `closed`; either inside this call or later. The anchor may be gone by then.
    virtual void popUpMenu(Menu menu, View& anchor, Point<ViewSpace> locationInRoot, std::function<void()> closed) = 0;

    /// Starts to drag the view, which is pressed and shows under the pointer as it looks now, until the button is
    /// released. `ended` is called once, in a later turn, with what the destination did; the view may be gone by then.
    /// Where a drag cannot be started it ends at once with None.
    virtual void beginDrag(View& view, DragItem item, std::function<void(DragOperation)> ended) = 0;

    /// Shows a prompt, centred, in front and with the keyboard's focus. Null on hosts that have nothing to prompt for.
    virtual std::unique_ptr<PromptPeer> showPrompt(Prompt) { return nullptr; }

    /// A window of controls, not shown yet. Null where such windows cannot be shown, which the host has logged.
    virtual std::unique_ptr<FormWindowPeer> makeFormWindow(Form form) = 0;

    /// Asks the person, in front of everything and with nothing else of this program answering meanwhile. `answered` is
    /// called in a later turn, with the index of the chosen button, or with nothing when the question went away without
    /// a choice. Hosts that have nothing to ask never answer.
    virtual void showAlert(Alert, std::function<void(std::optional<size_t>)>) {}

    /// The program's icon in the system's menu bar, with this menu. Null where there is no menu bar.
    virtual std::unique_ptr<StatusItemPeer> makeStatusItem(Menu) { return nullptr; }

    /// The size of one line of text, in points. Text that is not UTF-8 is measured as it would be shown.
    virtual Size textSize(std::string_view text, const Font& font) = 0;

    /// Where the pointer is now; nothing when that cannot be told.
    virtual std::optional<Point<ScreenSpace>> pointerLocation() = 0;
    /// Whether any mouse button is held, in whatever program.
    virtual bool isMouseButtonDown() = 0;
    /// Whether the person asked the system for less motion: what would slide then jumps.
    virtual bool reducesMotion() = 0;

    /// Calls `pressed` on each press of a mouse button outside this program's windows, without taking it from them.
    [[nodiscard]] virtual Subscription observeOutsidePresses(std::function<void()> pressed) = 0;
};

}  // namespace morvel::ui
