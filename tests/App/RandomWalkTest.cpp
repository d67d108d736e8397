// The whole program on a desktop where everything happens in any order, faults included; now and then the desktop comes
// to rest, and then the bars must show exactly what is there.
#include <random>

#include "App/DesktopCheck.h"
#include "Bar/Pinned/PinnedOverflowRow.h"
#include "Platform/AXNames.h"

namespace morvel {
namespace {

/// Keeps count of how often a bar was asked to stay shown, and not yet released.
struct Pin {
    std::shared_ptr<int> count;
    int by;
    std::function<void()> bar;  ///< does what it did before it was counted
    void operator()() const {
        *count += by;
        bar();
    }
};

class Walk {
public:
    explicit Walk(unsigned seed) : random_(seed) {
        desktop_.platform().terminate = [] {};
        for (int i = 0; i < 3; ++i) launch();
        desktop_.startMorvel();
    }

    void step() {
        static constexpr std::pair<int, void (Walk::*)()> kSteps[] = {
            {4, &Walk::launch},         {2, &Walk::quit},          {1, &Walk::killSilently},
            {12, &Walk::open},          {8, &Walk::close},         {1, &Walk::vanish},
            {10, &Walk::retitle},       {12, &Walk::move},         {6, &Walk::minimizeOrRestore},
            {4, &Walk::fullScreen},     {8, &Walk::focus},         {5, &Walk::switchSpace},
            {3, &Walk::changeDisplays}, {2, &Walk::hangOrRecover}, {8, &Walk::changeSetting},
            {10, &Walk::clickButton},   {6, &Walk::rightClick},    {8, &Walk::chooseFromMenu},
            {5, &Walk::usePopover},     {3, &Walk::pressOutside},  {25, &Walk::letTimePass},
            {4, &Walk::changePins},     {4, &Walk::dragPin},       {6, &Walk::point}};
        int total = 0;
        for (const auto& [weight, act] : kSteps) total += weight;
        int left = below(total);
        for (const auto& [weight, act] : kSteps)
            if ((left -= weight) < 0) return (this->*act)();
    }

    /// Everything heals and settles, and is compared.
    void rest() {
        for (sim::SimApp* app : apps_) app->recover();
        if (desktop_.screens().list.empty()) desktop_.rearrange(sim::twoDisplays());
        desktop_.toolkit().dismissMenu();
        // Long enough for two sweeps, which is what a window that vanished takes, and for the slowest retry.
        run(75s);
        countLaunchedWindows();
        DesktopCheck check(desktop_, countable_);
        check.storeEqualsDesktop();
        check.barsShowWhatTheyShould();
        check.pinsAreShown();
        check.nothingIsLeftOver();
        pinsAreBalanced();
        if (sim::SimWindow* window = any(countingWindows())) {
            window->focus();
            run(1s);
            check.onlyFocused(*window);
        }
    }

    void end() {
        desktop_.quitMorvel();
        desktop_.settle();
        EXPECT_TRUE(desktop_.toolkit().panels().empty());
        EXPECT_TRUE(desktop_.toolkit().popovers().empty());
        EXPECT_EQ(desktop_.mainLoop().armedTimers(), 0u);
    }

private:
    // --- Applications and windows ---
    void launch() {
        if (running().size() >= 8) return;
        sim::LaunchOptions options;
        if (oneIn(8)) options.policy = ActivationPolicy::Accessory;
        if (oneIn(4) && !apps_.empty() && !apps_.front()->isRunning()) options.pid = apps_.front()->pid();
        if (options.pid && desktop_.app(*options.pid)) options.pid.reset();
        sim::SimApp& app = desktop_.launch("App " + std::to_string(below(6)), options);
        apps_.insert(apps_.begin(), &app);
        if (oneIn(4)) {
            const auto name = any(std::vector{ax::kWindowCreated, ax::kTitleChanged, ax::kUIElementDestroyed,
                                              ax::kFocusedWindowChanged, ax::kWindowMoved});
            app.refuseSubscriptions(*name, 1 + below(6));
        }
        app.ignoresQuit = oneIn(4);
        if (oneIn(2)) openIn(app);
        if (oneIn(2)) app.activate();
    }
    void quit() {
        if (sim::SimApp* app = any(running())) app->quit();
    }
    void killSilently() {
        if (sim::SimApp* app = any(running())) app->killSilently();
    }
    void hangOrRecover() {
        if (sim::SimApp* app = any(running())) oneIn(2) ? app->hang() : app->recover();
    }
    void open() {
        if (sim::SimApp* app = any(running()); app && countingWindows().size() < 40) openIn(*app);
    }
    void openIn(sim::SimApp& app) {
        sim::WindowSpec spec{.title = title()};
        std::tie(spec.x, spec.y, spec.width, spec.height) = place();
        spec.isFullScreen = oneIn(12);
        const int kind = below(12);
        if (kind == 0) spec.subrole = "AXSheet";
        if (kind == 1) spec.height = 0;
        if (kind == 2) spec.layer = 3;
        if (kind == 3) spec.subrole = "AXDialog";
        if (kind == 4) spec.subrole.reset();
        sim::SimWindow& window = app.open(spec);
        (kind > 2 ? countable_ : uncountable_).insert(&window);
    }
    void close() {
        if (sim::SimWindow* window = any(countingWindows())) window->close();
    }
    void vanish() {
        if (sim::SimWindow* window = any(countingWindows())) window->vanish();
    }
    void retitle() {
        if (sim::SimWindow* window = any(countingWindows())) window->setTitle(title());
    }
    void move() {
        sim::SimWindow* window = any(countingWindows());
        if (!window) return;
        const auto [x, y, width, height] = place();
        window->setFrame({x, y, width, height});
    }
    void minimizeOrRestore() {
        if (sim::SimWindow* window = any(countingWindows()))
            window->isMinimized() ? window->restore() : window->minimize();
    }
    void fullScreen() {
        if (sim::SimWindow* window = any(countingWindows())) window->setFullScreen(oneIn(2));
    }
    void focus() {
        if (sim::SimWindow* window = any(countingWindows())) window->focus();
    }

    // --- Displays and Spaces ---
    void switchSpace() {
        const auto screens = desktop_.screens().screens();
        const Screen* screen = anyOf(screens);
        if (!screen) return;
        const auto* managed = desktop_.windowServer().display(sim::SimScreens::uuidOf(*screen->displayID));
        std::vector<SpaceID> spaces;
        for (const ManagedSpace& space : managed->spaces) spaces.push_back(*space.id64);
        if (spaces.size() < 4 && oneIn(3)) spaces.push_back(desktop_.addSpace(*screen->displayID, oneIn(3) ? 4 : 0));
        desktop_.switchSpace(*screen->displayID, *any(spaces));
    }
    void changeDisplays() {
        auto displays = sim::twoDisplays();
        displays.push_back({DisplayID{3}, "Above", {200, 900, 1000, 700}});
        const DisplayID display = displays[static_cast<size_t>(below(3))].id;
        const bool isPlugged = std::ranges::count(desktop_.screens().list, std::optional(display), &Screen::displayID);
        if (oneIn(3)) return desktop_.rearrange(oneIn(2) ? std::vector<sim::DisplaySpec>{} : sim::twoDisplays());
        if (isPlugged && desktop_.screens().list.size() > 1) return desktop_.unplug(display);
        if (!isPlugged && desktop_.screens().list.size() > 0) desktop_.plug(displays[display.value - 1]);
    }

    // --- Settings ---
    template <class E>
    void setAny(Setting<E>& setting) {
        setting.set(kRawStrings<E>[static_cast<size_t>(below(static_cast<int>(kRawStrings<E>.size())))].value);
    }
    void changeSetting() {
        SettingsStore& s = desktop_.settings();
        switch (below(22)) {
            case 0:
                return setAny(s.barEdge);
            case 1:
                return s.barHeight.set(below(100));
            case 2:
                return setAny(s.theme);
            case 3:
                return s.clampWindows.set(oneIn(2));
            case 4:
                return setAny(s.groupingMode);
            case 5:
                return setAny(s.windowButtonWidthMode);
            case 6:
                return s.windowButtonCustomWidth.set(below(500));
            case 7:
                return setAny(s.windowSpaceMode);
            case 8:
                return setAny(s.windowlessAppsMode);
            case 9:
                return setAny(s.windowlessDisplayMode);
            case 10:
                return setAny(s.activeButtonStyle);
            case 11:
                return setAny(s.accentColorMode);
            case 12:
                return s.accentColorCustom.set(oneIn(2) ? "11223344" : "no colour");
            case 13:
                return setAny(s.barBackgroundStyle);
            case 14:
                return setAny(s.barBlurIntensity);
            case 15:
                return s.showButtonBorders.set(oneIn(2));
            case 16:
                return s.compactAtTop.set(oneIn(2));
            case 17:
                return s.matchMenuBarHeight.set(oneIn(2));
            case 18:
                return s.compactTopCollapsedItemCount.set(below(20));
            case 19:
                return s.pinnedMaxVisible.set(below(6));
            case 20:
                return s.autoHide.set(oneIn(2));
            default:
                return s.windowBlacklist.set(oneIn(2) ? std::set<std::string>{}
                                                      : std::set{std::string("com.example.app 1")});
        }
    }

    // --- The pointer. Only what can be reached is pressed. ---
    template <class Button>
    Button* reachable(std::vector<ui::View*> roots) {
        std::vector<Button*> found;
        for (ui::View* root : roots) {
            root->layoutIfNeeded();
            for (Button* button : desktop_.all<Button>(*root))
                if (root->hitTest(button->boundsInRoot().center()) == button) found.push_back(button);
        }
        return any(found);
    }
    std::vector<ui::View*> bars() {
        std::vector<ui::View*> roots;
        for (sim::SimPanel* panel : desktop_.toolkit().panels())
            if (desktop_.isSeen(*panel)) roots.push_back(&panel->surface.root());
        return roots;
    }
    /// A strip that waits for the pointer, or a bar, or nothing at all.
    void point() {
        settle();
        ui::View* root = any(bars());
        if (!root || oneIn(4)) return desktop_.toolkit().leave();
        desktop_.toolkit().moveTo(*root);
    }
    void clickButton() {
        settle();
        if (auto* button = reachable<WindowButton>(bars()); button && oneIn(2))
            return desktop_.toolkit().click(*button);
        if (auto* more = reachable<PinnedOverflowButton>(bars()); more && oneIn(2))
            return desktop_.toolkit().click(*more);
        if (auto* group = reachable<GroupedAppButton>(bars())) desktop_.toolkit().click(*group);
    }
    void rightClick() {
        settle();
        if (auto* pin = reachable<PinnedAppButton>(bars()); pin && oneIn(4)) return desktop_.toolkit().rightClick(*pin);
        if (auto* bar = reachable<MorvelView>(bars()); bar && oneIn(4)) return desktop_.toolkit().rightClick(*bar);
        if (auto* button = reachable<WindowButton>(bars()); button && oneIn(2))
            return desktop_.toolkit().rightClick(*button);
        if (auto* group = reachable<GroupedAppButton>(bars())) desktop_.toolkit().rightClick(*group);
    }
    void usePopover() {
        settle();
        sim::SimPopover* popover = desktop_.toolkit().shownPopover();
        if (!popover) return;
        if (auto* cross = reachable<ui::ImageButton>({&popover->surface.root()}); cross && oneIn(3))
            return desktop_.toolkit().click(*cross);
        if (auto* pin = reachable<PinnedOverflowRow>({&popover->surface.root()}))
            return oneIn(2) ? desktop_.toolkit().click(*pin) : desktop_.toolkit().rightClick(*pin);
        auto* row = reachable<GroupRowButton>({&popover->surface.root()});
        if (row) oneIn(2) ? desktop_.toolkit().click(*row) : desktop_.toolkit().rightClick(*row);
    }
    void chooseFromMenu() {
        std::vector<std::vector<std::string>> paths;
        for (const std::string& title : desktop_.toolkit().menuTitles().value_or(std::vector<std::string>{})) {
            if (title == "Move to Display") {
                const auto displays = desktop_.toolkit().menuTitles({title});
                for (const std::string& display : *displays) paths.push_back({title, display});
            } else if (desktop_.toolkit().canChoose(title)) {
                paths.push_back({title});
            }
        }
        if (paths.empty()) return;
        oneIn(4) ? desktop_.toolkit().dismissMenu() : desktop_.toolkit().choose(*any(paths));
    }
    void pressOutside() { desktop_.toolkit().pressOutside(); }

    // --- Pinned items ---
    void changePins() {
        PinnedAppsStore& store = *desktop_.delegate().pinnedStore();
        const std::string path = "/" + std::to_string(below(12));
        const int what = below(4);
        if (what == 0) store.pinFolder(path, path);
        if (what == 1) store.pinApp("com.example.app " + std::to_string(below(6)), path);
        if (what == 2) store.move("folder:" + path, below(12) - 2);
        if (what == 3) store.unpin("folder:" + path);
    }
    /// Of anything that can be dragged to anything else, while anything may happen.
    void dragPin() {
        settle();
        desktop_.toolkit().dismissMenu();
        sim::SimDrags& drags = desktop_.toolkit().drags();
        std::vector<ui::View*> roots = bars();
        if (sim::SimPopover* popover = desktop_.toolkit().shownPopover()) roots.push_back(&popover->surface.root());
        ui::View* dragged = reachable<PinnedAppButton>(roots);
        if (oneIn(3)) dragged = reachable<PinnedOverflowRow>(roots);
        if (oneIn(4)) dragged = reachable<WindowButton>(roots);
        if (!dragged) {
            drags.bring(sim::SimPasteboard::ofFile("/" + std::to_string(below(12))));
        } else {
            drags.pull(*dragged);
        }
        for (int i = below(4); i >= 0; --i) {
            roots = bars();
            if (sim::SimPopover* popover = desktop_.toolkit().shownPopover()) roots.push_back(&popover->surface.root());
            ui::View* over = reachable<PinnedAppButton>(roots);
            if (oneIn(3)) over = reachable<PinnedOverflowRow>(roots);
            if (oneIn(3)) over = reachable<PinnedOverflowButton>(roots);
            if (over) drags.over(*over, below(30) - 15);
            if (oneIn(4)) changePins();
            if (oneIn(8)) changeDisplays();
            run(std::chrono::milliseconds(below(700)));
        }
        oneIn(3) ? drags.cancel() : static_cast<void>(drags.drop());
    }

    // --- Time ---
    void letTimePass() {
        if (oneIn(2)) return settle();
        run(std::chrono::milliseconds(below(oneIn(8) ? 20000 : 600)));
    }
    void settle() { run({}); }
    void run(Duration time) {
        desktop_.run(time);
        watchPins();
    }

    void watchPins() {
        for (const auto& [display, controller] : desktop_.delegate().displayManager()->controllers()) {
            MorvelView& bar = controller->view();
            if (bar.pinReveal.target<Pin>()) continue;
            const auto count = std::make_shared<int>(0);
            bar.pinReveal = Pin{count, 1, bar.pinReveal};
            bar.unpinReveal = Pin{count, -1, bar.unpinReveal};
        }
    }
    void pinsAreBalanced() {
        for (const auto& [display, controller] : desktop_.delegate().displayManager()->controllers()) {
            MorvelView& bar = controller->view();
            const auto holds = [&](const sim::SimPopover* popover) {
                return popover->isShown && popover->anchor->isDescendantOf(bar);
            };
            EXPECT_EQ(*bar.pinReveal.target<Pin>()->count, std::ranges::count_if(desktop_.toolkit().popovers(), holds));
        }
    }

    // --- Chance ---
    int below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
    bool oneIn(int n) { return below(n) == 0; }
    template <class T>
    const T* anyOf(const std::vector<T>& choices) {
        return choices.empty() ? nullptr : &choices[static_cast<size_t>(below(static_cast<int>(choices.size())))];
    }
    template <class T>
    T* any(const std::vector<T*>& choices) {
        T* const* chosen = anyOf(choices);
        return chosen ? *chosen : nullptr;
    }
    template <class T>
    std::optional<T> any(const std::vector<T>& choices) {
        const T* chosen = anyOf(choices);
        return chosen ? std::optional(*chosen) : std::nullopt;
    }
    std::string title() {
        static const std::vector<std::string> kTitles = {
            "", "a", "Inbox", "Résumé — 日本語", "\xFF\xFE broken", "line\nbreak", std::string(5000, 'x'), "Inbox"};
        return *any(kTitles) + (oneIn(2) ? std::to_string(below(100)) : "");
    }
    /// Mostly on a display, at times outside all of them, at times absurd.
    std::tuple<double, double, double, double> place() {
        if (oneIn(30)) return {-1e9, 1e300, 1e12, 5};
        return {below(3600) - 100.0, below(1200) - 100.0, 1.0 + below(900), 1.0 + below(700)};
    }

    std::vector<sim::SimApp*> running() {
        std::vector<sim::SimApp*> found;
        for (sim::SimApp* app : apps_)
            if (app->isRunning()) found.push_back(app);
        return found;
    }
    /// Those that came because a pinned item was opened.
    void countLaunchedWindows() {
        for (const RunningApplication& running : desktop_.workspace().running)
            for (const auto& window : desktop_.app(running.pid)->windows())
                if (!uncountable_.contains(window.get())) countable_.insert(window.get());
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

    std::mt19937 random_;
    BarDesktop desktop_{sim::twoDisplays()};
    std::vector<sim::SimApp*> apps_;  // the newest first; the desktop's
    std::set<const sim::SimWindow*> countable_, uncountable_;
};

TEST(RandomWalk, TheBarsShowTheDesktopWheneverItRests) {
    constexpr unsigned kSeeds = 40;
    constexpr int kRests = 16;
    constexpr int kSteps = 150;
    for (unsigned seed = 1; seed <= kSeeds && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Walk walk(seed);
        for (int rest = 0; rest < kRests && !testing::Test::HasFailure(); ++rest) {
            SCOPED_TRACE("rest " + std::to_string(rest));
            for (int i = 0; i < kSteps; ++i) walk.step();
            walk.rest();
        }
        walk.end();
    }
}

}  // namespace
}  // namespace morvel
