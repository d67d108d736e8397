#include "Bar/MorvelController.h"

namespace morvel {

namespace {

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
    input.compactAtTop = settings.compactAtTop.value();
    input.matchMenuBarHeight = settings.matchMenuBarHeight.value();
    input.barHeight = settings.barHeight.value();
    input.statusBarThickness = services.screens.statusBarThickness();
    return input;
}

ui::Edge uiEdge(MorvelEdge edge) {
    return edge == MorvelEdge::Top ? ui::Edge::Top : ui::Edge::Bottom;
}

}  // namespace

MorvelController::MorvelController(const BarServices& services, const Screen& screen, std::optional<SpaceID> spaceID)
    : services_(services),
      screen_(screen),
      view_(services, *screen.displayID, spaceID),
      panel_(services.toolkit, {frame(), uiEdge(services.settings.barEdge.value())}, view_),
      autoHide_({services.toolkit, services.mainLoop, services.screens}, services.settings.barEdge.value(),
                {panel_, [this] { return frame(); }}) {
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
}

void MorvelController::reframe() {
    autoHide_.updateGeometry();
}

Rect<ScreenSpace> MorvelController::frame() const {
    return barFrame(frameInput(services_, screen_));
}

bool MorvelController::isCompactTop() const {
    return services_.settings.barEdge.value() == MorvelEdge::Top && services_.settings.compactAtTop.value();
}

}  // namespace morvel
