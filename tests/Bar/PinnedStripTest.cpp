// Pinned items on the bar as a person uses them, and drags of them that go wrong.
#include "App/BarDesktop.h"
#include "Bar/Drag/DragHighlightView.h"
#include "Bar/Drag/DragPlaceholderButton.h"
#include "Bar/Drag/RunningWindowDrag.h"
#include "Bar/Pinned/PinnedItemDrag.h"
#include "Bar/Pinned/PinnedOverflowRow.h"
#include "Pinned/PinnedItemsCoding.h"
#include "sim/SimDrags.h"

namespace morvel {
namespace {

using sim::imageName;
using sim::SimPasteboard;
using ui::DragOperation;
using Texts = std::vector<std::string>;

class PinnedDesktop : public BarDesktop {
public:
    using BarDesktop::BarDesktop;

    sim::SimDrags& drags() { return toolkit().drags(); }
    PinnedAppsStore& store() { return *delegate().pinnedStore(); }
    /// Stores a folder for each letter, named by it.
    void remember(const std::string& letters) {
        std::vector<PinnedItem> items;
        for (const char c : letters) items.push_back(PinnedItem::folder("/" + std::string(1, c), std::string(1, c)));
        defaults().values["pinnedApps"] = {*PinnedItemsCoding::encode(items)};
    }
    /// From left to right: items by name, running ones with a dot, the overflow button as "^", other views as "#".
    std::string pins(size_t screen = 0) {
        std::string text;
        for (const ui::View* view : launchStrip(screen).arrangedSubviews()) {
            const auto* button = dynamic_cast<const PinnedAppButton*>(view);
            if (button) text += button->pinnedItem().displayName + (button->runningDot().isHidden() ? "" : ".");
            else text += dynamic_cast<const PinnedOverflowButton*>(view) ? "^" : "#";
        }
        return text;
    }
    PinnedStackView& launchStrip(size_t screen = 0) { return *all<PinnedStackView>(bar(screen)).at(0); }
    PinnedAppButton& pin(const std::string& name, size_t screen = 0) {
        for (PinnedAppButton* button : all<PinnedAppButton>(bar(screen)))
            if (button->pinnedItem().displayName == name) return *button;
        throw std::runtime_error("no pin " + name + " among: " + pins(screen));
    }
    PinnedOverflowButton& overflowButton() { return *all<PinnedOverflowButton>(bar()).at(0); }
    std::vector<PinnedOverflowRow*> rowViews() {
        sim::SimPopover* popover = toolkit().shownPopover();
        return popover ? all<PinnedOverflowRow>(popover->surface.root()) : std::vector<PinnedOverflowRow*>{};
    }
    std::string rows() {
        std::string text;
        for (const PinnedOverflowRow* row : rowViews()) text += row->pinnedItem().displayName;
        return text;
    }
    PinnedOverflowRow& row(size_t index) { return *rowViews().at(index); }
    int placeholders(size_t screen = 0) { return int(all<DragPlaceholderButton>(bar(screen)).size()); }
    bool isHighlighted(size_t screen = 0) {
        const auto views = all<DragHighlightView>(bar(screen));
        return !views.empty() && !views[0]->isHidden();
    }
    std::string order() {
        std::string text;
        for (const PinnedItem& item : store().pinnedItems().value()) text += item.displayName;
        return text;
    }
    int held = 0;  // how many more times the bar was asked to stay shown than it was let go
    void countHolds() {
        auto& view = static_cast<MorvelView&>(bar());
        view.pinReveal = [this] { ++held; };
        view.unpinReveal = [this] { --held; };
    }
};

TEST(PinnedStrip, WhatIsPinnedFromAMenuIsThereAfterARestart) {
    PinnedDesktop desktop;
    auto& editor = desktop.launch("Editor");
    auto& window = editor.open({.title = "Notes"});
    auto& mail = desktop.launch("Mail");
    desktop.launch("Bare", {.hasBundle = false}).open({.title = "bare"});
    desktop.startMorvel();
    desktop.countHolds();
    ASSERT_EQ(desktop.strip(), "bare Notes [Mail]");
    const double runningX = desktop.button("Notes").boundsInRoot().x;
    desktop.rightClick(desktop.button("Notes"));
    desktop.choose({"Pin App to Morvel"});
    EXPECT_EQ(desktop.pins(), "Editor.");
    EXPECT_GT(desktop.button("Notes").boundsInRoot().x, runningX) << "the windows make room";
    desktop.rightClick(desktop.button("bare"));
    EXPECT_FALSE(desktop.toolkit().canChoose("Pin App to Morvel")) << "it could not be found again";
    desktop.toolkit().dismissMenu();
    desktop.rightClick(desktop.button("Mail"));
    desktop.choose({"Pin App to Morvel"});
    EXPECT_EQ(desktop.strip(), "bare Notes") << "a pinned application needs no tile";
    EXPECT_EQ(desktop.pins(), "Editor.Mail.");
    EXPECT_EQ(desktop.pin("Editor").tooltip(), "Editor");

    window.close();
    editor.quit();
    desktop.settle();
    EXPECT_EQ(desktop.pins(), "EditorMail.");
    desktop.quitMorvel();
    mail.quit();
    desktop.startMorvel();
    EXPECT_EQ(desktop.pins(), "EditorMail");
    EXPECT_EQ(imageName(desktop.pin("Editor").iconView().image()), "baked:app:com.example.editor");

    desktop.launch("Mail").open({.title = "Inbox"});
    desktop.settle();
    EXPECT_EQ(desktop.pins(), "EditorMail.");
    desktop.countHolds();
    desktop.rightClick(desktop.pin("Editor"));
    EXPECT_EQ(desktop.toolkit().menuTitles(), (Texts{"Unpin from Morvel", "Launch New Instance", "-", "Show in Finder"}));
    EXPECT_EQ(desktop.held, 1);
    desktop.choose({"Show in Finder"});
    EXPECT_EQ(desktop.journal().texts().back(), "reveal /Applications/Editor.app");
    desktop.rightClick(desktop.pin("Editor"));
    desktop.choose({"Unpin from Morvel"});
    EXPECT_EQ(desktop.pins(), "Mail.");
    EXPECT_EQ(desktop.held, 0);
}

TEST(PinnedStrip, AFolderHasNoDotAndNoInstances) {
    PinnedDesktop desktop;
    desktop.remember("a");
    desktop.launch("a", {.bundleID = "/a"}).open();
    desktop.startMorvel();
    EXPECT_EQ(desktop.pins(), "a");
    EXPECT_EQ(imageName(desktop.pin("a").iconView().image()), "file:/a");
    desktop.rightClick(desktop.pin("a"));
    EXPECT_EQ(desktop.toolkit().menuTitles(), (Texts{"Unpin from Morvel", "-", "Show in Finder"}));
    desktop.choose({"Show in Finder"});
    EXPECT_EQ(desktop.journal().texts().back(), "reveal /a");
}

TEST(PinnedStrip, FollowsItsSettingsAndKeepsItsButtons) {
    PinnedDesktop desktop;
    desktop.remember("abc");
    desktop.startMorvel();
    PinnedAppButton& a = desktop.pin("a");
    desktop.settings().showButtonBorders.set(false);
    EXPECT_EQ(a.borderWidth(), 0);
    desktop.settings().showButtonBorders.set(true);
    EXPECT_EQ(a.borderWidth(), 0.5);
    desktop.settings().accentColorCustom.set("112233FF");
    desktop.settings().accentColorMode.set(AccentColorMode::Custom);
    EXPECT_EQ(a.runningDot().background(), ui::customColor({0x11 / 255.0, 0x22 / 255.0, 0x33 / 255.0, 1}));
    desktop.toolkit().moveTo(a);
    const ui::Color hovered = a.background();
    desktop.settings().pinnedMaxVisible.set(1);
    EXPECT_EQ(desktop.pins(), "a^");
    EXPECT_EQ(&desktop.pin("a"), &a);
    EXPECT_EQ(a.background(), hovered);
    desktop.settings().pinnedMaxVisible.set(0);
    EXPECT_EQ(desktop.pins(), "^");
    desktop.settings().pinnedMaxVisible.set(3);
    EXPECT_EQ(desktop.pins(), "abc");
    desktop.settings().barEdge.set(MorvelEdge::Top);
    desktop.settings().pinnedMaxVisible.set(2);
    desktop.settle();
    EXPECT_EQ(imageName(desktop.overflowButton().iconView().image()), "symbol:chevron.down");
}

TEST(PinnedDrag, ReordersOnEveryBarAndIsNoClick) {
    PinnedDesktop desktop(sim::twoDisplays());
    desktop.remember("abc");
    desktop.startMorvel();
    PinnedAppButton& a = desktop.pin("a");
    desktop.drags().pull(a);
    EXPECT_EQ(a.alpha(), 0.3);
    EXPECT_EQ(desktop.drags().over(desktop.pin("c"), 10), DragOperation::Move);
    EXPECT_EQ(desktop.pins(), "bca");
    EXPECT_FALSE(desktop.isHighlighted()) << "it is at home";
    desktop.drags().away();
    EXPECT_EQ(desktop.pins(), "abc");
    desktop.run(1s);
    desktop.drags().over(desktop.pin("b"), 10);
    EXPECT_EQ(desktop.drags().drop(), DragOperation::Move);
    desktop.run(1s);
    EXPECT_EQ(a.alpha(), 1);
    EXPECT_EQ(desktop.pins(0), "bac");
    EXPECT_EQ(desktop.pins(1), "bac");

    desktop.drags().pull(desktop.pin("b", 0));
    EXPECT_EQ(desktop.drags().over(desktop.pin("c", 1), 10), DragOperation::Move);
    EXPECT_EQ(desktop.pins(1), "acb") << "one list, so its own button on the other bar moves";
    EXPECT_EQ(desktop.placeholders(1), 0);
    EXPECT_EQ(desktop.drags().drop(), DragOperation::Move);
    EXPECT_EQ(desktop.pins(0), "acb");

    desktop.drags().pull(desktop.pin("a", 0));
    desktop.drags().over(desktop.pin("b", 1), 10);
    desktop.unplug(DisplayID{2});
    desktop.run(10s);
    EXPECT_EQ(desktop.drags().drop(), DragOperation::None) << "the bar under the drag is gone with its display";
    desktop.run(1s);
    EXPECT_EQ(desktop.pins(0), "acb");
    EXPECT_EQ(desktop.pin("a").alpha(), 1);
}

TEST(PinnedDrag, DroppedFilesArePinnedWhereTheyFall) {
    PinnedDesktop desktop;
    desktop.installedApplications().install("com.edit", "Edit");
    desktop.remember("ab");
    desktop.launch("Notes").open({.title = "n"});
    desktop.startMorvel();
    desktop.settings().pinnedMaxVisible.set(10);
    desktop.countHolds();
    SimPasteboard files = SimPasteboard::ofFile("/x/z");
    files.files.push_back("/Applications/Edit.app");
    desktop.drags().bring(files);
    EXPECT_EQ(desktop.drags().over(desktop.pin("b"), -5), DragOperation::Copy);
    EXPECT_TRUE(desktop.isHighlighted());
    EXPECT_EQ(desktop.drags().drop(), DragOperation::Copy);
    EXPECT_EQ(desktop.pins(), "azEditb") << "on a button: beside it, and nothing happens to its item";
    desktop.drags().bring(SimPasteboard::ofFile("/y"));
    EXPECT_EQ(desktop.drags().over(desktop.bar()), DragOperation::Copy);
    desktop.drags().drop();
    EXPECT_EQ(desktop.pins(), "azEditby") << "on the bar: behind the others";
    desktop.drags().bring(SimPasteboard::ofFile("/y"));
    desktop.drags().over(desktop.pin("a"), -10);
    desktop.drags().drop();
    EXPECT_EQ(desktop.pins(), "yazEditb") << "what is pinned already moves";
    desktop.drags().bring(SimPasteboard::ofFile("/w"));
    EXPECT_EQ(desktop.drags().over(desktop.button("n")), DragOperation::None) << "a window takes what is dropped on it";
    desktop.drags().drop();
    SimPasteboard empty = SimPasteboard::ofFile("/w");
    empty.files.clear();
    desktop.drags().bring(empty);
    desktop.drags().over(desktop.pin("a"));
    EXPECT_EQ(desktop.drags().drop(), DragOperation::None) << "it promised files and has none";
    desktop.run(1s);
    EXPECT_EQ(desktop.pins(), "yazEditb");
    EXPECT_FALSE(desktop.isHighlighted());
    EXPECT_EQ(desktop.held, 0);
}

TEST(PinnedDrag, ARunningApplicationIsPinnedInTheSlot) {
    PinnedDesktop desktop;
    desktop.remember("ab");
    auto& window = desktop.launch("Editor").open({.title = "Notes"});
    desktop.launch("Bare", {.hasBundle = false}).open({.title = "bare"});
    desktop.startMorvel();
    desktop.drags().pull(desktop.button("Notes"));
    EXPECT_EQ(desktop.drags().over(desktop.pin("b"), -8), DragOperation::Move);
    EXPECT_EQ(desktop.pins(), "a#b");
    desktop.drags().away();
    EXPECT_EQ(desktop.pins(), "ab");
    desktop.drags().over(desktop.pin("b"), -8);
    EXPECT_EQ(desktop.drags().drop(), DragOperation::Move);
    desktop.run(1s);
    EXPECT_EQ(desktop.pins(), "aEditor.b");
    EXPECT_EQ(desktop.strip(), "bare Notes") << "its window stays where it is";
    desktop.drags().pull(desktop.button("bare"));
    EXPECT_EQ(desktop.drags().over(desktop.pin("a")), DragOperation::None);
    desktop.drags().drop();
    desktop.drags().pull(desktop.button("Notes"));
    EXPECT_EQ(desktop.drags().over(desktop.pin("a"), -8), DragOperation::Move) << "pinned already, it is moved";
    EXPECT_EQ(desktop.pins(), "Editor.ab");
    window.close();
    desktop.settle();
    desktop.drags().drop();
    desktop.run(1s);
    EXPECT_EQ(desktop.pins(), "aEditor.b") << "the window that was dragged has closed";
    EXPECT_EQ(desktop.placeholders(), 0);
}

TEST(PinnedDrag, BadDragsLeaveNothingBehind) {
    PinnedDesktop desktop;
    desktop.remember("abcd");
    desktop.startMorvel();
    desktop.countHolds();
    for (const std::string text : {"folder:/nowhere", "", "\xFF"}) {
        desktop.drags().bring(SimPasteboard::ofText(PinnedItemDrag::type(), text));
        EXPECT_EQ(desktop.drags().over(desktop.pin("a")), DragOperation::None) << text;
        EXPECT_EQ(desktop.drags().drop(), DragOperation::None) << text;
        desktop.drags().bring(SimPasteboard::ofText(PinnedItemDrag::type(), text));
        desktop.drags().over(desktop.overflowButton());
        EXPECT_EQ(desktop.drags().drop(), DragOperation::None) << text;
    }
    EXPECT_EQ(desktop.pins(), "abc^");

    desktop.drags().pull(desktop.pin("a"));
    desktop.drags().over(desktop.pin("b"), 10);
    desktop.store().unpin("folder:/a");
    EXPECT_EQ(desktop.pins(), "bcd") << "unpinned while it is dragged";
    desktop.drags().over(desktop.pin("c"), 10);
    EXPECT_EQ(desktop.drags().drop(), DragOperation::None);
    desktop.run(1s);
    EXPECT_EQ(desktop.order(), "bcd");

    desktop.drags().pull(desktop.pin("b"));
    desktop.drags().over(desktop.pin("c"), 10);
    desktop.store().pinFolder("/e", "e");
    EXPECT_EQ(desktop.pins(), "cbd^") << "a change leaves the dragged button under the hand";
    desktop.drags().cancel();
    desktop.run(1s);
    EXPECT_EQ(desktop.pins(), "bcd^");
    desktop.drags().refuses = true;
    desktop.toolkit().press(desktop.pin("b"));
    desktop.toolkit().drag({200, 20});
    desktop.toolkit().release();
    EXPECT_EQ(desktop.pin("b").alpha(), 1) << "a drag that cannot be started";
    EXPECT_EQ(desktop.held, 0);
}

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
    desktop.choose({"Unpin from Morvel"});
    EXPECT_EQ(desktop.rows(), "e");
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

TEST(PinnedOverflow, DragsGoIntoTheListOutOfItAndWithinIt) {
    PinnedDesktop desktop;
    desktop.remember("abcdef");
    desktop.startMorvel();
    desktop.countHolds();
    desktop.drags().pull(desktop.pin("a"));
    EXPECT_EQ(desktop.drags().over(desktop.overflowButton()), DragOperation::Move);
    EXPECT_EQ(desktop.drags().drop(), DragOperation::Move);
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
    desktop.drags().over(desktop.row(0));
    desktop.drags().drop();
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
    EXPECT_EQ(desktop.held, 0);
}

TEST(PinnedOverflow, ThousandsOfItemsAreNoBurden) {
    PinnedDesktop desktop;
    std::vector<PinnedItem> items;
    for (int i = 0; i < 5000; ++i) items.push_back(PinnedItem::folder("/" + std::to_string(i), std::to_string(i)));
    desktop.defaults().values["pinnedApps"] = {*PinnedItemsCoding::encode(items)};
    desktop.startMorvel();
    desktop.click(desktop.overflowButton());
    ASSERT_EQ(desktop.rowViews().size(), PinnedOverflowList::kMaxRows);
    EXPECT_EQ(desktop.row(0).pinnedItem().displayName, "3");
    desktop.toolkit().turnWheel(desktop.row(0), 2);
    EXPECT_EQ(desktop.row(0).pinnedItem().displayName, "9");
    desktop.toolkit().turnWheel(desktop.row(0), 1e9);
    EXPECT_EQ(desktop.row(11).pinnedItem().displayName, "4999");
    desktop.drags().pull(desktop.row(11));
    desktop.drags().over(desktop.row(0));
    desktop.drags().drop();
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
