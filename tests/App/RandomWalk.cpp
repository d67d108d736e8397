#include "App/RandomWalk.h"

#if defined(__SANITIZE_ADDRESS__)
extern "C" size_t __sanitizer_get_current_allocated_bytes();  // its header is not part of every compiler
#elif defined(__GLIBC__)
#include <malloc.h>
#endif

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

/// In bytes; 0 where the system does not tell.
size_t heapInUse() {
#if defined(__SANITIZE_ADDRESS__)
    return __sanitizer_get_current_allocated_bytes();
#elif defined(__GLIBC__)
    return mallinfo2().uordblks;
#else
    return 0;
#endif
}

}  // namespace

void RandomWalk::step() {
    using Life = DesktopLife;
    using User = BarUser;
    static constexpr std::pair<int, void (Life::*)()> kHappens[] = {
        {4, &Life::launch},         {2, &Life::quit},         {1, &Life::killSilently}, {12, &Life::open},
        {9, &Life::close},          {10, &Life::retitle},     {12, &Life::move},        {6, &Life::minimizeOrRestore},
        {4, &Life::fullScreen},     {8, &Life::focus},        {5, &Life::switchSpace},  {3, &Life::changeDisplays},
        {2, &Life::hangOrRecover},  {1, &Life::lockOrUnlock}, {3, &Life::changeTrack},  {1, &Life::publishRelease},
        {1, &Life::installOrRemove}};
    static constexpr std::pair<int, void (User::*)()> kDoes[] = {
        {8, &User::changeSetting}, {1, &User::importSettings}, {3, &User::useSettingsWindow}, {10, &User::clickButton},
        {6, &User::rightClick},    {8, &User::chooseFromMenu}, {5, &User::usePopover},        {3, &User::pressOutside},
        {25, &User::letTimePass},  {4, &User::changePins},     {4, &User::dragPin},           {6, &User::point},
        {4, &User::hover},         {4, &User::useLauncher}};
    int total = 0;
    for (const auto& [weight, act] : kHappens) total += weight;
    for (const auto& [weight, act] : kDoes) total += weight;
    int left = chance_.below(total);
    for (const auto& [weight, act] : kHappens)
        if ((left -= weight) < 0) return (life_.*act)();
    for (const auto& [weight, act] : kDoes)
        if ((left -= weight) < 0) return (user_.*act)();
}

void RandomWalk::rest() {
    life_.heal();
    desktop_.toolkit().dismissMenu();
    // Long enough for two sweeps, which is what a window that vanished takes, and for the slowest retry.
    life_.run(75s);
    DesktopCheck check(desktop_, life_.countable());
    check.storeEqualsDesktop();
    check.barsShowWhatTheyShould();
    check.pinsAreShown();
    check.nothingIsLeftOver();
    pinsAreBalanced();
    if (sim::SimWindow* window = chance_.any(life_.countingWindows())) {
        window->focus();
        life_.run(1s);
        check.onlyFocused(*window);
    }
    desktop_.journal().clear();
}

void RandomWalk::crash() {
    desktop_.crashMorvel();
    desktop_.run(std::chrono::milliseconds(chance_.below(2000)));
    desktop_.startMorvel();
    watchPins();
}

RandomWalk::Held RandomWalk::relaunch() {
    const size_t old = heapInUse();
    desktop_.quitMorvel();
    desktop_.settle();
    const size_t without = heapInUse();
    desktop_.startMorvel();
    watchPins();
    life_.run(75s);
    desktop_.journal().clear();
    return {old - without, heapInUse() - without};
}

void RandomWalk::end() {
    desktop_.quitMorvel();
    desktop_.settle();
    EXPECT_TRUE(desktop_.toolkit().panels().empty());
    EXPECT_TRUE(desktop_.toolkit().popovers().empty());
    EXPECT_EQ(desktop_.mainLoop().armedTimers(), 0u);
}

void RandomWalk::watchPins() {
    for (const auto& [display, controller] : desktop_.delegate().displayManager()->controllers()) {
        MorvelView& bar = controller->view();
        if (bar.pinReveal.target<Pin>()) continue;
        const auto count = std::make_shared<int>(0);
        bar.pinReveal = Pin{count, 1, bar.pinReveal};
        bar.unpinReveal = Pin{count, -1, bar.unpinReveal};
    }
}

void RandomWalk::pinsAreBalanced() {
    for (const auto& [display, controller] : desktop_.delegate().displayManager()->controllers()) {
        MorvelView& bar = controller->view();
        const auto holds = [&](const sim::SimPopover* popover) {
            return popover->isShown && popover->anchor->isDescendantOf(bar);
        };
        EXPECT_EQ(*bar.pinReveal.target<Pin>()->count, std::ranges::count_if(desktop_.toolkit().popovers(), holds));
    }
}

}  // namespace morvel
