#include "sim/SimApp.h"

#include "Platform/AXNames.h"
#include "sim/Desktop.h"

namespace morvel::sim {

SimApp::SimApp(Desktop& desktop, RunningApplication record) : desktop_(desktop), record_(std::move(record)) {
    updateWindowList();
}

bool SimApp::isFrontmost() const {
    return running_ && desktop_.workspace_.frontmost == pid();
}

SimWindow& SimApp::open(const WindowSpec& spec) {
    SimWindow& window = *windows_.emplace_back(std::make_unique<SimWindow>(desktop_, *this, spec));
    updateWindowList();
    desktop_.accessibility_.notify(window.element(), ax::kWindowCreated);
    if (isFrontmost()) setFocused(&window);
    return window;
}

void SimApp::setMenuItem(const std::string& title, const std::string& character, std::function<AXError()> pressed) {
    SimAccessibility& accessibility = desktop_.accessibility_;
    const ElementID item = accessibility.add({.pid = pid(),
                                              .attributes = {{std::string(ax::kTitle), title},
                                                             {std::string(ax::kMenuItemCmdChar), character},
                                                             {std::string(ax::kMenuItemCmdModifiers), 0.0}}});
    desktop_.menuItems_[item] = std::move(pressed);
    ElementID outer = item;
    for (const std::string outerTitle : {"", "File", ""}) {
        const std::vector<AXElement> children{accessibility.handle(outer)};
        outer = accessibility.add(
            {.pid = pid(),
             .attributes = {{std::string(ax::kTitle), outerTitle}, {std::string(ax::kChildren), children}}});
    }
    accessibility.at(accessibility.applicationID(pid()))
        .attributes.insert_or_assign(std::string(ax::kMenuBar), accessibility.handle(outer));
}

void SimApp::activate() {
    if (!running_ || isFrontmost()) return;
    desktop_.workspace_.frontmost = pid();
    // Its newest window, when nobody has worked with any yet.
    SimWindow* newest = nullptr;
    for (const auto& window : windows_)
        if (window->isOpen() && !window->isMinimized()) newest = window.get();
    if (!focused_) setFocused(newest);
    desktop_.mainLoop_.post([this] { desktop_.workspace_.activated.emit(record_); });
    desktop_.accessibility_.notify(desktop_.accessibility_.applicationID(pid()), ax::kApplicationActivated);
}

void SimApp::quit() {
    if (!running_) return;
    vanish();
    desktop_.mainLoop_.post([this] { desktop_.workspace_.terminated.emit(record_); });
}

void SimApp::killSilently() {
    if (running_) vanish();
}

void SimApp::hang() {
    desktop_.accessibility_.process(pid()).isHung = true;
}

void SimApp::recover() {
    desktop_.accessibility_.process(pid()).isHung = false;
}

void SimApp::refuseSubscriptions(std::string_view notification, int times) {
    desktop_.accessibility_.process(pid()).refusals[std::string(notification)] = times;
}

void SimApp::setFocused(SimWindow* window) {
    if (focused_ == window) return;
    if (focused_) focused_->set(ax::kMain, false);
    focused_ = window;
    SimAccessibility& accessibility = desktop_.accessibility_;
    auto& attributes = accessibility.at(accessibility.applicationID(pid())).attributes;
    attributes.erase(std::string(ax::kFocusedWindow));
    if (!window) return;
    window->set(ax::kMain, true);
    attributes.emplace(ax::kFocusedWindow, accessibility.handle(window->element()));
    accessibility.notify(window->element(), ax::kFocusedWindowChanged);
    accessibility.notify(window->element(), ax::kMainWindowChanged);
}

void SimApp::updateWindowList() {
    SimAccessibility& accessibility = desktop_.accessibility_;
    std::vector<AXElement> open;
    for (const auto& window : windows_)
        if (window->isOpen()) open.push_back(accessibility.handle(window->element()));
    accessibility.at(accessibility.applicationID(pid()))
        .attributes.insert_or_assign(std::string(ax::kWindows), std::move(open));
}

void SimApp::vanish() {
    focused_ = nullptr;
    for (const auto& window : windows_)
        if (window->isOpen()) window->vanish();
    running_ = false;
    desktop_.workspace_.drop(pid());
    desktop_.accessibility_.forgetApplication(pid());
}

}  // namespace morvel::sim
