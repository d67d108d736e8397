#include "Platform/Mac/UI/Form/ListView.h"

#include <algorithm>

#include "Platform/Mac/Icons/MacImage.h"
#include "Platform/Mac/UI/DisplayText.h"

namespace morvel::mac {

namespace {

constexpr double kMargin = 10;  // inside the box
constexpr double kRowHeight = 34;
constexpr CGSize kImageSize{20, 20};
constexpr double kTitleHeight = 18;
constexpr double kGap = 8;

double middle(double top, double height) {
    return top + (kRowHeight - height) / 2;
}

}  // namespace

ListView::ListView(const ui::FormList& list, const FormContext& context)
    : list_(list),
      context_(context),
      box_(NSBox::make()),
      emptyText_(NSTextField::wrappingLabel(NSString::from(list.emptyText))) {
    box_.setTitlePosition(NSNoTitle);
    emptyText_.setTextColor(NSColor::secondaryLabel());
}

void ListView::refresh() {
    std::vector<ui::FormListRow> rows = list_.rows();
    if (shown_ == rows) return;
    for (const NSView& view : views()) view.removeFromSuperview();
    rows_.clear();
    for (const ui::FormListRow& row : rows) rows_.push_back(makeRow(row));
    shown_ = std::move(rows);
    for (const NSView& view : views()) context_.page.addSubview(view);
}

ListView::Row ListView::makeRow(const ui::FormListRow& row) const {
    Row made{NSImageView::make({}), NSTextField::label(NSString::from(displayText(row.title))),
             TitledButton(list_.buttonTitle,
                          context_.lifetime.whileAlive([&list = list_, id = row.id] { list.press(id); }))};
    made.image.setImage(MacImage::imageOf(row.image));
    made.image.setImageScaling(NSImageScaleProportionallyUpOrDown);
    made.title.setLineBreakMode(NSLineBreakByTruncatingMiddle);
    made.title.setToolTip(NSString::from(displayText(row.detail)));
    made.button.button.setAccessibilityLabel(NSString::from(displayText(list_.buttonTitle + " " + row.title)));
    return made;
}

std::vector<NSView> ListView::views() const {
    std::vector<NSView> views{box_};
    for (const Row& row : rows_) views.insert(views.end(), {row.image, row.title, row.button.button});
    if (rows_.empty()) views.push_back(emptyText_);
    return views;
}

double ListView::place(CGPoint topLeft, double width) {
    const double left = topLeft.x + kMargin;
    const double inner = width - 2 * kMargin;
    double y = topLeft.y;
    for (const Row& row : rows_) {
        const double titleLeft = left + kImageSize.width + kGap;
        const double buttonLeft = left + inner - row.button.size.width;
        row.image.setFrame({{left, middle(y, kImageSize.height)}, kImageSize});
        row.title.setFrame(
            {{titleLeft, middle(y, kTitleHeight)}, {std::max(buttonLeft - kGap - titleLeft, 0.0), kTitleHeight}});
        row.button.button.setFrame({{buttonLeft, middle(y, row.button.size.height)}, row.button.size});
        y += kRowHeight;
    }
    if (rows_.empty()) {
        const double height = heightOf(emptyText_, inner);
        emptyText_.setFrame({{left, y + kMargin}, {inner, height}});
        y += height + 2 * kMargin;
    }
    box_.setFrame({topLeft, {width, y - topLeft.y}});
    return y - topLeft.y;
}

void ListView::setEnabled(bool enabled) {
    for (const Row& row : rows_) NSControl(row.button.button).setEnabled(enabled);
}

}  // namespace morvel::mac
