// Pinned items on the bar as a person uses them, and drags of them that go wrong.
#include "Bar/Pinned/PinnedItemDrag.h"
#include "Bar/PinnedDesktop.h"
#include "Launcher/StartButton.h"

namespace morvel {
namespace {

using sim::imageName;
using sim::SimPasteboard;
using ui::DragOperation;
using Texts = std::vector<std::string>;

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
    EXPECT_EQ(desktop.pins(), "EditorMail.");
    desktop.quitMorvel();
    mail.quit();
    desktop.startMorvel();
    EXPECT_EQ(desktop.pins(), "EditorMail");
    EXPECT_EQ(imageName(desktop.pin("Editor").iconView().image()), "baked:app:com.example.editor");

    desktop.launch("Mail").open({.title = "Inbox"});
    EXPECT_EQ(desktop.pins(), "EditorMail.");
    desktop.countHolds();
    desktop.rightClick(desktop.pin("Editor"));
    EXPECT_EQ(desktop.toolkit().menuTitles(),
              (Texts{"Unpin from Morvel", "Launch New Instance", "-", "Show in Finder"}));
    EXPECT_EQ(desktop.held, 1);
    desktop.choose({"Show in Finder"});
    EXPECT_EQ(desktop.journal().texts().back(), "reveal /Applications/Editor.app");
    desktop.rightClick(desktop.pin("Editor"));
    desktop.choose({"Unpin from Morvel"});
    EXPECT_EQ(desktop.pins(), "Mail.");
    EXPECT_EQ(desktop.held, 0);
}

TEST(PinnedStrip, AClickOpensWithoutADragAndAlsoFromTheList) {
    PinnedDesktop desktop;
    desktop.remember("abcd");
    desktop.startMorvel();
    desktop.countHolds();
    const auto opened = [&]() -> std::string {
        desktop.settle();
        const Texts deeds = desktop.journal().texts();
        desktop.journal().clear();
        return deeds.empty() ? "" : deeds.front();
    };
    desktop.store().pinAt(0, {PinnedItem::app("com.example.editor", "Editor")});
    desktop.workspace().installed["com.example.editor"] = "/Applications/Editor.app";
    opened();
    desktop.toolkit().press(desktop.pin("a"));
    const Point<ViewSpace> at = desktop.pin("a").boundsInRoot().center();
    desktop.toolkit().drag({at.x + 3, at.y});
    desktop.toolkit().release();
    EXPECT_EQ(opened(), "openFile /a") << "a hand wobbles";
    desktop.toolkit().press(desktop.pin("a"));
    desktop.toolkit().drag({at.x + 5, at.y});
    desktop.drags().cancel();
    EXPECT_EQ(opened(), "");
    EXPECT_TRUE(desktop.pin("b").accessibilityPress());
    EXPECT_EQ(opened(), "openFile /b");
    desktop.click(desktop.pin("Editor"));
    EXPECT_EQ(opened(), "openApplication /Applications/Editor.app");
    desktop.rightClick(desktop.pin("Editor"));
    desktop.choose({"Launch New Instance"});
    EXPECT_EQ(opened(), "openApplication /Applications/Editor.app new");
    EXPECT_EQ(imageName(desktop.pin("a").iconView().image()), "file:/a");
    desktop.rightClick(desktop.pin("a"));
    EXPECT_EQ(desktop.toolkit().menuTitles(), (Texts{"Unpin from Morvel", "-", "Show in Finder"}));
    desktop.choose({"Show in Finder"});
    EXPECT_EQ(opened(), "reveal /a");

    desktop.click(desktop.overflowButton());
    desktop.click(desktop.row(1));
    EXPECT_EQ(opened(), "openFile /d");
    EXPECT_EQ(desktop.rows(), "") << "the list has done its work";
    desktop.click(desktop.overflowButton());
    desktop.click(desktop.pin("a"));
    EXPECT_EQ(opened(), "openFile /a");
    EXPECT_EQ(desktop.rows(), "");
    EXPECT_EQ(desktop.held, 0);
}

TEST(PinnedStrip, FollowsItsSettingsAndKeepsItsButtons) {
    PinnedDesktop desktop;
    desktop.remember("abc");
    desktop.startMorvel();
    PinnedAppButton& a = desktop.pin("a");
    desktop.settings().showButtonBorders.set(false);
    EXPECT_EQ(a.borderWidth(), 0);
    desktop.settings().accentColorCustom.set("112233FF");
    desktop.settings().accentColorMode.set(AccentColorMode::Custom);
    EXPECT_EQ(a.runningDot().background(), ui::customColor({0x11 / 255.0, 0x22 / 255.0, 0x33 / 255.0, 1}));
    desktop.toolkit().moveTo(a);
    const ui::Color hovered = a.background();
    desktop.settings().pinnedMaxVisible.set(1);
    EXPECT_EQ(desktop.pins(), "a^");
    EXPECT_EQ(&desktop.pin("a"), &a);
    EXPECT_EQ(a.background(), hovered);
    desktop.settings().pinnedMaxVisible.set(3);
    EXPECT_EQ(desktop.pins(), "abc");
    desktop.settings().barEdge.set(MorvelEdge::Top);
    desktop.settings().pinnedMaxVisible.set(2);
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
    EXPECT_EQ(desktop.dropOn(desktop.pin("b"), 10), DragOperation::Move);
    desktop.run(1s);
    EXPECT_EQ(a.alpha(), 1);
    EXPECT_EQ(desktop.pins(0), "bac");
    EXPECT_EQ(desktop.pins(1), "bac");

    desktop.drags().pull(desktop.pin("b", 0));
    EXPECT_EQ(desktop.drags().over(desktop.pin("c", 1), 10), DragOperation::Move);
    EXPECT_EQ(desktop.pins(1), "acb") << "one list, so its own button on the other bar moves";
    EXPECT_EQ(desktop.placeholders(1), 0u);
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
    EXPECT_EQ(desktop.dropOn(desktop.bar()), DragOperation::Copy);
    EXPECT_EQ(desktop.pins(), "azEditby") << "on the bar: behind the others";
    desktop.drags().bring(SimPasteboard::ofFile("/y"));
    desktop.dropOn(desktop.pin("a"), -10);
    EXPECT_EQ(desktop.pins(), "yazEditb") << "what is pinned already moves";
    desktop.drags().bring(SimPasteboard::ofFile("/v"));
    EXPECT_EQ(desktop.dropOn(*desktop.all<StartButton>(desktop.bar()).at(0), 5), DragOperation::Copy);
    EXPECT_EQ(desktop.pins(), "vyazEditb") << "on a button of the system: before the others";
    desktop.store().unpin("folder:/v");
    desktop.drags().bring(SimPasteboard::ofFile("/w"));
    EXPECT_EQ(desktop.dropOn(desktop.button("n")), DragOperation::None) << "a window takes what is dropped on it";
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
    EXPECT_EQ(desktop.dropOn(desktop.pin("b"), -8), DragOperation::Move);
    desktop.run(1s);
    EXPECT_EQ(desktop.pins(), "aEditor.b");
    EXPECT_EQ(desktop.strip(), "bare Notes") << "its window stays where it is";
    desktop.drags().pull(desktop.button("bare"));
    EXPECT_EQ(desktop.dropOn(desktop.pin("a")), DragOperation::None);
    desktop.drags().pull(desktop.button("Notes"));
    EXPECT_EQ(desktop.drags().over(desktop.pin("a"), -8), DragOperation::Move) << "pinned already, it is moved";
    EXPECT_EQ(desktop.pins(), "Editor.ab");
    window.close();
    desktop.settle();
    desktop.drags().drop();
    desktop.run(1s);
    EXPECT_EQ(desktop.pins(), "aEditor.b") << "the window that was dragged has closed";
    EXPECT_EQ(desktop.placeholders(), 0u);
}

TEST(PinnedDrag, BadDragsLeaveNothingBehind) {
    PinnedDesktop desktop;
    desktop.remember("abcd");
    desktop.startMorvel();
    desktop.countHolds();
    for (const std::string text : {"folder:/nowhere", "", "\xFF"}) {
        desktop.drags().bring(SimPasteboard::ofText(PinnedItemDrag::type(), text));
        EXPECT_EQ(desktop.dropOn(desktop.pin("a")), DragOperation::None) << text;
        desktop.drags().bring(SimPasteboard::ofText(PinnedItemDrag::type(), text));
        desktop.drags().over(desktop.overflowButton());
        EXPECT_EQ(desktop.drags().drop(), DragOperation::None) << text;
    }
    EXPECT_EQ(desktop.pins(), "abc^");

    desktop.drags().pull(desktop.pin("a"));
    desktop.drags().over(desktop.pin("b"), 10);
    desktop.store().unpin("folder:/a");
    EXPECT_EQ(desktop.pins(), "bcd") << "unpinned while it is dragged";
    EXPECT_EQ(desktop.dropOn(desktop.pin("c"), 10), DragOperation::None);
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

}  // namespace
}  // namespace morvel
