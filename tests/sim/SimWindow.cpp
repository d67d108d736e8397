#include "sim/SimWindow.h"

#include "Platform/AXNames.h"
#include "sim/Desktop.h"

namespace morvel::sim {

SimWindow::SimWindow(Desktop& desktop, SimApp& app, const WindowSpec& spec)
    : desktop_(desktop),
      app_(app),
      number_(++desktop.lastNumber_),
      frame_{spec.x, spec.y, spec.width, spec.height},
      title_(spec.title) {
    element_ = desktop.accessibility_.add({.pid = app.pid(), .number = number_});
    set(ax::kRole, std::string(ax::kWindowRole));
    if (spec.subrole) set(ax::kSubrole, *spec.subrole);
    set(ax::kTitle, title_);
    set(ax::kPosition, frame_.origin());
    set(ax::kSize, frame_.size());
    set(ax::kMinimized, false);
    set(ax::kFullScreen, spec.isFullScreen);
    set(ax::kMain, false);
    if (spec.hasCloseButton) {
        closeButton_ =
            desktop.accessibility_.add({.pid = app.pid(), .attributes = {{"AXRole", std::string(ax::kButtonRole)}}});
        set(ax::kCloseButton, desktop.accessibility_.handle(closeButton_));
        desktop.closeButtons_[closeButton_] = this;
    }
    desktop.windows_[element_] = this;
    SimWindowServer& server = desktop.windowServer_;
    const std::string owner = app.record().localizedName.value_or("");
    server.windows.insert(server.windows.begin(), {number_, app.pid(), spec.layer, frame_, owner, title_});
    std::optional<SpaceID> space = spec.space;
    if (const auto display = desktop.displayAt(frame_.center()); !space && display)
        space = desktop.currentSpace(*display);
    if (space) server.windowSpaces[number_] = {*space};
}

bool SimWindow::isFocused() const {
    return app_.focused_ == this && app_.isFrontmost();
}

void SimWindow::setTitle(const std::string& title) {
    title_ = title;
    set(ax::kTitle, title);
    if (ListedWindow* listed = desktop_.windowServer_.find(number_)) listed->name = title;
    desktop_.accessibility_.notify(element_, ax::kTitleChanged);
}

void SimWindow::setFrame(const Rect<AXSpace>& frame) {
    const bool moved = frame.origin() != frame_.origin();
    const bool resized = frame.size() != frame_.size();
    const auto displayBefore = desktop_.displayAt(frame_.center());
    frame_ = frame;
    // The system puts a window that crosses to another display on the Space that shows there.
    const auto display = desktop_.displayAt(frame_.center());
    const auto space = display && display != displayBefore ? desktop_.currentSpace(*display) : std::nullopt;
    if (space) desktop_.windowServer_.windowSpaces[number_] = {*space};
    set(ax::kPosition, frame.origin());
    set(ax::kSize, frame.size());
    if (ListedWindow* listed = desktop_.windowServer_.find(number_)) listed->bounds = frame;
    if (moved) desktop_.accessibility_.notify(element_, ax::kWindowMoved);
    if (resized) desktop_.accessibility_.notify(element_, ax::kWindowResized);
}

void SimWindow::setFullScreen(bool fullScreen) {
    set(ax::kFullScreen, fullScreen);
    desktop_.accessibility_.notify(element_, ax::kWindowResized);
}

void SimWindow::minimize() {
    if (minimized_) return;
    minimized_ = true;
    set(ax::kMinimized, true);
    desktop_.windowServer_.offScreen.insert(number_);
    leaveFocus();
}

void SimWindow::restore() {
    if (!minimized_) return;
    minimized_ = false;
    set(ax::kMinimized, false);
    desktop_.windowServer_.offScreen.erase(number_);
}

void SimWindow::focus() {
    restore();
    raise();
    app_.activate();
}

void SimWindow::close() {
    if (!open_) return;
    vanish();
    leaveFocus();
    desktop_.accessibility_.notify(element_, ax::kUIElementDestroyed);
}

void SimWindow::vanish() {
    open_ = false;
    desktop_.accessibility_.at(element_).isDead = true;
    desktop_.windowServer_.unlist(number_);
    app_.updateWindowList();
}

void SimWindow::failReading(std::string_view attribute, AXError error) {
    desktop_.accessibility_.at(element_).failing.insert_or_assign(std::string(attribute), error);
}

void SimWindow::healReading(std::string_view attribute) {
    desktop_.accessibility_.at(element_).failing.erase(std::string(attribute));
}

void SimWindow::set(std::string_view attribute, AXValue value) {
    desktop_.accessibility_.at(element_).attributes.insert_or_assign(std::string(attribute), std::move(value));
}

void SimWindow::writeFrame(const Rect<AXSpace>& wanted) {
    setFrame(placement ? placement(frame_, wanted) : wanted);
}

void SimWindow::raise() {
    desktop_.windowServer_.raise(number_);
    app_.setFocused(this);
}

void SimWindow::leaveFocus() {
    if (app_.focused_ != this) return;
    SimWindow* next = nullptr;
    for (const auto& window : app_.windows_)
        if (window->isOpen() && !window->isMinimized() && window.get() != this) next = window.get();
    app_.setFocused(next);
}

}  // namespace morvel::sim
