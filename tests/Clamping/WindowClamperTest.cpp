#include "Clamping/WindowClamper.h"

#include "App/BarDesktop.h"
#include "WindowSource/WatchedDesktop.h"

namespace morvel {
namespace {

using namespace std::chrono_literals;
using Frame = Rect<AXSpace>;

constexpr double kBarHeight = 44;
constexpr Frame kTall{100, 100, 600, 800};  // reaches the lower edge of a display that is 900 high
constexpr Frame kClear{100, 100, 600, 800 - kBarHeight};

/// A desktop with a clamper and nothing else of the bar, and a mouse.
class ClampedDesktop : public WatchedDesktop {
public:
    explicit ClampedDesktop(const std::vector<sim::DisplaySpec>& displays = sim::oneDisplay(1440, 900))
        : WatchedDesktop(displays) {
        start();
        clamper_.start();
        settle();
    }

    sim::SimWindow& open(const Frame& frame) {
        if (!app_) app_ = &launch("Editor");
        return app_->open({.x = frame.x, .y = frame.y, .width = frame.width, .height = frame.height});
    }
    sim::SimWindow& openClamped(const Frame& frame = kTall) {
        sim::SimWindow& window = open(frame);
        run(1s);
        return window;
    }
    sim::SimApp& editor() { return *app_; }
    SettingsStore& settings() { return settings_; }
    ClampingBlacklist& blacklist() { return blacklist_; }

    bool isButtonHeld = false;

private:
    SettingsStore settings_{defaults()};
    ClampingBlacklist blacklist_{defaults()};
    sim::SimApp* app_ = nullptr;
    WindowClamper clamper_{{mainLoop(), screens(), workspace(), [this] { return isButtonHeld; },
                            [this](WindowID id, const Frame& frame) { manager().setWindowFrame(id, frame); }},
                           store(),
                           blacklist_,
                           settings_};
};

TEST(ReserveSpace, ShrinksANewWindowOnceItHasSettled) {
    BarDesktop desktop;
    desktop.startMorvel();
    auto& window = desktop.launch("Editor").open({.x = 0, .y = 0, .width = 800, .height = 900});
    desktop.run(400ms);
    EXPECT_EQ(window.height(), 900) << "its application may still be placing it";
    desktop.run(200ms);
    EXPECT_EQ(window.height(), 900 - kBarHeight);
    EXPECT_EQ(desktop.frameWrites(window), 1) << "our own echo must not start a second write";

    desktop.delegate().clampingBlacklist()->add("com.example.editor");
    desktop.run({});
    EXPECT_EQ(window.height(), 900);
    desktop.run(10s);  // what the program does once after its start is over
    const size_t timers = desktop.mainLoop().armedTimers();
    desktop.run(10s);
    EXPECT_EQ(desktop.mainLoop().armedTimers(), timers);
}

TEST(ReserveSpace, FollowsTheBarAndTheDisplays) {
    ClampedDesktop desktop({{DisplayID{1}, "Low", {0, 0, 1440, 900}}, {DisplayID{2}, "High", {1440, 300, 1280, 1024}}});
    auto& window = desktop.openClamped({100, 0, 600, 900});
    auto& second = desktop.openClamped({1500, -300, 600, 900});  // its lower end is its display's
    EXPECT_EQ(window.frame(), (Frame{100, 0, 600, 856}));
    EXPECT_EQ(second.frame(), (Frame{1500, -300, 600, 856}));
    desktop.settings().compactAtTop.set(false);
    desktop.settings().barHeight.set(1000);  // allowed are 64
    desktop.run({});
    EXPECT_EQ(window.frame(), (Frame{100, 0, 600, 836})) << "also a window that was shrunk before";
    EXPECT_EQ(desktop.frameWrites(window), 2) << "the height that is not allowed shrinks nothing";
    desktop.settings().barEdge.set(MorvelEdge::Top);
    desktop.run({});
    EXPECT_EQ(window.frame(), (Frame{100, 64, 600, 772}));
    desktop.settings().clampWindows.set(false);
    desktop.settings().compactAtTop.set(true);
    desktop.run({});
    desktop.settings().clampWindows.set(true);
    desktop.run({});
    EXPECT_EQ(window.frame(), (Frame{100, 0, 600, 900})) << "beside the menu bar nothing is reserved";

    desktop.settings().barEdge.set(MorvelEdge::Bottom);
    desktop.run({});
    desktop.rearrange(sim::oneDisplay(1440, 700));
    desktop.run(100ms);
    EXPECT_EQ(window.frame(), (Frame{100, 0, 600, 836})) << "while displays change nothing is moved";
    desktop.run(1s);
    EXPECT_EQ(window.frame(), (Frame{100, 0, 600, 636}));
    const std::vector<sim::DisplaySpec> withoutExtent{{DisplayID{1}, "Nothing", {0, 0, 0, 0}, 0}};
    for (const auto& none : {std::vector<sim::DisplaySpec>{}, withoutExtent}) {
        desktop.rearrange(none);
        window.setFrame({100, 0, 600, 700.0 + double(none.size())});
        desktop.run(1s);
        EXPECT_EQ(window.height(), 700.0 + double(none.size())) << "without displays there is no strip";
    }
}

TEST(ReserveSpace, WaitsWhileAButtonIsHeldOrNobodyIsThere) {
    ClampedDesktop desktop;
    auto& window = desktop.openClamped({100, 100, 600, 400});
    const size_t timersAtRest = desktop.mainLoop().armedTimers();
    desktop.isButtonHeld = true;
    for (int i = 0; i < 50; ++i) {
        window.setFrame({100, 500.0 + i, 600, 400});
        desktop.run(20ms);
    }
    EXPECT_EQ(desktop.frameWrites(window), 0) << "a window in somebody's hand";
    desktop.isButtonHeld = false;
    desktop.run(100ms);
    EXPECT_EQ(window.frame(), (Frame{100, 549, 600, 307}));
    EXPECT_EQ(desktop.mainLoop().armedTimers(), timersAtRest);

    desktop.isButtonHeld = true;
    desktop.blacklist().add("com.example.editor");
    desktop.run(1s);
    EXPECT_EQ(desktop.frameWrites(window), 1);
    desktop.isButtonHeld = false;
    desktop.run(100ms);
    EXPECT_EQ(window.height(), 400) << "given back once the button is released";
    desktop.blacklist().remove("com.example.editor");
    desktop.run({});

    desktop.workspace().sessionActive = false;
    window.setFrame(kTall);
    desktop.run(1min);
    EXPECT_EQ(window.frame(), kTall);
    desktop.workspace().sessionActive = true;
    desktop.workspace().sessionActivated.emit();
    desktop.run({});
    EXPECT_EQ(window.frame(), kClear);
    desktop.settings().autoHide.set(true);
    desktop.run({});
    EXPECT_EQ(window.frame(), (Frame{100, 549, 600, 400})) << "a bar that hides itself leaves its strip to the windows";
}

TEST(ReserveSpace, AProgramThatInsistsWins) {
    ClampedDesktop desktop;
    auto& window = desktop.openClamped();
    for (int i = 0; i < 20; ++i) {
        window.setFrame(kTall);
        desktop.run(400ms);
    }
    EXPECT_EQ(window.frame(), kTall);
    EXPECT_LE(desktop.frameWrites(window), 4) << "it took our frame each time, and took it back";

    auto& drifting = desktop.open(kTall);
    double drift = 0;
    drifting.placement = [&](const Frame&, const Frame& wanted) {
        return Frame{wanted.x + ++drift, wanted.y, wanted.width, 795};
    };
    desktop.run(1min);
    EXPECT_LE(desktop.frameWrites(drifting), 6) << "it is somewhere else after each of our writes";
    drifting.placement = nullptr;
    drifting.setFrame({150, 150, 600, 750});
    desktop.run({});
    EXPECT_EQ(drifting.height(), 706) << "it has moved by itself";

    // A person zooming a window to and fro is no such program.
    auto& zoomed = desktop.openClamped({50, 50, 600, 850});
    for (int i = 0; i < 10; ++i) {
        zoomed.setFrame({300, 300, 400, 300});
        desktop.run(1s);
        zoomed.setFrame({50, 50, 600, 850});
        desktop.run(1s);
        EXPECT_EQ(zoomed.height(), 806) << i;
    }
}

TEST(ReserveSpace, LeavesAloneWhatIsNoneOfItsBusiness) {
    ClampedDesktop desktop;
    auto& inside = desktop.openClamped({100, 870, 300, 30});
    auto& nowhere = desktop.openClamped({std::nan(""), 0, 1e300, 900});
    auto& huge = desktop.openClamped({-1e300, -1e300, 2e300, 1e300});
    desktop.launch("Windowless");
    auto& closing = desktop.open(kTall);
    desktop.run(100ms);
    closing.close();
    desktop.run(5s);
    for (const auto* window : {&inside, &nowhere, &huge, &closing})
        EXPECT_EQ(desktop.frameWrites(*window), 0) << window->frame().x;
    auto& first = desktop.open(kTall);
    auto& second = desktop.open(kTall);
    desktop.run(100ms);
    desktop.editor().hang();
    const int calls = desktop.accessibility().calls(desktop.editor().pid());
    desktop.run(600ms);
    EXPECT_LE(desktop.accessibility().calls(desktop.editor().pid()), calls + 2) << "it hangs; each question is dear";
    EXPECT_EQ(first.frame(), second.frame());
}

TEST(ClampingBlacklist, KeepsTheTextsOfWhatIsStored) {
    sim::FakeDefaults defaults;
    defaults.values["clampingBlacklist"] = {
        DefaultsArray{{std::string("com.a")}, {int64_t{3}}, {std::string("com.b")}}};
    ClampingBlacklist list(defaults);
    EXPECT_TRUE(list.contains("com.a") && list.contains("com.b") && !list.contains("com.c"));
    list.add("com.c");
    list.remove("com.a");
    EXPECT_EQ(ClampingBlacklist(defaults).bundleIDs().value(), (std::set<std::string>{"com.b", "com.c"}));
    defaults.values["clampingBlacklist"] = {std::string("com.a")};
    EXPECT_TRUE(ClampingBlacklist(defaults).bundleIDs().value().empty()) << "no list at all";
}

}  // namespace
}  // namespace morvel
