// Building the window, from frames whose y grows downwards into a content view whose y grows upwards.
#include "Platform/Mac/UI/MacPrompt.h"

#include "Platform/Mac/UI/ControlAction.h"
#include "Platform/Mac/apple/AppKit/NSApplication.h"

namespace morvel::mac {

namespace {

CGRect turnedUp(const Rect<ViewSpace>& frame, double contentHeight) {
    return {{frame.x, contentHeight - frame.y - frame.height}, {frame.width, frame.height}};
}

NSView makeContent(const ui::Prompt& prompt) {
    const double height = prompt.contentSize.height;
    const NSView content = NSView::make({{}, {prompt.contentSize.width, height}});
    content.setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);

    const NSTextField label = NSTextField::wrappingLabel(NSString::from(prompt.text));
    label.setFrame(turnedUp(prompt.textFrame, height));
    label.setAutoresizingMask(NSViewWidthSizable);
    content.addSubview(label);

    const NSButton button = NSButton::push(NSString::from(prompt.buttonTitle), nullptr, Selector());
    button.setBezelStyle(NSBezelStylePush);
    button.setKeyEquivalent(NSString::from("\r"));
    button.setFrame(turnedUp(prompt.buttonFrame, height));
    button.setAutoresizingMask(NSViewMinXMargin);
    setAction(NSControl(button), prompt.pressed);
    content.addSubview(button);
    return content;
}

}  // namespace

MacPrompt::MacPrompt(ui::Prompt prompt)
    : window_(NSWindow::make({{}, {prompt.contentSize.width, prompt.contentSize.height}},
                             NSWindowStyleMaskTitled | NSWindowStyleMaskClosable)) {
    window_.setReleasedWhenClosed(false);
    window_.setTitle(NSString::from(prompt.title));
    window_.setContentView(makeContent(prompt));
    window_.center();
    window_.makeKeyAndOrderFront();
    NSApplication::shared().activateIgnoringOtherApps();
}

MacPrompt::~MacPrompt() {
    window_.close();
    window_.setContentView(NSView());  // with it goes the button
}

}  // namespace morvel::mac
