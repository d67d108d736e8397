// The class MorvelPanel, and how its instances are set up.
#include "Platform/Mac/UI/MacPanel.h"

#include "Platform/Mac/UI/Resolving.h"
#include "Platform/Mac/apple/AppKit/Selectors.h"
#include "Platform/Mac/apple/CoreGraphics.h"
#include "Platform/Mac/objc/Subclass.h"

namespace morvel::mac {

namespace {

/// Refuses the focus: a click on the bar must leave it with the person's application.
struct MorvelPanel {
    static constexpr const char* kClassName = "MorvelPanel";
    bool canBecomeKey() { return false; }
    bool canBecomeMain() { return false; }
};

NSPanel makePanel(const Rect<ScreenSpace>& frame) {
    using Class = objc::Subclass<MorvelPanel>;
    static const objc::RawClass registered = Class("NSPanel")
                                                 .overrides<&MorvelPanel::canBecomeKey>(selectors::canBecomeKeyWindow)
                                                 .overrides<&MorvelPanel::canBecomeMain>(selectors::canBecomeMainWindow)
                                                 .registered();
    (void)registered;
    constexpr bool kNotDeferred = false;
    return Class::create<NSPanel>(std::make_unique<MorvelPanel>(), selectors::initWithContentRect, cgRect(frame),
                                  NSWindowStyleMaskNonactivatingPanel, NSBackingStoreBuffered, kNotDeferred);
}

}  // namespace

MacPanel::MacPanel(const ui::PanelOptions& options, ui::View& content)
    : tree_(content), panel_(makePanel(options.frame)) {
    panel_.setReleasedWhenClosed(false);
    panel_.setLevel(CGWindowLevelForKey(kCGStatusWindowLevelKey));
    panel_.setCollectionBehavior(NSWindowCollectionBehaviorIgnoresCycle);
    panel_.setHasShadow(false);
    panel_.setBackgroundColor(NSColor::clear());
    panel_.setOpaque(false);
    panel_.setHidesOnDeactivate(false);
    panel_.setAcceptsMouseMovedEvents(true);
    panel_.setMovable(false);
    const NSView view = tree_.rootView();
    view.setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
    panel_.setContentView(view);
}

MacPanel::~MacPanel() {
    panel_.orderOut();
    panel_.setContentView(NSView());
    panel_.close();
}

void MacPanel::setFrame(const Rect<ScreenSpace>& frame) {
    constexpr bool kDisplay = true;
    const CGRect wanted = cgRect(frame);
    if (panel_.frame() != wanted) panel_.setFrame(wanted, kDisplay);
}

}  // namespace morvel::mac
