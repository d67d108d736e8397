// Building the window, from frames whose y grows downwards into a content view whose y grows upwards.
#include "Platform/Mac/UI/MacPrompt.h"

#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Mac/apple/AppKit/NSControls.h"
#include "Platform/Mac/apple/AppKit/Selectors.h"
#include "Platform/Mac/objc/Subclass.h"

namespace morvel::mac {

namespace {

struct PromptTarget {
    static constexpr const char* kClassName = "MorvelPromptTarget";
    std::function<void()> pressed;

    void press(Id) {
        const auto call = pressed;  // may close the prompt
        if (call) call();
    }

    static NSObject make(std::function<void()> pressed) {
        using Class = objc::Subclass<PromptTarget>;
        static const objc::RawClass registered =
            Class("NSObject").adds<&PromptTarget::press>(selectors::promptButtonPressed).registered();
        (void)registered;
        auto target = std::make_unique<PromptTarget>();
        target->pressed = std::move(pressed);
        return Class::create<NSObject>(std::move(target), selectors::init);
    }
};

CGRect turnedUp(const Rect<ViewSpace>& frame, double contentHeight) {
    return {{frame.x, contentHeight - frame.y - frame.height}, {frame.width, frame.height}};
}

NSView makeContent(const ui::Prompt& prompt, const NSObject& target) {
    const double height = prompt.contentSize.height;
    const NSView content = NSView::make({{}, {prompt.contentSize.width, height}});
    content.setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);

    const NSTextField label = NSTextField::wrappingLabel(NSString::from(prompt.text));
    label.setFrame(turnedUp(prompt.textFrame, height));
    label.setAutoresizingMask(NSViewWidthSizable);
    content.addSubview(label);

    const NSButton button = NSButton::push(NSString::from(prompt.buttonTitle), target, selectors::promptButtonPressed);
    button.setBezelStyle(NSBezelStylePush);
    button.setKeyEquivalent(NSString::from("\r"));
    button.setFrame(turnedUp(prompt.buttonFrame, height));
    button.setAutoresizingMask(NSViewMinXMargin);
    content.addSubview(button);
    return content;
}

}  // namespace

MacPrompt::MacPrompt(ui::Prompt prompt)
    : window_(NSWindow::make({{}, {prompt.contentSize.width, prompt.contentSize.height}},
                             NSWindowStyleMaskTitled | NSWindowStyleMaskClosable)),
      target_(PromptTarget::make(std::move(prompt.pressed))) {
    window_.setReleasedWhenClosed(false);
    window_.setTitle(NSString::from(prompt.title));
    window_.setContentView(makeContent(prompt, target_));
    window_.center();
    window_.makeKeyAndOrderFront();
    constexpr bool kIgnoringOthers = true;
    NSApplication::shared().activateIgnoringOtherApps(kIgnoringOthers);
}

MacPrompt::~MacPrompt() {
    window_.close();
    window_.setContentView(NSView());  // with it goes the button, which has no target from here on
}

}  // namespace morvel::mac
