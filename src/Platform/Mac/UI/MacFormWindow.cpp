// Building the window, and answering the keys that an application without a main menu has no menu items for.
#include "Platform/Mac/UI/MacFormWindow.h"

#include <utility>

#include "Platform/Mac/UI/ControlAction.h"
#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Mac/apple/AppKit/Selectors.h"
#include "Platform/Mac/objc/Subclass.h"

namespace morvel::mac {

namespace {

constexpr NSUInteger kStyle = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskMiniaturizable |
                              NSWindowStyleMaskFullSizeContentView;
static_assert(kStyle == 32775);

constexpr double kTitleBarHeight = 28;
constexpr double kHeaderHeight = 44;  // below the title bar
constexpr double kMargin = 20;
constexpr double kTabsWidth = 490;
constexpr double kControlHeight = 24;
constexpr double kGap = 16;
constexpr double kLineHeight = 20;

struct FormWindowClass {
    static constexpr const char* kClassName = "MorvelFormWindow";

    bool performKeyEquivalent(objc::Self self, NSEvent event) {
        if (self.super<bool>(selectors::performKeyEquivalent, event)) return true;
        const Selector action = actionFor(event);
        return action.raw() && NSApplication::shared().sendAction(action, Id(self.object));
    }

    static NSWindow make(CGRect content) {
        using Class = objc::Subclass<FormWindowClass>;
        [[maybe_unused]] static const objc::RawClass registered =
            Class("NSWindow")
                .overrides<&FormWindowClass::performKeyEquivalent>(selectors::performKeyEquivalent)
                .registered();
        constexpr bool kNotDeferred = false;
        return Class::create<NSWindow>(std::make_unique<FormWindowClass>(), selectors::initWithContentRect, content,
                                       kStyle, NSBackingStoreBuffered, kNotDeferred);
    }

private:
    static Selector actionFor(const NSEvent& event) {
        constexpr NSUInteger kModifiers = NSEventModifierFlagDeviceIndependentFlagsMask;
        if ((event.modifierFlags() & kModifiers) != NSEventModifierFlagCommand) return Selector();
        const std::string key = event.charactersIgnoringModifiers().text();
        if (key == "w") return selectors::performClose;
        if (key == "m") return selectors::performMiniaturize;
        if (key == "x") return selectors::cut;
        if (key == "c") return selectors::copy;
        if (key == "v") return selectors::paste;
        if (key == "a") return selectors::selectAll;
        return Selector();
    }
};

}  // namespace

MacFormWindow::MacFormWindow(ui::Form form)
    : form_(std::move(form)),
      window_(FormWindowClass::make({{}, {form_.contentSize.width, form_.contentSize.height}})),
      nothingFound_(NSTextField::label(NSString::from(form_.nothingFound))) {
    window_.setReleasedWhenClosed(false);
    window_.setTitle(NSString::from(form_.title));
    window_.setTitlebarAppearsTransparent(true);
    window_.setAutorecalculatesKeyViewLoop(true);  // the rows of lists come and go
    const NSView content = NSView::make({{}, {form_.contentSize.width, form_.contentSize.height}});
    addHeader(content);
    addPages(content);
    window_.setContentView(content);
    // The colours that are asked for have a transparency.
    NSColorPanel::shared().setShowsAlpha(true);
    window_.center();
}

MacFormWindow::~MacFormWindow() {
    window_.close();
    window_.setContentView(NSView());
}

void MacFormWindow::addHeader(const NSView& content) {
    const double top = form_.contentSize.height - kTitleBarHeight;
    const double y = top - (kHeaderHeight + kControlHeight) / 2;
    std::vector<NSString> titles;
    for (const ui::FormTab& tab : form_.tabs) titles.push_back(NSString::from(tab.title));
    tabs_ = NSSegmentedControl::make(NSArray::from(titles), nullptr, Selector());
    tabs_.setFrame({{kMargin, y}, {kTabsWidth, kControlHeight}});
    tabs_.select(0);
    setAction(tabs_, lifetime_.whileAlive([this] { refresh(); }));
    content.addSubview(tabs_);

    const double left = kMargin + kTabsWidth + kGap;
    search_ = NSSearchField::make();
    search_.setFrame({{left, y}, {form_.contentSize.width - left - kMargin, kControlHeight}});
    search_.setPlaceholderString(NSString::from(form_.searchPlaceholder));
    search_.setSendsImmediately(true);
    setAction(NSControl(search_), lifetime_.whileAlive([this] { refresh(); }));
    content.addSubview(search_);
}

void MacFormWindow::addPages(const NSView& content) {
    const CGRect frame{{}, {form_.contentSize.width, form_.contentSize.height - kTitleBarHeight - kHeaderHeight}};
    for (const ui::FormTab& tab : form_.tabs) {
        pages_.push_back(std::make_unique<FormPage>(tab, frame, window_, lifetime_));
        content.addSubview(pages_.back()->view());
    }
    nothingFound_.setFrame({{0, frame.size.height / 2}, {frame.size.width, kLineHeight}});
    nothingFound_.setAlignment(NSTextAlignmentCenter);
    nothingFound_.setTextColor(NSColor::secondaryLabel());
    content.addSubview(nothingFound_);
}

void MacFormWindow::bringToFront() {
    if (window_.isMiniaturized()) window_.deminiaturize();
    window_.makeKeyAndOrderFront();
    NSApplication::shared().activateIgnoringOtherApps();
}

void MacFormWindow::refresh() {
    const ui::ShownControls shown = ui::shownControls(form_, search_.stringValue().text());
    const size_t current = shown.tabToShow(currentTab());
    tabs_.select(static_cast<NSInteger>(current));
    for (size_t tab = 0; tab < pages_.size(); ++tab) {
        pages_[tab]->refresh(shown, tab);
        pages_[tab]->view().setHidden(tab != current || shown.isEmpty());
        tabs_.setEnabled(shown.hasAny(tab), static_cast<NSInteger>(tab));
    }
    nothingFound_.setHidden(!shown.isEmpty());
}

size_t MacFormWindow::currentTab() const {
    const NSInteger selected = tabs_.selected();
    return selected < 0 ? 0 : static_cast<size_t>(selected);
}

}  // namespace morvel::mac
