// The recording toolkit shows, paints, routes and closes as a host does.
#include <gtest/gtest.h>

#include <memory>

#include "UI/ImageButton.h"
#include "UI/Label.h"
#include "UI/Panel.h"
#include "UI/Popover.h"
#include "UI/StackView.h"
#include "sim/Desktop.h"

namespace morvel {
namespace {

using sim::Desktop;

/// A row of two labels and a button that opens a menu.
struct Bar {
    explicit Bar(Desktop& desktop) : toolkit(desktop.toolkit()) {
        for (ui::View* view : {static_cast<ui::View*>(&first), static_cast<ui::View*>(&second)})
            row.addArrangedSubview(*view);
        first.setText("Ab");
        second.setText("Größe");
        panel.orderFront();
        desktop.settle();
    }

    sim::SimToolkit& toolkit;
    ui::StackView row{ui::StackView::Axis::Horizontal, 4};
    ui::Label first{toolkit};
    ui::Label second{toolkit};
    ui::Panel panel{toolkit, {.frame = {0, 0, 400, 30}}, row};
};

TEST(SimToolkit, LaysOutAndCountsWhatIsPaintedAgain) {
    Desktop desktop;
    Bar bar(desktop);
    EXPECT_TRUE(bar.toolkit.panels().at(0)->isShown);
    EXPECT_EQ(bar.first.frame(), (Rect<ViewSpace>{0, 7.5, 14, 15}));
    EXPECT_EQ(bar.second.frame(), (Rect<ViewSpace>{18, 7.5, 35, 15})) << "seven points for a code point, not a byte";

    sim::SimSurface& surface = bar.toolkit.panels().at(0)->surface;
    surface.clearRepaints();
    bar.first.setText("Abc");
    bar.first.intrinsicSizeChanged();
    desktop.settle();
    EXPECT_EQ(surface.repaints(bar.first).content, 1);
    EXPECT_EQ(surface.repaints(bar.second).content, 0);
    EXPECT_EQ(bar.second.frame().x, 25) << "the row made room in the turn after the change";
}

TEST(SimToolkit, RoutesThePointerToWhatIsUnderIt) {
    Desktop desktop;
    Bar bar(desktop);
    auto button = std::make_unique<ui::ImageButton>();
    int clicks = 0;
    button->onClick = [&] {
        ++clicks;
        button.reset();
    };
    bar.first.addSubview(*button);
    button->setFrame({0, 0, 10, 10});
    desktop.click(*button);
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(button) << "a click may destroy what was clicked";

    ui::ImageButton cancelled;
    cancelled.onClick = [&] { ++clicks; };
    bar.first.addSubview(cancelled);
    cancelled.setFrame({0, 0, 10, 10});
    bar.toolkit.press(cancelled);
    bar.toolkit.drag({300, 20});
    bar.toolkit.release();
    EXPECT_EQ(clicks, 1) << "released elsewhere";
}

TEST(SimDesktop, ADisplayThatGoesHandsItsWindowsOver) {
    Desktop desktop(sim::twoDisplays());
    sim::SimWindow& window = desktop.launch("Editor").open({.x = 1700, .y = 200, .width = 300, .height = 200});
    int changes = 0;
    const auto changed = desktop.screens().observeChanges([&] { ++changes; });
    desktop.unplug(DisplayID{2});
    desktop.settle();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(window.frame(), (Rect<AXSpace>{0, 24, 300, 200})) << "below the menu bar, with its size";
    EXPECT_EQ(desktop.windowServer().spacesOf(window.number()),
              std::vector<SpaceID>{*desktop.currentSpace(DisplayID{1})});
    EXPECT_EQ(desktop.windowServer().windowList(WindowListScope::OnScreen).size(), 1u);
}

TEST(SimToolkit, PopoversAndMenusComeAndGo) {
    Desktop desktop;
    Bar bar(desktop);
    ui::View content;
    int closings = 0;
    ui::Popover popover(bar.toolkit, content, [&] { ++closings; });
    popover.show(bar.first, ui::Edge::Top, {200, 100});
    ASSERT_TRUE(bar.toolkit.shownPopover());
    EXPECT_EQ(bar.toolkit.shownPopover()->anchor, &bar.first);
    EXPECT_TRUE(content.host());
    const auto outside = bar.toolkit.observeOutsidePresses([&] { popover.close(); });
    bar.toolkit.pressOutside();
    EXPECT_EQ(closings, 1);
    EXPECT_FALSE(content.host());

    std::vector<std::string> chosen;
    ui::Menu menu{{.title = "Close", .action = [&] { chosen.push_back("close"); }}, ui::MenuItem::separator()};
    menu.push_back({.title = "Move", .submenu = {{.title = "Right", .action = [&] { chosen.push_back("right"); }}}});
    bar.toolkit.popUpMenu(menu, bar.first, {}, [&] { chosen.push_back("closed"); });
    EXPECT_EQ(bar.toolkit.menuTitles(), (std::vector<std::string>{"Close", "-", "Move"}));
    EXPECT_EQ(bar.toolkit.menuTitles({"Move"}), (std::vector<std::string>{"Right"}));
    desktop.choose({"Move", "Right"});
    EXPECT_EQ(chosen, (std::vector<std::string>{"right", "closed"}));
    EXPECT_FALSE(bar.toolkit.menuTitles());
}

}  // namespace
}  // namespace morvel
