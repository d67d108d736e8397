// The whole program on a simulated desktop, as one's own eyes see it: which bars stand where and what they show.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "App/AppDelegate.h"
#include "Bar/Buttons/GroupRowButton.h"
#include "Bar/Buttons/GroupedAppButton.h"
#include "Bar/Buttons/WindowButton.h"
#include "sim/Desktop.h"

namespace morvel {

using namespace std::chrono_literals;

class BarDesktop : public sim::Desktop {
public:
    using Desktop::Desktop;

    void startMorvel() {
        delegate_ = std::make_unique<AppDelegate>(platform());
        delegate_->applicationDidFinishLaunching();
        settle();
    }
    void quitMorvel() {
        delegate_->applicationWillTerminate();
        delegate_.reset();
    }
    /// Ends it without any of what belongs to a proper end.
    void crashMorvel() { delegate_.reset(); }
    AppDelegate& delegate() { return *delegate_; }
    SettingsStore& settings() { return *delegate_->settings(); }

    // --- Looking: what was posted is done by then, since eyes are slower than the main loop ---
    /// The bar's view on the display at this place in the list of screens.
    ui::View& bar(size_t screen = 0) {
        settle();
        const DisplayID display = screens().screens().at(screen).displayID.value();
        return delegate_->displayManager()->controllers().at(display)->view();
    }

    /// Whether the panel shows on a display, and not beside all of them.
    bool isSeen(const sim::SimPanel& panel) {
        return panel.isShown && std::ranges::any_of(screens().list, [&](const Screen& screen) {
                   return screen.frame.contains(panel.frame.center());
               });
    }

    template <class Button>
    std::vector<Button*> all(ui::View& root) {
        std::vector<Button*> found;
        if (auto* button = dynamic_cast<Button*>(&root)) found.push_back(button);
        for (ui::View* child : root.subviews())
            for (Button* button : all<Button>(*child)) found.push_back(button);
        return found;
    }
    /// The views of a kind in the popover that is shown; none without one.
    template <class Row>
    std::vector<Row*> listed() {
        settle();
        sim::SimPopover* popover = toolkit().shownPopover();
        return popover ? all<Row>(popover->surface.root()) : std::vector<Row*>{};
    }
    /// From the leading end, as the eye reads them: dimmed tiles in brackets, the active one with a star, a group with
    /// its number of windows.
    std::string strip(size_t screen = 0) {
        std::string text;
        for (const auto* group : all<GroupedAppButton>(bar(screen)))
            text += " " + group->windows().front().appName + "x" + std::to_string(group->windows().size());
        for (const auto* button : all<WindowButton>(bar(screen))) {
            const std::string label = button->isIconOnly() ? "icon" : button->titleLabel().text();
            text +=
                button->snapshot().isWindowless ? " [" + label + "]" : " " + label + (button->isActive() ? "*" : "");
        }
        return text.empty() ? "" : text.substr(1);
    }
    /// Starts an application with a window of each title.
    sim::SimApp& open(const std::string& app, const std::vector<std::string>& titles) {
        sim::SimApp& started = launch(app);
        for (const std::string& title : titles) started.open({.title = title});
        return started;
    }
    WindowButton& button(const std::string& label, size_t screen = 0) {
        for (WindowButton* button : all<WindowButton>(bar(screen)))
            if (button->titleLabel().text() == label) return *button;
        throw std::runtime_error("no button " + label + " among: " + strip(screen));
    }
    GroupedAppButton& group(const std::string& appName) {
        for (GroupedAppButton* button : all<GroupedAppButton>(bar()))
            if (button->windows().front().appName == appName) return *button;
        throw std::runtime_error("no group " + appName + " among: " + strip());
    }

private:
    std::unique_ptr<AppDelegate> delegate_;
};

}  // namespace morvel
