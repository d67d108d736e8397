#include "Platform/Linux/UI/PopoverWindow.h"

#include <algorithm>
#include <utility>

namespace morvel::x11 {

namespace {

constexpr double kRadius = 9;
constexpr double kHairline = 1;    // around the content
constexpr double kWheelStep = 36;  // about a row

}  // namespace

PopoverWindow::PopoverWindow(ToolkitContext& context, ui::View& content, std::function<void()> closed,
                             ui::PopoverKind kind)
    : context_(context), content_(content), closed_(std::move(closed)), kind_(kind) {}

PopoverWindow::~PopoverWindow() {
    presses_.reset();
    context_.popoverWillClose(window_.get());
    context_.retire(std::move(window_));
}

void PopoverWindow::show(ui::View& anchor, ui::Edge edge, Size size) {
    const ViewWindow* parent = context_.windowShowing(anchor);
    if (!parent) {
        refused_ = context_.mainLoop().after(Duration{}, [this] { close(); });
        return;
    }
    refused_.reset();
    anchor_ = parent->onRoot(anchor);
    edge_ = edge;
    scrolled_ = 0;
    if (!window_)
        window_ = std::make_unique<ViewWindow>(
            context_, content_,
            ViewWindowOptions{.prepare =
                                  [this](XWindow& window) {
                                      const Atoms& atoms = context_.connection().atoms();
                                      window.setCardinals(atoms.netWmWindowType, XCB_ATOM_ATOM, {atoms.typePopupMenu});
                                  },
                              .wheelTurned = [this](int notches) { scrollBy(notches * kWheelStep); }});
    place(size);
    presses_ = context_.observePresses([this, parent](const ViewWindow& pressed, Point<RootSpace> at) {
        const bool isLeftToParent = &pressed == parent && (kind_ == ui::PopoverKind::List || anchor_.contains(at));
        if (&pressed != window_.get() && !isLeftToParent) close();
    });
    if (kind_ == ui::PopoverKind::Search) takeKeyboard();
    window_->show();
    context_.popoverOpened(*window_);
}

void PopoverWindow::takeKeyboard() {
    window_->canvas().root().layoutIfNeeded();
    window_->setKeyboardListener(nullptr);
    editor_ = std::make_unique<FieldEditor>(context_, *window_);
    window_->setKeyboardListener(editor_.get());
    if (window_->isShown()) editor_->mapped();
}

void PopoverWindow::resize(Size size) {
    if (!window_) return;
    place(size);
    window_->show();  // painted with the window's new size, not a frame later
}

void PopoverWindow::close() {
    refused_.reset();
    presses_.reset();
    context_.popoverWillClose(window_.get());
    context_.retire(std::move(window_));
    editor_.reset();
    closed_();
}

void PopoverWindow::place(Size size) {
    size_ = size;
    const Size window{size.width + 2 * kHairline, size.height + 2 * kHairline + kArrowHeight};
    place_ = placePopover(anchor_, edge_, window, monitorAt(anchor_.center(), context_.monitors()));
    scrollBy(0);
}

void PopoverWindow::scrollBy(double distance) {
    const double shown = place_.window.height - kArrowHeight - 2 * kHairline;
    scrolled_ = std::clamp(scrolled_ + distance, 0.0, std::max(0.0, size_.height - shown));
    apply();
}

void PopoverWindow::apply() {
    const PixelRect frame = pixelsTouched(place_.window);
    const int arrow = static_cast<int>(kArrowHeight);
    const int top = place_.arrowSide == ui::Edge::Top ? arrow : 0;
    const Bubble bubble{
        {0, top, frame.width, frame.height - arrow}, kRadius, BubbleArrow{place_.arrowSide, place_.arrowTipX}};
    window_->setFrame(frame, {kHairline, top + kHairline - scrolled_}, bubble);
}

}  // namespace morvel::x11
