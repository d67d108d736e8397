// Text fields and scroll views on AppKit, and the popover that takes the keyboard.
#include "Platform/Mac/apple/AppKit/NSControls.h"
#include "Platform/Mac/apple/AppKit/NSScrollView.h"
#include "Platform/Mac/apple/AppKit/Selectors.h"
#include "ToolkitFixture.h"
#include "UI/Popover.h"
#include "UI/ScrollView.h"
#include "UI/TextField.h"

namespace morvel::mac::checked {
namespace {

class Typing : public ToolkitFixture {
protected:
    struct Document : ui::View {
        Size intrinsicSize() const override { return {0, 560}; }
    };
    struct Content : ui::View {
        ui::TextField field{"Search apps…"};
        Document document;
        ui::ScrollView scroll{document};
        Button row;
        explicit Content(Texts& notes) : row(notes, "row") {
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

    ui::View anchor;
    ui::Panel panel{toolkit, {.frame = {0, 0, 600, 36}}, anchor};
    Texts notes;
    Content content{notes};
    int closings = 0;
    ui::Popover popover{toolkit, content, [this] { ++closings; }, ui::PopoverKind::Search};

    void open() {
        popover.show(anchor, ui::Edge::Top, {320, 320});
        display(native(content));
    }
    NSTextField field() { return NSTextField(native(content.field).raw()); }
    NSScrollView scroll() { return NSScrollView(native(content.scroll).raw()); }
    Id delegate() { return property<Id>(field(), "delegate"); }
    /// As the field editor does.
    bool press(const Id& fieldDelegate, Selector command) {
        return tell<bool>(fieldDelegate, "control:textView:doCommandBySelector:", field(), NSObject(), command);
    }
};

TEST_F(Typing, IntoAPopoverThatTakesTheKeyboardWithoutActivating) {
    open();
    EXPECT_EQ(property<NSInteger>(lastPopover(), "behavior"), NSPopoverBehaviorTransient);
    EXPECT_TRUE(property<bool>(lastPopover(), "animates"));
    EXPECT_TRUE(windowOf(content).styleMask() & NSWindowStyleMaskNonactivatingPanel);
    EXPECT_EQ(callsOf("NSWindow makeKeyWindow"), 1);
    EXPECT_EQ(callsOf("NSWindow makeFirstResponder:"), 1);
    EXPECT_EQ(callsOf("NSApplication activateIgnoringOtherApps:"), 0);
    EXPECT_EQ(property<NSUInteger>(field(), "bezelStyle"), NSTextFieldRoundedBezel);

    Texts typed;
    content.field.onChange = [&] { typed.push_back(content.field.text()); };
    std::vector<ui::TextCommand> commands;
    content.field.onCommand = [&](ui::TextCommand command) {
        commands.push_back(command);
        return true;
    };
    field().setStringValue(NSString::from("Saf"));
    tell(delegate(), "controlTextDidChange:", runtime().make("NSNotification"));
    EXPECT_EQ(typed, Texts{"Saf"});
    for (const Selector command :
         {Selector(selectors::moveDown), Selector(selectors::insertNewline), Selector(selectors::cancelOperation)})
        EXPECT_TRUE(press(delegate(), command));
    EXPECT_FALSE(press(delegate(), "moveLeft:"_sel)) << "the text's own";
    EXPECT_EQ(commands, (std::vector{ui::TextCommand::MoveDown, ui::TextCommand::Confirm, ui::TextCommand::Cancel}));
    content.field.setText("by the program");
    EXPECT_EQ(field().stringValue().text(), "by the program");

    popover.close();
    EXPECT_EQ(closings, 1);
    EXPECT_EQ(callsOf("NSPopover performClose:"), 1);
}

TEST_F(Typing, MayEndTheFieldThatTells) {
    open();
    content.field.onCommand = [&](ui::TextCommand) {
        popover.close();
        return true;
    };
    EXPECT_TRUE(press(delegate(), selectors::cancelOperation));
    EXPECT_EQ(closings, 1);
    open();
    const Id kept = delegate();
    const NSTextField old = field();
    content.field.removeFromParent();
    EXPECT_FALSE(property<Id>(old, "delegate")) << "it is not kept by the field";
    EXPECT_FALSE(press(kept, selectors::moveUp));
}

TEST_F(Typing, ScrollsAsTheSystemDoes) {
    open();
    const NSClipView clip = scroll().contentView();
    EXPECT_TRUE(property<bool>(scroll(), "hasVerticalScroller"));
    EXPECT_EQ(native(content.document).frame().size, (CGSize{320, 560}));
    EXPECT_EQ(content.scroll.subviews().size(), 1U) << "a scroller of ours beside the system's";

    int scrolls = 0;
    content.scroll.onScroll = [&] { ++scrolls; };
    clip.scrollTo({0, 100});  // by the person
    EXPECT_EQ(content.scroll.offset(), 100);
    EXPECT_EQ(scrolls, 1);
    EXPECT_EQ(callsOf("NSClipView scrollToPoint:"), 1) << "it need not be told what it told";
    content.scroll.scrollToVisible(532, 560);
    EXPECT_EQ(clip.bounds().origin.y, 280);
    EXPECT_EQ(native(content.document).frame().origin.y, 0) << "the clip view moves, not the document";

    // The row that was scrolled to the top is where it is seen.
    const NSView root = native(content);
    const CGPoint top{100, root.frame().size.height - 40 - 10};
    EXPECT_EQ(viewAt(root, top), native(content.row));
    click(root, top);
    EXPECT_EQ(notes.size(), 2U);

    // The system's scroller takes its presses, though it is no view of ours.
    const NSView scroller = NSView::make({{305, 0}, {15, 280}});
    send(scroll(), "addSubview:"_sel, scroller);
    EXPECT_EQ(viewAt(root, {310, root.frame().size.height - 50}), scroller);
}

}  // namespace
}  // namespace morvel::mac::checked
