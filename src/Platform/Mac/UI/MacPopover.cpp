// Setting the popover up, and hearing that it closed.
#include "Platform/Mac/UI/MacPopover.h"

#include "Platform/Mac/apple/AppKit/NSWindow.h"
#include "Platform/Mac/apple/AppKit/Selectors.h"
#include "Platform/Mac/apple/Foundation/NSNotificationCenter.h"
#include "Platform/Mac/objc/Subclass.h"
#include "UI/TextField.h"

namespace morvel::mac {

namespace {

struct PopoverDelegate {
    static constexpr const char* kClassName = "MorvelPopoverDelegate";
    std::function<void()> closed;

    void popoverDidClose(NSNotification) {
        const auto call = closed;  // may destroy the popover and this delegate with it
        call();
    }

    static NSObject make(std::function<void()> closed) {
        using Class = objc::Subclass<PopoverDelegate>;
        [[maybe_unused]] static const objc::RawClass registered =
            Class("NSObject")
                .adopts("NSPopoverDelegate")
                .overrides<&PopoverDelegate::popoverDidClose>(selectors::popoverDidClose)
                .registered();
        auto delegate = std::make_unique<PopoverDelegate>();
        delegate->closed = std::move(closed);
        return Class::create<NSObject>(std::move(delegate), selectors::init);
    }
};

CGSize cgSize(Size size) {
    return {size.width, size.height};
}

}  // namespace

MacPopover::MacPopover(ui::View& content, std::function<void()> closed, MainLoop& mainLoop, ui::PopoverKind kind)
    : content_(content),
      kind_(kind),
      closed_(std::move(closed)),
      mainLoop_(mainLoop),
      tree_(content),
      popover_(create<NSPopover>()),
      delegate_(PopoverDelegate::make([this] { didClose(); })) {
    const NSViewController controller = create<NSViewController>();
    controller.setView(tree_.rootView());
    popover_.setContentViewController(controller);
    // The system closes a transient popover in its own time and with its animation. That of a list would still be on
    // its way, and end in a notice of it, when the popover is shown at another button.
    const bool isTransient = kind_ != ui::PopoverKind::List;
    popover_.setBehavior(isTransient ? NSPopoverBehaviorTransient : NSPopoverBehaviorApplicationDefined);
    popover_.setAnimates(isTransient);
    popover_.setDelegate(delegate_);
}

MacPopover::~MacPopover() {
    popover_.setDelegate(nullptr);
    popover_.close();
}

void MacPopover::show(ui::View& anchor, ui::Edge edge, Size size) {
    const NSView beside = ViewTree::nativeOf(anchor);
    if (!beside.window()) {
        // A popover that is shown relative to a view outside all windows raises an exception.
        mainLoop_.post(lifetime_.whileAlive([this] {
            if (const auto call = closed_; call && !popover_.isShown()) call();
        }));
        return;
    }
    popover_.setContentSize(cgSize(size));
    presses_ = NSEvent::monitorLocally(kAnyPress, [this, beside](const NSEvent& event) { pressed(event, beside); });
    popover_.show(beside.bounds(), beside, edge == ui::Edge::Top ? NSRectEdgeMaxY : NSRectEdgeMinY);
    if (kind_ == ui::PopoverKind::Search) takeKeyboard();
}

void MacPopover::takeKeyboard() const {
    const NSWindow window(tree_.rootView().window());
    // The application in front stays active, as it does under the panel that the popover belongs to.
    window.setStyleMask(window.styleMask() | NSWindowStyleMaskNonactivatingPanel);
    window.makeKey();
    if (const ui::TextField* const field = ui::firstTextField(content_))
        window.makeFirstResponder(ViewTree::nativeOf(*field));
}

void MacPopover::pressed(const NSEvent& event, const NSView& anchor) {
    if (event.window() == tree_.rootView().window()) return;
    const CGPoint at = anchor.convertPointFrom(event.locationInWindow(), NSView());
    const bool isBesideIt = event.window() == anchor.window();
    if (isBesideIt && (kind_ == ui::PopoverKind::List || contains(anchor.bounds(), at))) return;
    close();
}

void MacPopover::close() {
    if (kind_ == ui::PopoverKind::List) return popover_.close();
    popover_.performClose();
}

void MacPopover::didClose() {
    presses_.reset();
    const auto call = closed_;  // may destroy this
    if (call) call();
}

void MacPopover::resize(Size size) {
    popover_.setContentSize(cgSize(size));
}

}  // namespace morvel::mac
