#include "sim/SimToolkit.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "UI/TextField.h"

namespace morvel::sim {

class SimPanelPeer : public ui::PanelPeer {
public:
    SimPanelPeer(SimToolkit& toolkit, const ui::PanelOptions& options, ui::View& content)
        : toolkit_(toolkit),
          panel_{.options = options, .frame = options.frame, .surface = {toolkit.mainLoop_, content}} {
        toolkit_.panels_.push_back(&panel_);
        content.setHost(&panel_.surface);
    }
    ~SimPanelPeer() override {
        panel_.surface.root().setHost(nullptr);
        EXPECT_EQ(panel_.surface.attachedViews(), 0u) << "views that came and never left";
        std::erase(toolkit_.panels_, &panel_);
    }
    void setFrame(const Rect<ScreenSpace>& frame) override {
        if (std::exchange(panel_.frame, frame) != frame) ++panel_.moves;
    }
    void animateFrame(const Rect<ScreenSpace>& frame, Duration) override {
        setFrame(frame);
        ++panel_.slides;
    }
    void orderFront() override {
        panel_.isShown = true;
        panel_.surface.layoutNeeded();
    }
    void orderOut() override { panel_.isShown = false; }
    void setReservesSpace(bool reserves) override { panel_.reservesSpace = reserves; }

private:
    SimToolkit& toolkit_;
    SimPanel panel_;
};

class SimPopoverPeer : public ui::PopoverPeer {
public:
    SimPopoverPeer(SimToolkit& toolkit, ui::View& content, std::function<void()> closed, ui::PopoverKind kind)
        : toolkit_(toolkit),
          closed_(std::move(closed)),
          popover_{.surface = {toolkit.mainLoop_, content}, .kind = kind, .close = [this] { close(); }} {
        toolkit_.popovers_.push_back(&popover_);
    }
    ~SimPopoverPeer() override {
        popover_.surface.root().setHost(nullptr);
        std::erase(toolkit_.popovers_, &popover_);
    }
    void show(ui::View& anchor, ui::Edge edge, Size size) override {
        EXPECT_TRUE(SimToolkit::surfaceOf(anchor)) << "a popover beside a view that is not shown";
        popover_.anchor = &anchor;
        popover_.anchorSurface = SimToolkit::surfaceOf(anchor);
        popover_.edge = edge;
        popover_.size = size;
        popover_.isShown = true;
        popover_.surface.root().setHost(&popover_.surface);
        popover_.surface.layoutNeeded();
    }
    void resize(Size size) override { popover_.size = size; }
    void close() override {
        if (!popover_.isShown) return;
        popover_.isShown = false;
        popover_.surface.root().setHost(nullptr);
        const auto closed = closed_;  // it may destroy us
        closed();
    }

private:
    SimToolkit& toolkit_;
    std::function<void()> closed_;
    SimPopover popover_;
};

class SimFormWindowPeer : public ui::FormWindowPeer {
public:
    SimFormWindowPeer(SimToolkit& toolkit, ui::Form form) : toolkit_(toolkit), window_{.form = std::move(form)} {
        toolkit_.formWindows_.push_back(&window_);
    }
    ~SimFormWindowPeer() override { std::erase(toolkit_.formWindows_, &window_); }
    void bringToFront() override { window_.isShown = true; }
    void refresh() override { ++window_.refreshes; }

private:
    SimToolkit& toolkit_;
    SimFormWindow window_;
};

std::unique_ptr<ui::FormWindowPeer> SimToolkit::makeFormWindow(ui::Form form) {
    return std::make_unique<SimFormWindowPeer>(*this, std::move(form));
}

class SimStatusItemPeer : public ui::StatusItemPeer {
public:
    SimStatusItemPeer(SimToolkit& toolkit, ui::Menu menu) : toolkit_(toolkit), menu_(std::move(menu)) {
        EXPECT_EQ(toolkit_.statusMenu_, nullptr) << "a second item";
        toolkit_.statusMenu_ = &menu_;
    }
    ~SimStatusItemPeer() override { toolkit_.statusMenu_ = nullptr; }
    void setMenu(ui::Menu menu) override {
        menu_ = std::move(menu);
        ++toolkit_.statusMenusSet;
    }

private:
    SimToolkit& toolkit_;
    ui::Menu menu_;
};

std::unique_ptr<ui::StatusItemPeer> SimToolkit::makeStatusItem(ui::Menu menu) {
    return std::make_unique<SimStatusItemPeer>(*this, std::move(menu));
}

class SimPromptPeer : public ui::PromptPeer {
public:
    SimPromptPeer(SimToolkit& toolkit, ui::Prompt prompt) : toolkit_(toolkit), prompt_(std::move(prompt)) {
        toolkit_.prompts_.push_back(&prompt_);
    }
    ~SimPromptPeer() override { std::erase(toolkit_.prompts_, &prompt_); }

private:
    SimToolkit& toolkit_;
    const ui::Prompt prompt_;
};

std::unique_ptr<ui::PromptPeer> SimToolkit::showPrompt(ui::Prompt prompt) {
    return std::make_unique<SimPromptPeer>(*this, std::move(prompt));
}

std::unique_ptr<ui::PanelPeer> SimToolkit::makePanel(const ui::PanelOptions& options, ui::View& content) {
    ++panelsMade;
    return std::make_unique<SimPanelPeer>(*this, options, content);
}

std::unique_ptr<ui::PopoverPeer> SimToolkit::makePopover(ui::View& content, std::function<void()> closed,
                                                         ui::PopoverKind kind) {
    return std::make_unique<SimPopoverPeer>(*this, content, std::move(closed), kind);
}

void SimToolkit::popUpMenu(ui::Menu menu, ui::View&, Point<ViewSpace>, std::function<void()> closed) {
    dismissMenu();
    menu_ = OpenMenu{std::move(menu), std::move(closed)};
}

Size SimToolkit::textSize(std::string_view text, const ui::Font&) {
    const auto isCodePointStart = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
    return {kCharacterWidth * static_cast<double>(std::ranges::count_if(text, isCodePointStart)), kLineHeight};
}

Subscription SimToolkit::observeOutsidePresses(std::function<void()> pressed) {
    return outsidePresses_.subscribe(std::move(pressed));
}

std::optional<Point<ScreenSpace>> SimToolkit::pointerLocation() {
    constexpr Point<ScreenSpace> kElsewhere{-1e6, -1e6};
    const SimSurface* surface = drags_.isActive() ? drags_.surface() : pointed_;
    const auto panel = std::ranges::find_if(panels_, [&](SimPanel* p) { return &p->surface == surface; });
    if (panel == panels_.end()) return kElsewhere;
    const Point<ViewSpace> location = drags_.isActive() ? drags_.location() : location_;
    return Point<ScreenSpace>{(*panel)->frame.minX() + location.x, (*panel)->frame.maxY() - location.y};
}

SimPopover* SimToolkit::shownPopover() const {
    const auto found = std::ranges::find_if(popovers_, &SimPopover::isShown);
    return found == popovers_.end() ? nullptr : *found;
}

std::optional<std::vector<std::string>> SimToolkit::menuTitles(const std::vector<std::string>& path) const {
    const ui::Menu* menu = menuAt(path, path.size());
    if (!menu) return std::nullopt;
    std::vector<std::string> titles;
    for (const ui::MenuItem& item : *menu) titles.push_back(item.isSeparator ? "-" : item.title);
    return titles;
}

bool SimToolkit::canChoose(const std::string& title) const {
    return menu_ && std::ranges::any_of(menu_->items,
                                        [&](const ui::MenuItem& item) { return item.title == title && item.action; });
}

SimSurface* SimToolkit::surfaceOf(const ui::View& view) {
    return static_cast<SimSurface*>(view.host());
}

Repaints SimToolkit::repaints(const ui::View& view) {
    const SimSurface* surface = surfaceOf(view);
    return surface ? surface->repaints(view) : Repaints{};
}

void SimToolkit::click(ui::View& view) {
    press(view);
    release();
}

void SimToolkit::rightClick(ui::View& view) {
    SimSurface* surface = pointAt(view);
    if (!surface) return;
    closePopovers(view);
    EXPECT_TRUE(surface->router().buttonPressed({ui::MouseButton::Right, location_})) << "nothing takes presses";
}

void SimToolkit::moveTo(ui::View& view) {
    pointAt(view);
}

void SimToolkit::leave() {
    if (isAlive(pointed_)) pointed_->router().pointerExited();
    pointed_ = nullptr;
}

void SimToolkit::press(ui::View& view) {
    SimSurface* surface = pointAt(view);
    if (!surface) return;
    closePopovers(view);
    isPressed_ = true;
    EXPECT_TRUE(surface->router().buttonPressed({ui::MouseButton::Left, location_})) << "nothing takes presses";
}

void SimToolkit::turnWheel(ui::View& view, double notches) {
    if (SimSurface* surface = pointAt(view)) surface->router().wheelTurned({location_, notches});
}

void SimToolkit::middleClick(ui::View& view) {
    SimSurface* surface = pointAt(view);
    if (!surface) return;
    closePopovers(view);
    surface->router().buttonPressed({ui::MouseButton::Middle, location_});
    if (isAlive(surface)) surface->router().buttonReleased({ui::MouseButton::Middle, location_});
}

void SimToolkit::drag(Point<ViewSpace> location) {
    location_ = location;
    if (isAlive(pointed_)) pointed_->router().pointerMoved(location);
}

void SimToolkit::release() {
    isPressed_ = false;
    if (isAlive(pointed_)) pointed_->router().buttonReleased({ui::MouseButton::Left, location_});
}

void SimToolkit::pressOutside() {
    leave();
    dismissMenu();
    outsidePresses_.emit();
}

void SimToolkit::type(std::string_view text) {
    ui::TextField* field = typedField();
    if (field) field->edited(field->text() + std::string(text));
}

void SimToolkit::erase() {
    if (ui::TextField* field = typedField()) field->edited("");
}

bool SimToolkit::give(ui::TextCommand command) {
    ui::TextField* field = typedField();
    return field && field->commanded(command);
}

ui::TextField* SimToolkit::typedField() {
    const auto typed = [](const SimPopover* p) { return p->isShown && p->kind == ui::PopoverKind::Search; };
    const auto popover = std::ranges::find_if(popovers_, typed);
    ui::TextField* field = popover == popovers_.end() ? nullptr : ui::firstTextField((*popover)->surface.root());
    EXPECT_TRUE(field) << "nothing is there to type into";
    return field;
}

void SimToolkit::closePopovers(const ui::View& pressed) {
    for (SimPopover* popover : std::vector(popovers_)) {
        const SimSurface* surface = surfaceOf(pressed);
        const bool isLeftToOthers = popover->kind == ui::PopoverKind::List && surface == popover->anchorSurface;
        if (popover->isShown && surface != &popover->surface && &pressed != popover->anchor && !isLeftToOthers)
            popover->close();
    }
}

void SimToolkit::choose(const std::vector<std::string>& path) {
    const ui::Menu* menu = path.empty() ? nullptr : menuAt(path, path.size() - 1);
    if (!menu) {
        ADD_FAILURE() << "no such menu is open";
        return;
    }
    const auto item = std::ranges::find(*menu, path.back(), &ui::MenuItem::title);
    if (item == menu->end() || !item->action) {
        ADD_FAILURE() << "an item that cannot be chosen: " << path.back();
        return;
    }
    const auto action = item->action;
    const auto closed = std::move(menu_->closed);
    menu_.reset();
    action();
    if (closed) closed();
}

void SimToolkit::dismissMenu() {
    if (!menu_) return;
    const auto closed = std::move(menu_->closed);
    menu_.reset();
    if (closed) closed();
}

void SimToolkit::answer(const std::string& button) {
    if (!alert()) {
        ADD_FAILURE() << "there are " << alerts_.size() << " questions";
        return;
    }
    const OpenAlert asked = std::move(alerts_.front());
    alerts_.clear();
    const auto chosen = std::ranges::find(asked.alert.buttons, button);
    const bool isNone = chosen == asked.alert.buttons.end();
    EXPECT_TRUE(!isNone || button.empty()) << "no such answer: " << button;
    asked.answered(isNone ? std::nullopt : std::optional<size_t>(chosen - asked.alert.buttons.begin()));
}

SimSurface* SimToolkit::pointAt(ui::View& view) {
    SimSurface* surface = surfaceOf(view);
    if (!surface) {
        ADD_FAILURE() << "the view is not on the screen";
        return nullptr;
    }
    for (const SimPanel* panel : panels_)
        EXPECT_TRUE(panel->isShown || &panel->surface != surface) << "the view's panel is not on the screen";
    surface->layoutNow();
    if (pointed_ != surface) leave();
    pointed_ = surface;
    location_ = view.boundsInRoot().center();
    surface->router().pointerMoved(location_);
    return isAlive(surface) ? surface : nullptr;
}

const ui::Menu* SimToolkit::menuAt(const std::vector<std::string>& path, size_t depth) const {
    if (!menu_) return nullptr;
    const ui::Menu* menu = &menu_->items;
    for (size_t i = 0; i < depth; ++i) {
        const auto item = std::ranges::find(*menu, path[i], &ui::MenuItem::title);
        if (item == menu->end()) return nullptr;
        menu = &item->submenu;
    }
    return menu;
}

bool SimToolkit::isAlive(const SimSurface* surface) const {
    return std::ranges::any_of(panels_, [&](SimPanel* panel) { return &panel->surface == surface; }) ||
           std::ranges::any_of(popovers_, [&](SimPopover* popover) { return &popover->surface == surface; });
}

}  // namespace morvel::sim
