// The list of pinned items without a place on the bar, and drags into it, out of it and within it.
#include "Bar/PinnedDesktop.h"
#include "Launcher/StartButton.h"

namespace morvel {
namespace {

using ui::DragOperation;
using Texts = std::vector<std::string>;

TEST(PinnedOverflow, ListsWhatHasNoPlaceAndFollowsIt) {
    PinnedDesktop desktop;
    desktop.remember("abcde");
    desktop.startMorvel();
    desktop.countHolds();
    EXPECT_EQ(desktop.pins(), "abc^");
    EXPECT_EQ(desktop.overflowButton().tooltip(), "Show more pinned items");
    desktop.click(desktop.overflowButton());
    EXPECT_EQ(desktop.rows(), "de");
    EXPECT_EQ(desktop.toolkit().shownPopover()->edge, ui::Edge::Top);
    EXPECT_EQ(desktop.held, 1);
    desktop.click(desktop.overflowButton());
    EXPECT_EQ(desktop.rows(), "");
    EXPECT_EQ(desktop.held, 0);
    desktop.click(desktop.overflowButton());
    desktop.rightClick(desktop.row(0));
    EXPECT_EQ(desktop.toolkit().menuTitles(), (Texts{"Unpin from Morvel", "-", "Show in Finder"}));
    EXPECT_EQ(desktop.held, 2) << "the menu may outlast the list";
    desktop.choose({"Unpin from Morvel"});
    EXPECT_EQ(desktop.rows(), "e");
    EXPECT_EQ(desktop.held, 1);
    desktop.settings().pinnedMaxVisible.set(0);
    EXPECT_EQ(desktop.pins(), "^");
    EXPECT_EQ(desktop.rows(), "abce");
    EXPECT_EQ(desktop.toolkit().shownPopover()->size.height, 4 * PinnedOverflowRow::kHeight);
    desktop.toolkit().pressOutside();
    EXPECT_EQ(desktop.rows(), "");
    EXPECT_EQ(desktop.held, 0);
    desktop.click(desktop.overflowButton());
    desktop.settings().pinnedMaxVisible.set(15);
    EXPECT_EQ(desktop.pins(), "abce");
    EXPECT_EQ(desktop.toolkit().shownPopover(), nullptr) << "nothing is left to list";
    EXPECT_EQ(desktop.held, 0);
}

TEST(PinnedOverflow, AClickElsewhereOnTheBarClosesTheListsThere) {
    PinnedDesktop desktop;
    desktop.remember("abcde");
    auto& editor = desktop.launch("Editor");
    editor.open({.title = "Window"});
    desktop.startMorvel();
    desktop.countHolds();
    auto* const startButton = desktop.all<StartButton>(desktop.bar()).at(0);
    for (ui::View* elsewhere :
         {static_cast<ui::View*>(&desktop.button("Window")), static_cast<ui::View*>(startButton)}) {
        desktop.click(desktop.overflowButton());
        ASSERT_EQ(desktop.rows(), "de");
        desktop.click(*elsewhere);
        EXPECT_EQ(desktop.rows(), "") << elsewhere->accessibilityLabel();
    }
    desktop.toolkit().pressOutside();  // the launcher's
    desktop.click(desktop.overflowButton());
    desktop.toolkit().press(desktop.pin("a"));
    EXPECT_EQ(desktop.rows(), "de") << "a press may begin a drag into the list";
    desktop.toolkit().release();
    EXPECT_EQ(desktop.rows(), "");
    EXPECT_EQ(desktop.held, 0);

    desktop.settings().groupingMode.set(GroupingMode::Always);
    editor.open({.title = "Another"});
    desktop.settle();
    const auto isGroupListed = [&] {
        sim::SimPopover* list = desktop.toolkit().shownPopover();
        return list && !desktop.all<GroupRowButton>(list->surface.root()).empty();
    };
    for (ui::View* elsewhere : {static_cast<ui::View*>(&desktop.overflowButton()), static_cast<ui::View*>(startButton),
                                static_cast<ui::View*>(&desktop.pin("a"))}) {
        desktop.click(desktop.group("Editor"));
        ASSERT_TRUE(isGroupListed());
        desktop.click(*elsewhere);
        EXPECT_FALSE(isGroupListed()) << elsewhere->accessibilityLabel();
    }
}

TEST(PinnedOverflow, DragsGoIntoTheListOutOfItAndWithinIt) {
    PinnedDesktop desktop;
    desktop.remember("abcdef");
    desktop.startMorvel();
    desktop.countHolds();
    desktop.drags().pull(desktop.pin("a"));
    EXPECT_EQ(desktop.dropOn(desktop.overflowButton()), DragOperation::Move);
    EXPECT_EQ(desktop.order(), "bcdaef") << "the first that has no place";
    desktop.settle();

    desktop.drags().pull(desktop.pin("b"));
    desktop.drags().over(desktop.overflowButton());
    desktop.run(599ms);
    desktop.drags().over(desktop.overflowButton(), 2);
    EXPECT_EQ(desktop.rows(), "");
    desktop.drags().away();
    desktop.run(1s);
    EXPECT_EQ(desktop.rows(), "") << "it left too early";
    desktop.drags().over(desktop.overflowButton());
    desktop.run(600ms);
    ASSERT_EQ(desktop.rows(), "aef");
    EXPECT_EQ(desktop.drags().over(desktop.row(2), 3), DragOperation::Move);
    EXPECT_EQ(desktop.rows().size(), 4u) << "room for it";
    EXPECT_EQ(desktop.drags().drop(), DragOperation::Move);
    desktop.run(1s);
    EXPECT_EQ(desktop.order().substr(0, 3), "cda");
    EXPECT_NE(desktop.rows().find('b'), std::string::npos) << "it stays where it was dropped, and the list open";

    const std::string before = desktop.rows();
    desktop.drags().pull(desktop.row(0));
    EXPECT_EQ(desktop.drags().over(desktop.pin("c"), -10), DragOperation::Move);
    EXPECT_EQ(desktop.pins(), "#cda^");
    EXPECT_EQ(desktop.drags().drop(), DragOperation::Move);
    desktop.run(1s);
    EXPECT_EQ(desktop.pins(), before.substr(0, 1) + "cd^");
    EXPECT_EQ(desktop.rows(), "a" + before.substr(1));
    const std::string now = desktop.rows();
    desktop.drags().pull(desktop.row(2));
    desktop.dropOn(desktop.row(0));
    desktop.run(1s);
    EXPECT_EQ(desktop.rows().size(), 3u);
    EXPECT_NE(desktop.rows(), now);
    desktop.toolkit().pressOutside();

    desktop.drags().pull(desktop.pin("c"));
    desktop.drags().over(desktop.overflowButton());
    desktop.run(600ms);
    ASSERT_NE(desktop.rows(), "");
    desktop.drags().away();
    desktop.drags().cancel();
    desktop.run(1s);
    EXPECT_EQ(desktop.rows(), "") << "what the drag opened goes with it";

    desktop.drags().pull(desktop.pin("c"));
    desktop.drags().over(desktop.overflowButton());
    desktop.settings().pinnedMaxVisible.set(15);
    desktop.run(1s);
    EXPECT_EQ(desktop.toolkit().shownPopover(), nullptr) << "the button has gone, and the drag rests on nothing";
    desktop.drags().cancel();
    EXPECT_EQ(desktop.held, 0);
}

TEST(PinnedOverflow, ThousandsOfItemsAreNoBurden) {
    PinnedDesktop desktop;
    std::vector<PinnedItem> items;
    for (int i = 0; i < 5000; ++i) items.push_back(PinnedItem::folder("/" + std::to_string(i), std::to_string(i)));
    desktop.defaults().values["pinnedApps"] = {*PinnedItemsCoding::encode(items)};
    desktop.startMorvel();
    desktop.click(desktop.overflowButton());
    ASSERT_EQ(desktop.listed<PinnedOverflowRow>().size(), PinnedOverflowList::kMaxRows);
    EXPECT_EQ(desktop.row(0).pinnedItem().displayName, "3");
    desktop.toolkit().turnWheel(desktop.row(0), 2);
    EXPECT_EQ(desktop.row(0).pinnedItem().displayName, "6") << "seen in part";
    EXPECT_EQ(desktop.listed<PinnedOverflowRow>().size(), PinnedOverflowList::kMaxRows + 1);
    desktop.toolkit().turnWheel(desktop.row(1), -2);
    desktop.settle();
    EXPECT_EQ(desktop.icons().loads["file:/14"], 1) << "what comes into sight again is not read again";
    desktop.toolkit().turnWheel(desktop.row(1), 1e9);
    EXPECT_EQ(desktop.row(11).pinnedItem().displayName, "4999");
    desktop.drags().pull(desktop.row(11));
    desktop.dropOn(desktop.row(0));
    EXPECT_EQ(desktop.store().pinnedItems().value()[4988].displayName, "4999") << "counted among all of them";
    desktop.toolkit().turnWheel(desktop.row(0), std::numeric_limits<double>::quiet_NaN());
    desktop.toolkit().turnWheel(desktop.row(0), -1e9);
    EXPECT_EQ(desktop.row(0).pinnedItem().displayName, "3");
    desktop.drags().pull(desktop.row(0));
    for (int i = 0; i < 40; ++i) {
        desktop.drags().over(desktop.toolkit().shownPopover()->surface.root(), 1);
        desktop.run(100ms);
    }
    desktop.drags().cancel();
    EXPECT_LT(desktop.icons().loads.size(), 100u) << "icons are loaded for what is seen";
}

}  // namespace
}  // namespace morvel
