#include "Bar/MorvelController.h"

#include <utility>

#include "Bar/BarFrame.h"
#include "Bar/MenuBar/CompactTopLeftBuffer.h"
#include "Bar/MenuBar/MenuBarStrip.h"
#include "Settings/BarEdge.h"

namespace morvel {

namespace {

/// All that the frame depends on but the menu bar.
BarFrameInput frameInput(const BarServices& services, const Screen& screen) {
    const SettingsStore& settings = services.settings;
    const std::vector<Screen> screens = services.screens.screens();
    const Screen& first = screens.empty() ? screen : screens.front();
    BarFrameInput input;
    input.screenFrame = screen.frame;
    input.screenVisibleFrame = screen.visibleFrame;
    input.firstScreenFrame = first.frame;
    input.firstScreenVisibleFrame = first.visibleFrame;
    input.edge = settings.barEdge.value();
    input.barHeight = settings.barHeight.value();
    input.statusBarThickness = services.screens.statusBarThickness();
    return input;
}

std::optional<RunningZoneLayout::NotchRange> notchOf(const Screen& screen) {
    if (!screen.auxiliaryTopLeft || !screen.auxiliaryTopRight) return std::nullopt;
    return RunningZoneLayout::NotchRange{screen.auxiliaryTopLeft->maxX() - screen.frame.minX(),
                                         screen.auxiliaryTopRight->minX() - screen.frame.minX()};
}

}  // namespace

MorvelController::MorvelController(const BarServices& services, MenuBar& menuBar, const Screen& screen,
                                   std::optional<SpaceID> spaceID)
    : services_(services),
      menuBar_(menuBar),
      screen_(screen),
      compactTop_(measured()),
      view_(services, *screen.displayID, spaceID),
      panel_(services.toolkit, {frame(), uiEdge(services.settings.barEdge.value())}, view_),
      rightStrip_(makeRightStrip()),
      autoHide_({services.toolkit, services.mainLoop, services.screens}, services.settings.barEdge.value(),
                {panel_, [this] { return frame(); }}, rightStripPanel()) {
    view_.setCompactTop(compactTop_);
    view_.pinReveal = lifetime_.whileAlive([this] { autoHide_.pinReveal(); });
    view_.unpinReveal = lifetime_.whileAlive([this] { autoHide_.unpinReveal(); });
    clampSubscription_ = services_.settings.clampWindows.subscribe([this](bool) { applyReservedSpace(); });
    // A bar that hides from the start is never seen where it would stand.
    autoHideSubscription_ = services_.settings.autoHide.subscribe([this](bool enabled) { applyAutoHide(enabled); });
}

void MorvelController::applyAutoHide(bool enabled) {
    applyReservedSpace();
    enabled ? autoHide_.start() : autoHide_.stop();
}

void MorvelController::applyReservedSpace() {
    panel_.setReservesSpace(services_.settings.clampWindows.value() && !services_.settings.autoHide.value());
}

void MorvelController::update(const Screen& screen, std::optional<SpaceID> spaceID) {
    screen_ = screen;
    view_.setDisplay(*screen.displayID, spaceID);
    reframe();
    autoHide_.setAway(false);
}

void MorvelController::reframe() {
    compactTop_ = measured();
    view_.setCompactTop(compactTop_);
    updateRightStrip();
    autoHide_.updateGeometry();
}

void MorvelController::setCompactTopExpanded(bool expanded) {
    if (std::exchange(isExpanded_, expanded) == expanded) return;
    menuBar_.forget();
    reframe();
}

CompactTopState MorvelController::measured() const {
    CompactTopState state;
    const SettingsStore& settings = services_.settings;
    if (settings.barEdge.value() != MorvelEdge::Top) return state;
    state.notch = notchOf(screen_);
    if (!isCompactTop() || !hasMenuBar(screen_)) return state;
    const bool detectsTitles = settings.autoDetectMacOSMenuWidth.value();  // else nobody is asked
    const auto titlesEnd = detectsTitles ? menuBar_.rightmostMenuTitleX(screen_) : std::nullopt;
    const int count = settings.compactTopCollapsedItemCount.value();
    state.leftReserve = CompactTopLeftBuffer::effective(screen_, settings, titlesEnd);
    state.rightReserve =
        CompactTopBuffer::effective(screen_, settings, menuBar_.statusItems(screen_, count), isExpanded_);
    state.toggleWidth = kCompactTopStripWidth;
    state.isExpanded = isExpanded_;
    return clearOfNotch(state, screen_.frame.width);
}

std::unique_ptr<CompactTopRightStripController> MorvelController::makeRightStrip() {
    if (compactTop_.toggleWidth == 0) return nullptr;
    return std::make_unique<CompactTopRightStripController>(services_.toolkit, services_.icons, rightStripFrame(),
                                                            [this] { setCompactTopExpanded(!isExpanded_); });
}

std::optional<AutoHidePanel> MorvelController::rightStripPanel() {
    if (!rightStrip_) return std::nullopt;
    return AutoHidePanel{rightStrip_->panel(), [this] { return rightStripFrame(); }};
}

Rect<ScreenSpace> MorvelController::rightStripFrame() const {
    Rect<ScreenSpace> seen = frame();
    seen.width -= compactTop_.unseenEnd;
    return compactTopStripFrame(seen);
}

/// There is one while the screen has a menu bar.
void MorvelController::updateRightStrip() {
    if (compactTop_.toggleWidth == 0) {
        autoHide_.setSecondary(std::nullopt);
        rightStrip_.reset();
    } else if (!rightStrip_) {
        rightStrip_ = makeRightStrip();
        autoHide_.setSecondary(rightStripPanel());
    }
    if (rightStrip_) rightStrip_->setExpanded(isExpanded_);
}

Rect<ScreenSpace> MorvelController::frame() const {
    BarFrameInput input = frameInput(services_, screen_);
    input.compactAtTop = isCompactTop();
    input.leftBuffer = compactTop_.leftReserve;
    input.rightBuffer = compactTop_.rightReserve;
    // Where the system has no menu bar, what takes room at the top is another program's panel and nothing to match.
    input.matchMenuBarHeight = menuBar_.exists() && services_.settings.matchMenuBarHeight.value();
    if (input.edge == MorvelEdge::Top && input.matchMenuBarHeight) input.menuBarHeight = menuBar_.height(screen_);
    return barFrame(input);
}

bool MorvelController::isCompactTop() const {
    return menuBar_.exists() && services_.settings.barEdge.value() == MorvelEdge::Top &&
           services_.settings.compactAtTop.value();
}

}  // namespace morvel
