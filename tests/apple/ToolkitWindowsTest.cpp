// What the AppKit toolkit shows beside panels: menus, popovers and prompts, and the presses that end them.
#include "ToolkitFixture.h"
#include "UI/Popover.h"

namespace morvel::mac::checked {
namespace {

TEST_F(Toolkit, MenusAreBuiltShownAndChosenFrom) {
    row.addSubview(first);
    show();
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
        EXPECT_FALSE(choose(itemTitled(shown, "Unavailable")));
        EXPECT_EQ(textOf(property<RawObject>(itemTitled(shown, "Quit Morvel").raw(), "keyEquivalent")), "q");
        const NSMenu submenu(Id(property<RawObject>(itemTitled(shown, "Move to Display").raw(), "submenu")));
        EXPECT_TRUE(choose(itemTitled(submenu, "Left")));
    });
    runtime().forgetCalls();
    sendMouse(native(row), "rightMouseDown:", mouseEvent(NSEventTypeRightMouseDown, {10, 20}));
    EXPECT_EQ(std::exchange(done, {}), (Texts{"left", "closed"}));
    EXPECT_EQ(std::ranges::count(runtime().callNames(), "NSMenu popUpContextMenu:withEvent:forView:"), 1);

    whenMenuPopsUp([&](const NSMenu&) { row.removeFromParent(), first.removeFromParent(); });
    toolkit.popUpMenu(menu, first, {10, 12}, add("closed"));
    EXPECT_EQ(std::exchange(done, {}), Texts{"closed"}) << "without an event, nothing chosen, and the anchor gone";
    EXPECT_EQ(std::ranges::count(runtime().callNames(), "NSMenu popUpMenuPositioningItem:atLocation:inView:"), 1);
    toolkit.popUpMenu(menu, first, {10, 12}, add("closed"));
    EXPECT_EQ(done, Texts{"closed"}) << "an anchor that is not shown";
}

TEST_F(Toolkit, PopoversOpenMoveAndClose) {
    row.addSubview(first);
    row.addSubview(second);
    show();
    Row list;
    Button inside(notes, "inside");
    list.addSubview(inside);
    int closings = 0;
    ui::Popover popover(toolkit, list, [&] { ++closings; });
    popover.show(first, ui::Edge::Top, {280, 72});
    const RawObject shown = native(list).window().raw();
    ASSERT_TRUE(shown);
    EXPECT_EQ(native(list).frame().size, (CGSize{280, 72}));
    const auto calls = runtime().calls();
    const auto show = std::ranges::find(calls, "showRelativeToRect:ofView:preferredEdge:", &Call::selector);
    ASSERT_NE(show, calls.end());
    const RawObject raw = show->receiver;
    EXPECT_EQ(property<NSUInteger>(raw, "preferredEdge"), NSRectEdgeMaxY);
    EXPECT_EQ(property<NSInteger>(raw, "behavior"), NSPopoverBehaviorApplicationDefined);
    display(native(list));
    click(native(list), {10, 60});
    EXPECT_EQ(notes, (Texts{"inside down 10,12", "inside up 10,12"}));

    popover.show(second, ui::Edge::Bottom, {280, 36});
    EXPECT_EQ(property<RawObject>(raw, "positioningView"), native(second).raw());
    EXPECT_EQ(property<NSUInteger>(raw, "preferredEdge"), NSRectEdgeMinY);
    popover.resize({280, 108});
    EXPECT_EQ(native(list).frame().size, (CGSize{280, 108}));
    EXPECT_EQ(closings, 0);
    popover.close();
    EXPECT_EQ(closings, 1);
    EXPECT_FALSE(native(list).window());

    second.removeFromParent();
    popover.show(second, ui::Edge::Top, {280, 36});
    EXPECT_EQ(closings, 1) << "never inside show";
    loop.run();
    EXPECT_EQ(closings, 2) << "there is no place beside a view that is not shown";
    EXPECT_FALSE(popover.isShown());
    popover.show(first, ui::Edge::Top, {280, 36});
}

TEST_F(Toolkit, PressesElsewhereAreSeenWhileWatched) {
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

TEST_F(Toolkit, PromptsAreTitledWindowsInFront) {
    int presses = 0;
    std::unique_ptr<ui::PromptPeer> prompt;
    runtime().forgetCalls();
    prompt = toolkit.showPrompt({.title = "Morvel — Accessibility Required",
                                 .contentSize = {480, 220},
                                 .text = "Morvel needs…",
                                 .textFrame = {20, 30, 440, 110},
                                 .buttonTitle = "Open System Settings…",
                                 .buttonFrame = {280, 170, 180, 30},
                                 .pressed = [&] {
                                     if (++presses == 2) prompt.reset();
                                 }});
    const auto calls = runtime().calls();
    const auto shown = std::ranges::find(calls, "makeKeyAndOrderFront:", &Call::selector);
    ASSERT_NE(shown, calls.end());
    const NSWindow window{Id(shown->receiver)};
    Texts order;
    for (const Call& call : calls) {
        if (call.selector == "center" || call.selector == "makeKeyAndOrderFront:" ||
            call.selector == "activateIgnoringOtherApps:")
            order.push_back(call.selector);
    }
    EXPECT_EQ(order, (Texts{"center", "makeKeyAndOrderFront:", "activateIgnoringOtherApps:"}));
    EXPECT_EQ(property<NSUInteger>(window.raw(), "styleMask"), 3U);
    EXPECT_EQ(window.frame().size, (CGSize{480, 220}));
    EXPECT_EQ(textOf(property<RawObject>(window.raw(), "title")), "Morvel — Accessibility Required");
    EXPECT_FALSE(property<bool>(window.raw(), "releasedWhenClosed"));
    const auto parts = window.contentView().subviews().elements<NSView>();
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].frame(), (CGRect{{20, 80}, {440, 110}}));
    EXPECT_EQ(parts[1].frame(), (CGRect{{280, 20}, {180, 30}}));
    const RawObject button = parts[1].raw();
    EXPECT_EQ(textOf(property<RawObject>(button, "keyEquivalent")), "\r");
    const auto press = [&] {
        const Id target(property<RawObject>(button, "target"));
        objc::sendRaw<void, Id>(target.raw(), property<RawSelector>(button, "action"), Id(button));
    };
    press();
    EXPECT_EQ(presses, 1);
    EXPECT_TRUE(window.isVisible());
    press();
    EXPECT_FALSE(window.isVisible()) << "closed from inside its button";
    EXPECT_EQ(presses, 2);
}

}  // namespace
}  // namespace morvel::mac::checked
