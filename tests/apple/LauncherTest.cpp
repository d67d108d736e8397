// Text fields and scroll views on AppKit, and the popover that takes the keyboard.
#include "Platform/Mac/apple/AppKit/NSControls.h"
#include "Platform/Mac/apple/AppKit/NSMenu.h"
#include "Platform/Mac/apple/AppKit/NSScrollView.h"
#include "Platform/Mac/apple/AppKit/NSWindow.h"
#include "Platform/Mac/apple/AppKit/Selectors.h"

#include <algorithm>

#include "Events.h"
#include "Platform/Mac/System/MacMainLoop.h"
#include "Platform/Mac/UI/MacToolkit.h"
#include "Platform/Mac/UI/ViewTree.h"
#include "Properties.h"
#include "RuntimeTest.h"
#include "UI/Panel.h"
#include "UI/Popover.h"
#include "UI/ScrollView.h"
#include "UI/TextField.h"

namespace morvel::mac::checked {
namespace {

using namespace objc::literals;

struct Row : ui::View {
    int presses = 0;
    bool acceptsMouse() const override { return true; }
    void mouseDown(const ui::MouseEvent&) override { ++presses; }
};

struct Document : ui::View {
    Size intrinsicSize() const override { return {0, 560}; }
};

class Typing : public RuntimeTest {
protected:
    struct Content : ui::View {
        ui::TextField field{"Search apps…"};
        Document document;
        ui::ScrollView scroll{document};
        Row row;
        Content() {
            addSubview(field);
            addSubview(scroll);
            document.addSubview(row);
            row.setFrame({0, 280, 320, 28});
        }
        void layout() override {
            field.setFrame({8, 8, 304, 22});
            scroll.setFrame({0, 40, 320, 280});
        }
    };

    MacMainLoop loop;
    MacToolkit toolkit{loop};
    Row anchor;
    ui::Panel panel{toolkit, {.frame = {0, 0, 600, 36}}, anchor};
    Content content;
    int closings = 0;
    ui::Popover popover{toolkit, content, [this] { ++closings; }, ui::PopoverKind::Search};

    void open() {
        popover.show(anchor, ui::Edge::Top, {320, 320});
        display(ViewTree::nativeOf(content));
    }
    NSTextField field() { return NSTextField(ViewTree::nativeOf(content.field).raw()); }
    NSScrollView scroll() { return NSScrollView(ViewTree::nativeOf(content.scroll).raw()); }
    RawObject delegate() { return property<RawObject>(field().raw(), "delegate"); }
    /// As the field editor does.
    void type(const std::string& text) {
        field().setStringValue(NSString::from(text));
        const Id notification(objc::kAdopt, runtime().allocate(runtime().classNamed("NSNotification")));
        objc::sendRaw<void, Id>(delegate(), runtime().selectorNamed("controlTextDidChange:"), notification);
    }
    bool press(Selector command) {
        return objc::sendRaw<bool, Id, Id, Selector>(
            delegate(), runtime().selectorNamed("control:textView:doCommandBySelector:"), field(), NSObject(), command);
    }
    size_t calls(const std::string& name) {
        return static_cast<size_t>(std::ranges::count(runtime().callNames(), name));
    }
};

TEST_F(Typing, APopoverWithTheKeyboardIsTypedIntoWithoutActivating) {
    open();
    const auto made = std::ranges::find(runtime().calls(), "showRelativeToRect:ofView:preferredEdge:", &Call::selector);
    const RawObject raw = made->receiver;
    EXPECT_EQ(property<NSInteger>(raw, "behavior"), NSPopoverBehaviorTransient);
    EXPECT_TRUE(property<bool>(raw, "animates"));
    const NSWindow window(field().window());
    EXPECT_TRUE(window.styleMask() & NSWindowStyleMaskNonactivatingPanel);
    EXPECT_EQ(calls("NSWindow makeKeyWindow"), 1U);
    EXPECT_EQ(calls("NSWindow makeFirstResponder:"), 1U);
    EXPECT_EQ(calls("NSApplication activateIgnoringOtherApps:"), 0U);
    EXPECT_EQ(property<NSUInteger>(field().raw(), "bezelStyle"), NSTextFieldRoundedBezel);

    std::vector<std::string> typed;
    content.field.onChange = [&] { typed.push_back(content.field.text()); };
    std::vector<ui::TextCommand> commands;
    content.field.onCommand = [&](ui::TextCommand command) {
        commands.push_back(command);
        return true;
    };
    type("Saf");
    EXPECT_EQ(typed, std::vector<std::string>{"Saf"});
    EXPECT_TRUE(press(selectors::moveDown));
    EXPECT_TRUE(press(selectors::insertNewline));
    EXPECT_TRUE(press(selectors::cancelOperation));
    EXPECT_FALSE(press("moveLeft:"_sel)) << "the text's own";
    EXPECT_EQ(commands, (std::vector{ui::TextCommand::MoveDown, ui::TextCommand::Confirm, ui::TextCommand::Cancel}));
    content.field.setText("by the program");
    EXPECT_EQ(field().stringValue().text(), "by the program");

    popover.close();
    EXPECT_EQ(closings, 1);
    EXPECT_EQ(calls("NSPopover performClose:"), 1U);
}

TEST_F(Typing, TheFieldMayGoWhileItTells) {
    open();
    content.field.onCommand = [&](ui::TextCommand) {
        popover.close();
        return true;
    };
    EXPECT_TRUE(press(selectors::cancelOperation));
    EXPECT_EQ(closings, 1);
    open();
    const Id kept(delegate());
    const NSTextField native = field();
    content.field.removeFromParent();
    EXPECT_FALSE(property<RawObject>(native.raw(), "delegate")) << "it is not kept by the field";
    EXPECT_FALSE((objc::sendRaw<bool, Id, Id, Selector>(
        kept.raw(), runtime().selectorNamed("control:textView:doCommandBySelector:"), native, NSObject(),
        Selector(selectors::moveUp))));
}

TEST_F(Typing, ScrollViewsScrollAsTheSystemDoes) {
    open();
    const NSClipView clip = scroll().contentView();
    EXPECT_EQ(property<bool>(scroll().raw(), "hasVerticalScroller"), true);
    EXPECT_EQ(ViewTree::nativeOf(content.document).frame().size, (CGSize{320, 560}));
    EXPECT_EQ(content.scroll.subviews().size(), 1U) << "a scroller of ours beside the system's";

    int scrolls = 0;
    content.scroll.onScroll = [&] { ++scrolls; };
    clip.scrollTo({0, 100});  // by the person
    EXPECT_EQ(content.scroll.offset(), 100);
    EXPECT_EQ(scrolls, 1);
    EXPECT_EQ(calls("NSClipView scrollToPoint:"), 1U) << "it need not be told what it told";
    content.scroll.scrollToVisible(532, 560);
    EXPECT_EQ(clip.bounds().origin.y, 280);
    EXPECT_EQ(ViewTree::nativeOf(content.document).frame().origin.y, 0) << "the clip view moves, not the document";

    // The row that was scrolled to the top is where it is seen.
    const NSView root = ViewTree::nativeOf(content);
    const CGPoint top{100, root.frame().size.height - 40 - 10};
    EXPECT_EQ(viewAt(root, top).raw(), ViewTree::nativeOf(content.row).raw());
    click(root, top);
    EXPECT_EQ(content.row.presses, 1);

    // The system's scroller takes its presses, though it is no view of ours.
    const NSView scroller = NSView::make({{305, 0}, {15, 280}});
    send(scroll(), "addSubview:"_sel, scroller);
    EXPECT_EQ(viewAt(root, {310, root.frame().size.height - 50}).raw(), scroller.raw());
}

}  // namespace
}  // namespace morvel::mac::checked
