#include "Bar/Buttons/WindowButton.h"

#include <algorithm>
#include <utility>

#include "Bar/Buttons/ButtonGeometry.h"
#include "Bar/Buttons/ButtonTexts.h"
#include "Bar/Buttons/WindowMenus.h"
#include "Bar/Drag/RunningWindowDrag.h"
#include "Theme/ButtonAppearance.h"

namespace morvel {

namespace {

constexpr double kIconLeading = 6;
constexpr double kIconToLabel = 6;
constexpr double kLabelTrailing = 8;
/// How far the now-playing badge stands out of the icon's lower right corner.
constexpr double kOverlayOutset = 2;
/// Of the button whose picture is being dragged.
constexpr double kDraggedAlpha = 0.3;

}  // namespace

WindowButton::WindowButton(ButtonServices services, const WindowSnapshot& snapshot, bool isIconOnly,
                           WindowButtonBindings bindings)
    : toolkit_(services.toolkit),
      bindings_(std::move(bindings)),
      snapshot_(snapshot),
      iconView_(services.iconCache),
      titleLabel_(services.toolkit, ButtonGeometry::kTitleFont),
      nowPlayingOverlay_(services.icons),
      nowPlayingHover_(*this, bindings_.nowPlayingControls),
      isIconOnly_(isIconOnly) {
    setCornerRadius(ButtonGeometry::kCornerRadius);
    addSubview(iconView_);
    addSubview(titleLabel_);
    addSubview(activeUnderline_);
    addSubview(nowPlayingOverlay_);
    activeUnderline_.setHidden(true);
    titleLabel_.setHidden(isIconOnly_);
    showTexts();
    iconView_.show(snapshot_.bundleID, snapshot_.pid);
    applyAppearance();
}

void WindowButton::update(const WindowSnapshot& snapshot) {
    // Most updates are of windows that did not change, or only moved.
    const bool sameTexts = snapshot.title == snapshot_.title && snapshot.appName == snapshot_.appName &&
                           snapshot.isWindowless == snapshot_.isWindowless;
    snapshot_ = snapshot;
    if (!sameTexts) showTexts();
    iconView_.show(snapshot_.bundleID, snapshot_.pid);
}

void WindowButton::showTexts() {
    ButtonTexts texts = buttonTexts(snapshot_);
    showAlpha();
    setTooltip(std::move(texts.tooltip));
    setAccessibilityLabel(texts.label);
    titleLabel_.setText(std::move(texts.label));
    applyWidthConstraint();
}

void WindowButton::showAlpha() {
    setAlpha(isDragged_ ? kDraggedAlpha : buttonTexts(snapshot_).alpha);
}

void WindowButton::setActive(bool active) {
    if (std::exchange(isActive_, active) != active) applyAppearance();
}

void WindowButton::setIconOnly(bool iconOnly) {
    if (std::exchange(isIconOnly_, iconOnly) == iconOnly) return;
    titleLabel_.setHidden(iconOnly);
    setNeedsLayout();
    applyWidthConstraint();
}

void WindowButton::setNowPlaying(bool nowPlaying) {
    if (std::exchange(isNowPlaying_, nowPlaying) == nowPlaying) return;
    nowPlayingOverlay_.setVisible(nowPlaying);
    if (!nowPlaying) nowPlayingHover_.cancel();
}

void WindowButton::applyAppearance() {
    const WindowButtonState state{.isActive = isActive_,
                                  .isHovered = isHovered(),
                                  .hasBorders = bindings_.bordersProvider(),
                                  .style = bindings_.activeStyleProvider(),
                                  .accent = bindings_.accentProvider(),
                                  .barEdge = bindings_.barEdgeProvider()};
    apply(windowButtonAppearance(state), *this);
    underlineEdge_ = activeUnderline(state);
    if (underlineEdge_) activeUnderline_.setBackground(state.accent);
    activeUnderline_.setHidden(!underlineEdge_);
    layoutUnderline();
}

void WindowButton::applyWidthConstraint() {
    // The label is measured only where the width depends on it: measuring shapes the text.
    const auto required = ButtonGeometry::requiredWidth(isIconOnly_, bindings_.widthProvider());
    const double width = required ? *required : ButtonGeometry::titleDrivenWidth(titleLabel_.intrinsicSize().width);
    if (std::exchange(width_, width) != width) intrinsicSizeChanged();
}

Size WindowButton::intrinsicSize() const {
    return {width_, ButtonGeometry::kHeight};
}

void WindowButton::mouseDown(const ui::MouseEvent& event) {
    nowPlayingHover_.pressed();
    if (event.button == ui::MouseButton::Left) press_.down(event.location);
}

void WindowButton::mouseDragged(const ui::MouseEvent& event) {
    nowPlayingHover_.cancel();
    if (event.button != ui::MouseButton::Left) return;
    if (press_.drag(event.location) == PressOutcome::DragStart) beginDrag();
}

void WindowButton::beginDrag() {
    isDragged_ = true;
    auto ended = lifetime_.whileAlive([this](ui::DragOperation) {
        isDragged_ = false;
        showAlpha();
    });
    toolkit_.beginDrag(*this, RunningWindowDrag::item(snapshot_.id),
                       [ended, release = bindings_.reveal.hold()](ui::DragOperation operation) {
                           ended(operation);
                           release();
                       });
    showAlpha();  // only now: the picture is of the button as it was
}

void WindowButton::mouseUp(const ui::MouseEvent& event) {
    if (isReleasedInside(event, ui::MouseButton::Middle) && !snapshot_.isWindowless && bindings_.onClose) {
        const auto close = bindings_.onClose;  // may destroy this button
        return close();
    }
    if (event.button == ui::MouseButton::Left && press_.up() == PressOutcome::Click) accessibilityPress();
}

bool WindowButton::accessibilityPress() {
    if (!bindings_.onClick) return false;
    const auto click = bindings_.onClick;  // the click may destroy this button
    click();
    return true;
}

void WindowButton::rightMouseDown(const ui::MouseEvent& event) {
    nowPlayingHover_.pressed();
    toolkit_.popUpMenu(contextMenu(), *this, event.location, bindings_.reveal.hold());
}

void WindowButton::mouseEntered(const ui::MouseEvent& event) {
    ButtonView::mouseEntered(event);
    if (isNowPlaying_ && snapshot_.bundleID && !press_.isPending()) nowPlayingHover_.entered(*snapshot_.bundleID);
}

void WindowButton::mouseExited() {
    ButtonView::mouseExited();
    nowPlayingHover_.cancel();
}

bool WindowButton::acceptsDrag(const ui::DragPasteboard& pasteboard) const {
    return !RunningWindowDrag::isIn(pasteboard);  // our own buttons are the strip's
}

ui::DragOperation WindowButton::draggingEntered(const ui::DragInfo& info) {
    const ButtonKind kind =
        snapshot_.isWindowless ? ButtonKind(WindowlessTarget{snapshot_.pid}) : ButtonKind(WindowTarget{snapshot_.id});
    if (auto* hover = bindings_.dragHoverProvider()) hover->dragEntered(snapshot_.id, kind, info.pasteboard);
    return ui::DragOperation::None;
}

void WindowButton::draggingExited() {
    if (auto* hover = bindings_.dragHoverProvider()) hover->dragExited(snapshot_.id);
}

void WindowButton::draggingEnded() {
    if (auto* hover = bindings_.dragHoverProvider()) hover->dragEnded();
}

void WindowButton::layout() {
    const double height = frame().height;
    const double iconX = isIconOnly_ ? (frame().width - ButtonGeometry::kIconSize) / 2 : kIconLeading;
    const Rect<ViewSpace> icon{iconX, (height - ButtonGeometry::kIconSize) / 2, ButtonGeometry::kIconSize,
                               ButtonGeometry::kIconSize};
    iconView_.setFrame(icon);
    nowPlayingOverlay_.setFrame({icon.maxX() + kOverlayOutset - NowPlayingButtonOverlay::kSize,
                                 icon.maxY() + kOverlayOutset - NowPlayingButtonOverlay::kSize,
                                 NowPlayingButtonOverlay::kSize, NowPlayingButtonOverlay::kSize});
    if (!isIconOnly_) {
        const double labelX = icon.maxX() + kIconToLabel;
        const double labelHeight = titleLabel_.intrinsicSize().height;
        titleLabel_.setFrame(
            {labelX, (height - labelHeight) / 2, std::max(0.0, frame().width - kLabelTrailing - labelX), labelHeight});
    }
    layoutUnderline();
}

void WindowButton::layoutUnderline() {
    if (!underlineEdge_) return;
    const double y = *underlineEdge_ == ui::Edge::Top ? 0 : frame().height - ButtonGeometry::kUnderlineHeight;
    activeUnderline_.setFrame({0, y, frame().width, ButtonGeometry::kUnderlineHeight});
}

ui::Menu WindowButton::contextMenu() const {
    const ProcessID pid = snapshot_.pid;
    const auto quit = [quit = bindings_.app.quit, pid] { quit(pid); };
    if (!snapshot_.isWindowless) {
        return WindowMenus::forWindow(
            snapshot_.appName, bindings_.otherScreensProvider(),
            {.close = bindings_.onClose, .quit = quit, .pin = bindings_.onPin, .moveTo = bindings_.onMoveTo});
    }
    return WindowMenus::forApplication(
        snapshot_.appName,
        {.quit = quit,
         .forceQuit = [forceQuit = bindings_.app.forceQuit, pid] { forceQuit(pid); },
         .pin = bindings_.onPin,
         .showInFinder = [show = bindings_.app.showInFinder, bundleID = snapshot_.bundleID] { show(bundleID); }});
}

}  // namespace morvel
