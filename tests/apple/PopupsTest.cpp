// What opens beside a view or over everything on AppKit: menus, popovers, prompts, and how they close again.
#include "ToolkitFixture.h"
#include "UI/Popover.h"

namespace morvel::mac::checked {
namespace {

class Popups : public BarFixture {};

TEST_F(Popups, MenusAreBuiltShownAndChosenFrom) {
    show({&first});
    Texts done;
    const auto add = [&](std::string text) { return [&done, text] { done.push_back(text); }; };
    const ui::Menu menu = {{.title = "Close Window", .action = add("close")},
                           ui::MenuItem::separator(),
                           {.title = "Unavailable"},
                           {.title = "Move to Display", .submenu = {{.title = "Left", .action = add("left")}}},
                           {.title = "Quit Morvel", .action = add("quit"), .keyEquivalent = "q"}};
    first.onRightClick = [&](const ui::MouseEvent& event) {
        toolkit.popUpMenu(menu, first, event.location, add("closed"));
    };
    whenMenuPopsUp([&](const NSMenu& shown) {
        ASSERT_EQ(shown.items().count(), 5U);
        EXPECT_FALSE(choose(shown, "Unavailable"));
        EXPECT_EQ(textProperty(itemTitled(shown, "Quit Morvel"), "keyEquivalent"), "q");
        EXPECT_TRUE(choose(property<NSMenu>(itemTitled(shown, "Move to Display"), "submenu"), "Left"));
    });
    sendMouse(native(row), "rightMouseDown:", mouseEvent(NSEventTypeRightMouseDown, {10, 20}));
    EXPECT_EQ(std::exchange(done, {}), (Texts{"left", "closed"}));
    EXPECT_EQ(callsOf("NSMenu popUpContextMenu:withEvent:forView:"), 1);

    whenMenuPopsUp([&](const NSMenu&) { first.removeFromParent(); });
    toolkit.popUpMenu(menu, first, {10, 12}, add("closed"));
    EXPECT_EQ(std::exchange(done, {}), Texts{"closed"}) << "without an event, nothing chosen, and the anchor gone";
    EXPECT_EQ(callsOf("NSMenu popUpMenuPositioningItem:atLocation:inView:"), 1);
    toolkit.popUpMenu(menu, first, {10, 12}, add("closed"));
    EXPECT_EQ(done, Texts{"closed"}) << "an anchor that is not shown";
}

TEST_F(Popups, PopoversOpenMoveAndClose) {
    show({&first, &second});
    Row list;
    Button inside(notes, "inside");
    list.addSubview(inside);
    int closings = 0;
    ui::Popover popover(toolkit, list, [&] { ++closings; });
    popover.show(first, ui::Edge::Top, {280, 72});
    ASSERT_TRUE(windowOf(list));
    EXPECT_EQ(native(list).frame().size, (CGSize{280, 72}));
    const Id shown = lastPopover();
    EXPECT_EQ(property<NSUInteger>(shown, "preferredEdge"), NSRectEdgeMaxY);
    EXPECT_EQ(property<NSInteger>(shown, "behavior"), NSPopoverBehaviorApplicationDefined);
    display(native(list));
    click(native(list), {10, 60});
    EXPECT_EQ(told(), (Texts{"inside down 10,12", "inside up 10,12"}));

    popover.show(second, ui::Edge::Bottom, {280, 36});
    EXPECT_EQ(property<Id>(shown, "positioningView"), native(second));
    EXPECT_EQ(property<NSUInteger>(shown, "preferredEdge"), NSRectEdgeMinY);
    popover.resize({280, 108});
    EXPECT_EQ(native(list).frame().size, (CGSize{280, 108}));
    EXPECT_EQ(closings, 0);
    popover.close();
    EXPECT_EQ(closings, 1);
    EXPECT_FALSE(windowOf(list));

    second.removeFromParent();
    popover.show(second, ui::Edge::Top, {280, 36});
    EXPECT_EQ(closings, 1) << "never inside show";
    dispatch().runPending();
    EXPECT_EQ(closings, 2) << "there is no place beside a view that is not shown";
    EXPECT_FALSE(popover.isShown());
    popover.show(first, ui::Edge::Top, {280, 36});
}

TEST_F(Popups, PopoversCloseAtAPressElsewhereAndListsLeaveItToTheirAnchorsWindow) {
    show({&first, &second});
    for (const ui::PopoverKind kind : {ui::PopoverKind::List, ui::PopoverKind::Controls}) {
        const bool isTransient = kind == ui::PopoverKind::Controls;
        Row list;
        int closings = 0;
        const auto closed = [&] { ++closings; };
        ui::Popover popover(toolkit, list, closed, kind);
        popover.show(first, ui::Edge::Top, {280, 72});
        EXPECT_EQ(property<NSInteger>(lastPopover(), "behavior") == NSPopoverBehaviorTransient, isTransient);
        EXPECT_EQ(property<bool>(lastPopover(), "animates"), isTransient);
        click(native(list), {10, 60});
        click(native(row), {45, 16});
        EXPECT_EQ(closings, 0) << "its anchor decides for itself";
        told();
        click(native(row), {145, 16});
        EXPECT_EQ(closings, isTransient ? 1 : 0);
        EXPECT_EQ(told().size(), 2U) << "the press is not lost";
        popover.close();
        EXPECT_EQ(monitorCount(), 0U);
    }
}

TEST_F(Popups, PressesElsewhereAreSeenWhileWatched) {
    int presses = 0;
    Subscription watching;
    watching = toolkit.observeOutsidePresses([&] {
        if (++presses == 4) watching.reset();
    });
    for (const NSUInteger type :
         {NSEventTypeLeftMouseDown, NSEventTypeRightMouseDown, NSEventTypeOtherMouseDown, NSEventTypeLeftMouseUp})
        pressElsewhere(type);
    EXPECT_EQ(presses, 3) << "releases are none";
    pressElsewhere(NSEventTypeLeftMouseDown);
    EXPECT_EQ(monitorCount(), 0U) << "ended from inside the handler";
    pressElsewhere(NSEventTypeLeftMouseDown);
    EXPECT_EQ(presses, 4);
}

TEST_F(Popups, PromptsAreTitledWindowsInFront) {
    int presses = 0;
    std::unique_ptr<ui::PromptPeer> prompt;
    prompt = toolkit.showPrompt({.title = "Morvel — Accessibility Required",
                                 .contentSize = {480, 220},
                                 .text = "Morvel needs…",
                                 .textFrame = {20, 30, 440, 110},
                                 .buttonTitle = "Open System Settings…",
                                 .buttonFrame = {280, 170, 180, 30},
                                 .pressed = [&] {
                                     if (++presses == 2) prompt.reset();
                                 }});
    const Texts inOrder = {"center", "makeKeyAndOrderFront:", "activateIgnoringOtherApps:"};
    EXPECT_EQ(sentOf(inOrder), inOrder);
    const NSWindow window(lastReceiverOf("makeKeyAndOrderFront:"));
    EXPECT_EQ(property<NSUInteger>(window, "styleMask"), 3U);
    EXPECT_EQ(window.frame().size, (CGSize{480, 220}));
    EXPECT_EQ(textProperty(window, "title"), "Morvel — Accessibility Required");
    EXPECT_FALSE(property<bool>(window, "releasedWhenClosed"));
    const auto parts = window.contentView().subviews().elements<NSView>();
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].frame(), (CGRect{{20, 80}, {440, 110}}));
    EXPECT_EQ(parts[1].frame(), (CGRect{{280, 20}, {180, 30}}));
    EXPECT_EQ(textProperty(parts[1], "keyEquivalent"), "\r");
    EXPECT_TRUE(use(parts[1]));
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(use(parts[1]));
    EXPECT_FALSE(window.isVisible()) << "closed from inside its button";
    EXPECT_EQ(presses, 2);
}

}  // namespace
}  // namespace morvel::mac::checked
