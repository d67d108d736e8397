// The class MorvelPanel, and how its instances are set up.
#include "Platform/Mac/UI/MacPanel.h"

#include <chrono>
#include <utility>

#include "Platform/Mac/UI/Resolving.h"
#include "Platform/Mac/apple/AppKit/NSAnimationContext.h"
#include "Platform/Mac/apple/AppKit/Selectors.h"
#include "Platform/Mac/apple/CoreGraphics.h"
#include "Platform/Mac/apple/Uptime.h"
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
    [[maybe_unused]] static const objc::RawClass registered =
        Class("NSPanel")
            .overrides<&MorvelPanel::canBecomeKey>(selectors::canBecomeKeyWindow)
            .overrides<&MorvelPanel::canBecomeMain>(selectors::canBecomeMainWindow)
            .registered();
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
    // By itself a window lets pass what happens where it is clear, and a strip is clear all over.
    if (options.kind == ui::PanelKind::Strip) panel_.setIgnoresMouseEvents(false);
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
    if (slide_ && slide_->target == wanted && uptimeNanoseconds() < slide_->end) return;
    // A slide would go on over what is set beside it. Another one that takes no time ends it.
    if (std::exchange(slide_, std::nullopt)) slideTo(wanted, 0);
    if (panel_.frame() != wanted) panel_.setFrame(wanted, kDisplay);
}

void MacPanel::animateFrame(const Rect<ScreenSpace>& frame, Duration duration) {
    const auto length = std::chrono::duration_cast<std::chrono::nanoseconds>(duration);
    slide_ = {cgRect(frame), uptimeNanoseconds() + static_cast<std::uint64_t>(length.count())};
    slideTo(slide_->target, std::chrono::duration<double>(duration).count());
}

void MacPanel::slideTo(const CGRect& frame, double seconds) const {
    NSAnimationContext::runGroup([&](const NSAnimationContext& context) {
        constexpr bool kDisplay = true;
        context.setDuration(seconds);
        panel_.animator().setFrame(frame, kDisplay);
    });
}

}  // namespace morvel::mac
