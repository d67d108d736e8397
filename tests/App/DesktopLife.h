// What happens on a desktop by itself: applications, windows, displays, players and the network, faults included.
#pragma once

#include <set>

#include "App/BarDesktop.h"
#include "App/Chance.h"
#include "Platform/AXNames.h"

namespace morvel {

class DesktopLife {
public:
    /// Both outlive it.
    DesktopLife(BarDesktop& desktop, Chance& chance) : desktop_(desktop), chance_(chance) {}

    /// The windows that were opened as ones that count for the bar, or came because something was opened.
    const std::set<const sim::SimWindow*>& countable() const { return countable_; }
    /// Whatever is broken works again.
    void heal() {
        for (sim::SimApp* app : apps_) app->recover();
        if (desktop_.screens().list.empty()) desktop_.rearrange(sim::twoDisplays());
        desktop_.web().isSilent = false;
        if (!desktop_.workspace().sessionActive) lockOrUnlock();
    }
    /// Called whenever time has passed, before anybody does something again.
    std::function<void()> afterRun;
    void run(Duration time) {
        desktop_.run(time);
        adoptOpened();
        if (afterRun) afterRun();
    }

    // --- Applications and windows ---
    void launch() {
        if (running().size() >= 8) return;
        sim::LaunchOptions options;
        if (chance_.oneIn(8)) options.policy = ActivationPolicy::Accessory;
        if (chance_.oneIn(4) && !apps_.empty() && !apps_.front()->isRunning()) options.pid = apps_.front()->pid();
        if (options.pid && desktop_.app(*options.pid)) options.pid.reset();
        sim::SimApp& app = desktop_.launch("App " + std::to_string(chance_.below(6)), options);
        apps_.insert(apps_.begin(), &app);
        if (chance_.oneIn(4)) {
            const auto name = chance_.any(std::vector{ax::kWindowCreated, ax::kTitleChanged, ax::kUIElementDestroyed,
                                                      ax::kFocusedWindowChanged, ax::kWindowMoved});
            app.refuseSubscriptions(*name, 1 + chance_.below(6));
        }
        app.ignoresQuit = chance_.oneIn(4);
        if (chance_.oneIn(2)) openIn(app);
        if (chance_.oneIn(2)) app.activate();
    }
    void quit() {
        withApp([](sim::SimApp& app) { app.quit(); });
    }
    void killSilently() {
        withApp([](sim::SimApp& app) { app.killSilently(); });
    }
    void hangOrRecover() {
        withApp([this](sim::SimApp& app) { chance_.oneIn(2) ? app.hang() : app.recover(); });
    }
    void open() {
        if (sim::SimApp* app = chance_.any(running()); app && countingWindows().size() < 40) openIn(*app);
    }
    void openIn(sim::SimApp& app) {
        const Rect<AXSpace> frame = place();
        sim::WindowSpec spec{
            .x = frame.x, .y = frame.y, .width = frame.width, .height = frame.height, .title = title()};
        spec.isFullScreen = chance_.oneIn(12);
        const int kind = chance_.below(12);
        if (kind == 0) spec.subrole = "AXSheet";
        if (kind == 1) spec.height = 0;
        if (kind == 2) spec.layer = 3;
        if (kind == 3) spec.subrole = "AXDialog";
        if (kind == 4) spec.subrole.reset();
        sim::SimWindow& window = app.open(spec);
        (kind > 2 ? countable_ : uncountable_).insert(&window);
    }
    void close() {
        withWindow([this](sim::SimWindow& window) { chance_.oneIn(8) ? window.vanish() : window.close(); });
    }
    void retitle() {
        withWindow([this](sim::SimWindow& window) { window.setTitle(title()); });
    }
    void move() {
        withWindow([this](sim::SimWindow& window) { window.setFrame(place()); });
    }
    void minimizeOrRestore() {
        withWindow([](sim::SimWindow& window) { window.isMinimized() ? window.restore() : window.minimize(); });
    }
    void fullScreen() {
        withWindow([this](sim::SimWindow& window) { window.setFullScreen(chance_.oneIn(2)); });
    }
    void focus() {
        withWindow([](sim::SimWindow& window) { window.focus(); });
    }

    // --- Displays and Spaces ---
    void switchSpace() {
        const auto screens = desktop_.screens().screens();
        const Screen* screen = chance_.anyOf(screens);
        if (!screen) return;
        const auto* managed = desktop_.windowServer().display(sim::SimScreens::uuidOf(*screen->displayID));
        std::vector<SpaceID> spaces;
        for (const ManagedSpace& space : managed->spaces) spaces.push_back(*space.id64);
        if (spaces.size() < 4 && chance_.oneIn(3))
            spaces.push_back(desktop_.addSpace(*screen->displayID, chance_.oneIn(3) ? 4 : 0));
        desktop_.switchSpace(*screen->displayID, *chance_.any(spaces));
    }
    void changeDisplays() {
        auto displays = sim::twoDisplays();
        displays.push_back({DisplayID{3}, "Above", {200, 900, 1000, 700}});
        const DisplayID display = displays[static_cast<size_t>(chance_.below(3))].id;
        const bool isPlugged = std::ranges::count(desktop_.screens().list, std::optional(display), &Screen::displayID);
        if (chance_.oneIn(3))
            return desktop_.rearrange(chance_.oneIn(2) ? std::vector<sim::DisplaySpec>{} : sim::twoDisplays());
        if (isPlugged && desktop_.screens().list.size() > 1) return desktop_.unplug(display);
        if (!isPlugged && desktop_.screens().list.size() > 0) desktop_.plug(displays[display.value - 1]);
    }

    // --- The system ---
    void lockOrUnlock() {
        bool& isActive = desktop_.workspace().sessionActive;
        isActive = !isActive;
        if (isActive) desktop_.workspace().sessionActivated.emit();
    }
    void changeTrack() {
        static const std::vector<std::optional<std::string>> kAnswers = {
            std::nullopt, "", "playing||Blue||Ann", "paused||Blue||Ann", "playing||\xFF||", "playing||a||b||c", "?"};
        const std::string player = chance_.oneIn(2) ? "Music" : "Spotify";
        desktop_.players().answers[player] = *chance_.anyOf(kAnswers);
    }
    void publishRelease() {
        static const std::vector<HttpAnswer> kAnswers = {HttpFailure{"The network is down."},
                                                         HttpResponse{404, "not found"}, HttpResponse{200, "{"},
                                                         sim::release("2.0.0")};
        desktop_.web().answer = *chance_.anyOf(kAnswers);
        desktop_.web().isSilent = chance_.oneIn(4);
        desktop_.delegate().updateController()->checkNow();
    }
    void installOrRemove() {
        sim::SimInstalledApplications& installed = desktop_.installedApplications();
        const std::string name = "App " + std::to_string(chance_.below(6));
        if (chance_.oneIn(3)) {
            installed.bundles.erase("/Applications/" + name + ".app");
        } else {
            installed.install("com.example.app " + name.substr(4), name);
        }
        installed.changes.emit();
    }

    std::vector<sim::SimApp*> running() {
        std::vector<sim::SimApp*> found;
        for (sim::SimApp* app : apps_)
            if (app->isRunning()) found.push_back(app);
        return found;
    }
    std::vector<sim::SimWindow*> countingWindows() {
        std::vector<sim::SimWindow*> found;
        for (sim::SimApp* app : running())
            for (const auto& window : app->windows())
                if (app->record().policy == ActivationPolicy::Regular && window->isOpen() &&
                    countable_.contains(window.get()))
                    found.push_back(window.get());
        return found;
    }

private:
    template <class Act>
    void withApp(const Act& act) {
        if (sim::SimApp* app = chance_.any(running())) act(*app);
    }
    template <class Act>
    void withWindow(const Act& act) {
        if (sim::SimWindow* window = chance_.any(countingWindows())) act(*window);
    }
    std::string title() {
        static const std::vector<std::string> kTitles = {
            "", "a", "Inbox", "Résumé — 日本語", "\xFF\xFE broken", "line\nbreak", std::string(5000, 'x'), "Inbox"};
        return *chance_.any(kTitles) + (chance_.oneIn(2) ? std::to_string(chance_.below(100)) : "");
    }
    /// Mostly on a display, at times outside all of them, at times absurd.
    Rect<AXSpace> place() {
        if (chance_.oneIn(30)) return {-1e9, 1e300, 1e12, 5};
        return {chance_.below(3600) - 100.0, chance_.below(1200) - 100.0, 1.0 + chance_.below(900),
                1.0 + chance_.below(700)};
    }

    /// Those that came because a pinned item or an entry of the launcher was opened, and their windows.
    void adoptOpened() {
        for (const RunningApplication& running : desktop_.workspace().running) {
            sim::SimApp* app = desktop_.app(running.pid);
            if (std::ranges::count(apps_, app) == 0) apps_.insert(apps_.begin(), app);
            for (const auto& window : app->windows())
                if (!uncountable_.contains(window.get())) countable_.insert(window.get());
        }
    }

    BarDesktop& desktop_;
    Chance& chance_;
    std::vector<sim::SimApp*> apps_;  // the newest first; the desktop's
    std::set<const sim::SimWindow*> countable_, uncountable_;
};

}  // namespace morvel
