#include "Platform/Mac/UI/Form/FormPage.h"

#include <algorithm>

#include "Platform/Mac/UI/Resolving.h"
#include "Platform/Mac/apple/AppKit/Selectors.h"
#include "Platform/Mac/objc/Subclass.h"

namespace morvel::mac {

namespace {

constexpr double kMargin = 24;
constexpr double kSectionGap = 20;
constexpr double kRowGap = 12;
constexpr double kHelpGap = 4;
constexpr double kHeadingHeight = 20;
constexpr double kLabelHeight = 18;
constexpr ui::Font kHeadingFont{14, ui::FontWeight::Semibold};
constexpr ui::Font kHelpFont{11, ui::FontWeight::Regular};

/// A view whose y grows downwards, as its rows do.
struct PageView {
    static constexpr const char* kClassName = "MorvelFormPage";
    bool isFlipped() { return true; }

    static NSView make(CGRect frame) {
        using Class = objc::Subclass<PageView>;
        [[maybe_unused]] static const objc::RawClass registered =
            Class("NSView").overrides<&PageView::isFlipped>(selectors::isFlipped).registered();
        return Class::create<NSView>(std::make_unique<PageView>(), selectors::initWithFrame, frame);
    }
};

NSTextField headingOf(const std::string& text) {
    const NSTextField label = NSTextField::label(NSString::from(text));
    label.setFont(nsFont(kHeadingFont));
    return label;
}

NSTextField helpOf(const std::string& text) {
    const NSTextField label = NSTextField::wrappingLabel(NSString::from(text));
    label.setFont(nsFont(kHelpFont));
    label.setTextColor(NSColor::secondaryLabel());
    return label;
}

}  // namespace

FormPage::FormPage(const ui::FormTab& tab, CGRect frame, const NSWindow& window, const Lifetime& lifetime)
    : scroll_(NSScrollView::make(frame)),
      page_(PageView::make({{}, frame.size})),
      width_(frame.size.width - 2 * kMargin) {
    scroll_.setDrawsBackground(false);
    scroll_.setHasVerticalScroller(true);
    scroll_.setAutohidesScrollers(true);
    scroll_.setDocumentView(page_);
    for (const ui::FormSection& section : tab.sections) {
        Section& made = sections_.emplace_back(Section{headingOf(section.heading), {}});
        page_.addSubview(made.heading);
        for (const ui::FormControl& control : section.controls)
            made.rows.push_back(makeRow(control, {page_, window, lifetime}));
    }
}

FormPage::Row FormPage::makeRow(const ui::FormControl& control, const FormContext& context) const {
    Row row{control, makeControlView(control, context), {}, {}};
    if (!control.label.empty()) {
        row.label = NSTextField::label(NSString::from(control.label));
        page_.addSubview(row.label);
        row.active->setAccessibilityLabel(NSString::from(control.label));
    }
    for (const NSView& view : row.active->views()) page_.addSubview(view);
    if (!control.help.empty()) {
        row.help = helpOf(control.help);
        page_.addSubview(row.help);
    }
    return row;
}

void FormPage::refresh(const ui::ShownControls& shown, size_t index) {
    double top = kMargin;
    for (size_t i = 0; i < sections_.size(); ++i) {
        const bool hasAny = shown.hasAny(index, i);
        sections_[i].heading.setHidden(!hasAny);
        sections_[i].heading.setFrame({{kMargin, top}, {width_, kHeadingHeight}});
        if (hasAny) top += kHeadingHeight + kRowGap;
        for (size_t j = 0; j < sections_[i].rows.size(); ++j) {
            const Row& row = sections_[i].rows[j];
            const bool isShown = shown.isShown(index, i, j);
            row.active->refresh();
            row.active->setEnabled(ui::isEnabled(row.control));
            for (const NSView& view : row.active->views()) view.setHidden(!isShown);
            if (row.label) row.label.setHidden(!isShown);
            if (row.help) row.help.setHidden(!isShown);
            if (isShown) top = place(row, top) + kRowGap;
        }
        if (hasAny) top += kSectionGap - kRowGap;
    }
    page_.setFrame({{}, {width_ + 2 * kMargin, std::max(top, scroll_.frame().size.height)}});
}

double FormPage::place(const Row& row, double top) const {
    const double height = std::max(row.active->place({kMargin, top}, width_), row.label ? kLabelHeight : 0.0);
    // The control covers the right end of the label's line only.
    if (row.label) row.label.setFrame({{kMargin, top + (height - kLabelHeight) / 2}, {width_ / 2, kLabelHeight}});
    if (!row.help) return top + height;
    const double helpHeight = heightOf(row.help, width_);
    row.help.setFrame({{kMargin, top + height + kHelpGap}, {width_, helpHeight}});
    return top + height + kHelpGap + helpHeight;
}

}  // namespace morvel::mac
