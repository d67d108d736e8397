// Panels, popovers and menus as records that a test looks at and clicks on.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "UI/TextField.h"
#include "UI/Toolkit.h"
#include "Util/Signal.h"
#include "sim/SimDrags.h"
#include "sim/SimSurface.h"

namespace morvel::sim {

/// A panel on the simulated screen, for as long as its peer lives.
struct SimPanel {
    ui::PanelOptions options;
    Rect<ScreenSpace> frame;
    bool isShown = false;
    bool reservesSpace = false;
    int moves = 0;   ///< frames set after the first
    int slides = 0;  ///< those of them that were animated; the simulated panel is there at once
    SimSurface surface;
};

/// A popover, for as long as its peer lives.
struct SimPopover {
    SimSurface surface;
    bool isShown = false;
    ui::View* anchor = nullptr;                 ///< only to be compared: it may be gone
    const SimSurface* anchorSurface = nullptr;  ///< the same
    ui::Edge edge = ui::Edge::Top;
    Size size = {};
    ui::PopoverKind kind = ui::PopoverKind::List;
    std::function<void()> close = {};  ///< as the system does it
};

/// A form window, for as long as its peer lives.
struct SimFormWindow {
    ui::Form form;
    bool isShown = false;
    int refreshes = 0;
};

class SimToolkit : public ui::Toolkit {
public:
    /// Text is as wide as this for each code point, whatever the font.
    static constexpr double kCharacterWidth = 7;
    static constexpr double kLineHeight = 15;

    explicit SimToolkit(MainLoop& mainLoop) : mainLoop_(mainLoop) {}

    void setAppearance(ui::Appearance wanted) override { appearance_ = wanted; }
    std::unique_ptr<ui::PanelPeer> makePanel(const ui::PanelOptions& options, ui::View& content) override;
    std::unique_ptr<ui::PopoverPeer> makePopover(ui::View& content, std::function<void()> closed,
                                                 ui::PopoverKind kind) override;
    void popUpMenu(ui::Menu menu, ui::View& anchor, Point<ViewSpace> locationInRoot,
                   std::function<void()> closed) override;
    void beginDrag(ui::View&, ui::DragItem item, std::function<void(ui::DragOperation)> ended) override {
        drags_.begin(item, std::move(ended));
    }
    std::unique_ptr<ui::FormWindowPeer> makeFormWindow(ui::Form form) override;
    Size textSize(std::string_view text, const ui::Font& font) override;
    Subscription observeOutsidePresses(std::function<void()> pressed) override;
    void showAlert(ui::Alert alert, std::function<void(std::optional<size_t>)> answered) override {
        alerts_.push_back({std::move(alert), std::move(answered)});
    }
    std::unique_ptr<ui::StatusItemPeer> makeStatusItem(ui::Menu menu) override;
    std::unique_ptr<ui::PromptPeer> showPrompt(ui::Prompt prompt) override;
    /// Over a panel where the pointer is over it; over anything else, far away from every panel.
    std::optional<Point<ScreenSpace>> pointerLocation() override;
    bool isMouseButtonDown() override { return isPressed_ || drags_.isActive(); }
    bool reducesMotion() override { return wantsLessMotion; }

    /// The person's choice for all programs.
    bool wantsLessMotion = false;
    int panelsMade = 0;  ///< those that are gone included

    // --- What is on the screen ---
    ui::Appearance appearance() const { return appearance_; }
    const std::vector<SimPanel*>& panels() const { return panels_; }
    const std::vector<SimPopover*>& popovers() const { return popovers_; }
    const std::vector<SimFormWindow*>& formWindows() const { return formWindows_; }
    /// The popover that is shown; null for none.
    SimPopover* shownPopover() const;
    /// The titles of the open menu's items, "-" for a separator; nothing when no menu is open. `path` leads into
    /// submenus.
    std::optional<std::vector<std::string>> menuTitles(const std::vector<std::string>& path = {}) const;
    /// Whether the open menu has an item of this title that can be chosen.
    bool canChoose(const std::string& title) const;
    /// The window that shows the view; null when it is not shown.
    static SimSurface* surfaceOf(const ui::View& view);
    static Repaints repaints(const ui::View& view);

    /// What is asked; null for nothing. Only one question is asked at a time.
    const ui::Alert* alert() const { return alerts_.size() == 1 ? &alerts_.front().alert : nullptr; }
    /// The prompt that is shown; null for none.
    const ui::Prompt* prompt() const { return prompts_.empty() ? nullptr : prompts_.back(); }
    /// The menu of the item in the menu bar; null for none.
    const ui::Menu* statusMenu() const { return statusMenu_; }
    int statusMenusSet = 0;

    // --- What a person does. A view that is not on the screen fails the test. ---
    void click(ui::View& view);
    void rightClick(ui::View& view);
    void moveTo(ui::View& view);
    /// Takes the pointer out of every window.
    void leave();
    /// Presses at the centre of the view and holds.
    void press(ui::View& view);
    /// Turns the wheel over the middle of the view; positive is down.
    void turnWheel(ui::View& view, double notches);
    void middleClick(ui::View& view);
    SimDrags& drags() { return drags_; }
    /// Moves the held pointer to a point in the space of the pressed window's root.
    void drag(Point<ViewSpace> location);
    void release();
    /// Presses a button outside all windows, which closes an open menu too.
    void pressOutside();
    /// Types at the end of the field that has the keyboard; a test fails where there is none.
    void type(std::string_view text);
    /// Empties it.
    void erase();
    /// Presses the key for it; whether it was used.
    bool give(ui::TextCommand command);
    /// Chooses the item of the open menu that these titles lead to.
    void choose(const std::vector<std::string>& path);
    void dismissMenu();
    void closePrompt() { prompts_.pop_back(); }
    /// Answers what is asked with this button, or with none.
    void answer(const std::string& button);

private:
    friend class SimStatusItemPeer;
    friend class SimPromptPeer;
    struct OpenAlert {
        ui::Alert alert;
        std::function<void(std::optional<size_t>)> answered;
    };
    friend class SimPanelPeer;
    friend class SimPopoverPeer;
    friend class SimFormWindowPeer;
    friend class SimDrags;
    struct OpenMenu {
        ui::Menu items;
        std::function<void()> closed;
    };
    /// The pointer at the view's centre in its window; null when it is not shown there.
    SimSurface* pointAt(ui::View& view);
    bool isAlive(const SimSurface* surface) const;
    ui::TextField* typedField();
    /// A popover closes at a press elsewhere; its anchor decides for itself, and a list's whole window does.
    void closePopovers(const ui::View& pressed);
    const ui::Menu* menuAt(const std::vector<std::string>& path, size_t depth) const;

    MainLoop& mainLoop_;
    ui::Appearance appearance_ = ui::Appearance::System;
    std::vector<SimPanel*> panels_;
    std::vector<SimPopover*> popovers_;
    std::vector<SimFormWindow*> formWindows_;
    std::optional<OpenMenu> menu_;
    std::vector<OpenAlert> alerts_;
    const ui::Menu* statusMenu_ = nullptr;
    std::vector<const ui::Prompt*> prompts_;  // while they are shown
    Signal<> outsidePresses_;
    SimSurface* pointed_ = nullptr;  // the window under the pointer; compared with the living ones before use
    Point<ViewSpace> location_;
    bool isPressed_ = false;
    SimDrags drags_{*this};
};

}  // namespace morvel::sim
