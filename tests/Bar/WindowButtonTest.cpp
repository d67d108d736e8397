// One window's button: what a person sees of it, presses on it, and chooses from its menu.
#include "Bar/Buttons/WindowButton.h"

#include <gtest/gtest.h>

#include "Bar/ButtonWorld.h"

namespace morvel {
namespace {

using ui::ViewChange;
using Calls = std::vector<std::string>;

/// A bar with one button, and the settings that the button asks for.
struct WindowButtonWorld : sim::ButtonWorld {
    std::optional<double> width = 150;
    bool borders = false;
    ActiveButtonStyle style = ActiveButtonStyle::Pill;
    MorvelEdge edge = MorvelEdge::Bottom;
    std::vector<OtherScreen> screens;
    Calls calls;

    ui::View bar;
    sim::Surface surface{bar};
    std::unique_ptr<WindowButton> button;

    WindowSnapshot window(const std::string& title) {
        WindowSnapshot snapshot;
        snapshot.id = {0, 1};
        snapshot.pid = ProcessID{10};
        snapshot.bundleID = "mail";
        snapshot.appName = "Mail";
        snapshot.title = title;
        return snapshot;
    }

    WindowButton& show(const WindowSnapshot& snapshot, bool iconOnly = false) {
        button = std::make_unique<WindowButton>(services(), snapshot, iconOnly, bindings());
        bar.setFrame({0, 0, 600, 32});
        bar.addSubview(*button);
        layout();
        return *button;
    }

    void layout() {
        const Size size = button->intrinsicSize();
        button->setFrame({100, 0, size.width, size.height});
        surface.layout();
        surface.changes.clear();
        surface.layoutRequests = 0;
    }

    WindowButtonBindings bindings() {
        WindowButtonBindings b;
        b.onClick = [this] { calls.push_back("click"); };
        b.onClose = [this] { calls.push_back("close"); };
        b.onPin = [this] { calls.push_back("pin"); };
        b.onMoveTo = [this](DisplayID display) { calls.push_back("move " + std::to_string(display.value)); };
        b.app = commands.actions();
        b.otherScreensProvider = [this] { return screens; };
        b.widthProvider = [this] { return width; };
        b.bordersProvider = [this] { return borders; };
        b.activeStyleProvider = [this] { return style; };
        b.accentProvider = [] { return ui::kControlAccentColor; };
        b.barEdgeProvider = [this] { return edge; };
        b.reveal = {[this] { ++pins; }, [this] { --pins; }};
        return b;
    }

    std::vector<ViewChange> changesOf(const ui::View& view) {
        std::vector<ViewChange> list;
        for (const auto& [changed, change] : surface.changes)
            if (changed == &view) list.push_back(change);
        return list;
    }
};

TEST(WindowButton, ATitleTouchesOnlyTheLabelAndTheTexts) {
    WindowButtonWorld world;
    WindowButton& button = world.show(world.window("Inbox"));
    const int measured = world.toolkit.measurements;

    button.update(world.window("Inbox"));
    EXPECT_TRUE(world.surface.changes.empty()) << "nothing changed";

    button.update(world.window("Drafts"));
    EXPECT_EQ(button.titleLabel().text(), "Drafts");
    EXPECT_EQ(world.changesOf(button.titleLabel()), std::vector{ViewChange::Content});
    EXPECT_EQ(world.changesOf(button), (std::vector{ViewChange::Texts, ViewChange::Texts}));
    EXPECT_EQ(world.surface.changes.size(), 3u);
    EXPECT_EQ(world.surface.layoutRequests, 0);
    EXPECT_EQ(world.toolkit.measurements, measured) << "the width does not depend on the title";
}

TEST(WindowButton, AFreeWidthFollowsTheTitleWithinItsBounds) {
    WindowButtonWorld world;
    world.width.reset();
    WindowButton& button = world.show(world.window("i"));
    EXPECT_EQ(button.intrinsicSize(), (Size{80, 32}));
    button.update(world.window("a longer title"));
    EXPECT_EQ(button.intrinsicSize().width, 14 * 6 + 38);
    EXPECT_GT(world.surface.layoutRequests, 0);

    button.update(world.window(std::string(100, 'x')));
    EXPECT_EQ(button.intrinsicSize().width, 220);
    world.layout();
    button.update(world.window(std::string(101, 'x')));
    EXPECT_EQ(world.surface.layoutRequests, 0) << "as wide as before: the bar stays as it is";

    world.width = 60;
    button.applyWidthConstraint();
    EXPECT_EQ(button.intrinsicSize().width, 60);
    button.setIconOnly(true);
    EXPECT_EQ(button.intrinsicSize().width, 36);
}

TEST(WindowButton, PlacesItsPartsInBothModes) {
    WindowButtonWorld world;
    world.style = ActiveButtonStyle::Underline;
    WindowButton& button = world.show(world.window("Inbox"));
    button.setActive(true);
    world.layout();
    using Frame = Rect<ViewSpace>;
    const auto& parts = button.subviews();  // icon, title, underline, badge
    EXPECT_EQ(parts[0]->frame(), (Frame{6, 7, 18, 18}));
    EXPECT_EQ(parts[1]->frame(), (Frame{30, 8.5, 150 - 30 - 8, 15}));
    EXPECT_EQ(parts[2]->frame(), (Frame{0, 30, 150, 2})) << "towards the screen edge";
    EXPECT_EQ(parts[3]->frame(), (Frame{14, 15, 12, 12}));
    EXPECT_TRUE(parts[3]->isHidden());
    button.setNowPlaying(true);
    EXPECT_FALSE(parts[3]->isHidden());

    world.edge = MorvelEdge::Top;
    button.applyAppearance();
    EXPECT_EQ(parts[2]->frame(), (Frame{0, 0, 150, 2}));
    button.setActive(false);
    EXPECT_TRUE(parts[2]->isHidden());

    button.setIconOnly(true);
    world.layout();
    EXPECT_EQ(parts[0]->frame(), (Frame{9, 7, 18, 18}));
    EXPECT_TRUE(parts[1]->isHidden());
    button.setIconOnly(false);
    world.layout();
    EXPECT_FALSE(parts[1]->isHidden());
    EXPECT_EQ(parts[1]->frame().width, 112);
}

TEST(WindowButton, HoverAndSettingsRestyleIt) {
    WindowButtonWorld world;
    WindowButton& button = world.show(world.window("Inbox"));
    EXPECT_TRUE(button.background().isClear());
    world.surface.move(button);
    EXPECT_EQ(button.background(), ui::kLabelColor.withAlpha(0.18));
    button.setActive(true);
    EXPECT_EQ(button.background(), ui::kControlAccentColor.withAlpha(0.3));
    world.surface.move(button, 300);
    EXPECT_EQ(button.background(), ui::kControlAccentColor.withAlpha(0.2));
    world.borders = true;
    button.applyAppearance();
    EXPECT_EQ(button.borderWidth(), 0.5);
    WindowSnapshot placeholder = world.window("");
    placeholder.isWindowless = true;
    button.update(placeholder);
    EXPECT_EQ(button.alpha(), 0.6);
    EXPECT_EQ(button.tooltip(), "Mail — no window open");
}

TEST(WindowButton, ClicksOnReleaseUnlessItWasDragged) {
    WindowButtonWorld world;
    WindowButton& button = world.show(world.window("Inbox"));
    world.surface.press(button);
    EXPECT_TRUE(world.calls.empty()) << "a press alone does nothing";
    world.surface.move(button, 4);
    world.surface.release(button, 4);
    EXPECT_EQ(world.calls, Calls{"click"});

    world.surface.press(button);
    world.surface.move(button, 4.01);
    world.surface.move(button);
    world.surface.release(button);
    EXPECT_EQ(world.calls, Calls{"click"}) << "a drag does not click, though nobody took it";
    EXPECT_EQ(button.alpha(), 1) << "nor does the button stay dimmed";

    world.surface.press(button, ui::MouseButton::Middle);
    world.surface.release(button, 1000, ui::MouseButton::Middle);
    EXPECT_EQ(world.calls, Calls{"click"});
    world.surface.press(button, ui::MouseButton::Middle);
    world.surface.release(button, 0, ui::MouseButton::Middle);
    EXPECT_EQ(world.calls, (Calls{"click", "close"})) << "the middle button closes the window";
}

TEST(WindowButton, MayBeDestroyedByItsOwnClick) {
    WindowButtonWorld world;
    WindowButtonBindings bindings = world.bindings();
    bindings.onClick = [&world] {
        world.button.reset();
        world.calls.push_back("after");
    };
    world.button = std::make_unique<WindowButton>(world.services(), world.window("Inbox"), false, bindings);
    world.bar.setFrame({0, 0, 600, 32});
    world.bar.addSubview(*world.button);
    world.layout();
    world.surface.click(*world.button);
    EXPECT_EQ(world.calls, Calls{"after"});
    EXPECT_TRUE(world.bar.subviews().empty());
}

TEST(WindowButton, MenuOfAWindowOutlivesItsButton) {
    WindowButtonWorld world;
    world.workspace.running[ProcessID{10}] = 1;
    world.screens = {{"Studio", DisplayID{5}}, {"Built-in", DisplayID{6}}};
    for (const char* title : {"Close Window", "Quit Mail", "Pin App to Morvel", "Built-in"}) {
        world.surface.rightClick(world.show(world.window("Inbox")));
        EXPECT_EQ(world.pins, 1) << "the bar stays while its menu is open";
        world.button.reset();
        world.screens.clear();
        EXPECT_TRUE(world.toolkit.choose(title)) << title;
        EXPECT_EQ(world.pins, 0);
        world.screens = {{"Studio", DisplayID{5}}, {"Built-in", DisplayID{6}}};
    }
    EXPECT_EQ(world.calls, (Calls{"close", "pin", "move 6"}));
    EXPECT_EQ(world.workspace.calls, Calls{"terminate 10"});
}

TEST(WindowButton, MenuOfAWindowlessApplicationActsOnTheApplication) {
    WindowButtonWorld world;
    world.workspace.running[ProcessID{10}] = 1;
    WindowSnapshot placeholder = world.window("");
    placeholder.isWindowless = true;
    world.show(placeholder);
    for (const char* title : {"Quit Mail", "Force Quit Mail", "Pin App to Morvel", "Show in Finder"}) {
        world.surface.rightClick(*world.button);
        EXPECT_TRUE(world.toolkit.choose(title)) << title;
    }
    EXPECT_EQ(world.workspace.calls, (Calls{"terminate 10", "force 10", "reveal /Applications/mail"}));
    EXPECT_EQ(world.calls, Calls{"pin"});
    EXPECT_EQ(world.pins, 0);
}

TEST(WindowButton, FetchesAnotherProcessesIcon) {
    WindowButtonWorld world;
    WindowButton& button = world.show(world.window("Inbox"));
    const auto& icon = dynamic_cast<const ui::ImageView&>(*button.subviews()[0]);
    EXPECT_EQ(icon.image(), nullptr);
    world.loop.settle();
    const ui::ImageRef first = icon.image();
    ASSERT_NE(first, nullptr);
    WindowSnapshot other = world.window("Inbox");
    other.bundleID = "notes";
    button.update(other);
    EXPECT_EQ(icon.image(), first) << "no flicker while the new one loads";
    world.loop.settle();
    EXPECT_NE(icon.image(), first);
    button.update(world.window("Inbox"));
    world.button.reset();
    world.loop.settle();  // nothing is delivered to the dead button
}

}  // namespace
}  // namespace morvel
