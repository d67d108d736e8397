#include "Bar/MorvelView.h"

#include <algorithm>
#include <utility>

#include "Bar/Buttons/ButtonGeometry.h"
#include "Bar/Drag/RunningWindowDrag.h"
#include "Bar/Layout/RunningZoneWidths.h"
#include "Bar/Pinned/FileDrag.h"
#include "Theme/AccentResolver.h"

namespace morvel {

namespace {

/// Room at the bar's end; part of the system strip, so that it is subtracted from the running zone with it.
constexpr double kBarInset = 8;
constexpr double kStripSpacing = 4;
constexpr double kDividerWidth = 1;
/// How far the divider stays clear of the bar's edges, but no more than a quarter of the bar: one as low as the menu
/// bar would have no more than a dot.
constexpr double kDividerInset = 10;

}  // namespace

MorvelView::MorvelView(const BarServices& services, DisplayID screenID, std::optional<SpaceID> spaceID)
    : services_(services),
      screenID_(screenID),
      spaceID_(spaceID),
      backgroundLayer_(*this),
      systemButtons_(
          services, reveal(), [this] { closeLists(); }, [this] { placeSystemButtons(); }),
      launchStrip_(services, screenID, reveal()),
      systemStack_(ui::StackView::Axis::Horizontal, kStripSpacing),
      nowPlayingPopover_({services.toolkit, services.icons, services.iconCache}),
      running_(services, screenID, reveal(), drops(), nowPlayingControls()),
      rebuilds_(services.mainLoop, services.store, rebuildActions()) {
    running_.onClick = [this] { launchStrip_.closeOverflow(); };
    launchStrip_.onClick = [this] { running_.closeGroupPopover(); };
    systemStack_.setInsets(0, kBarInset);
    divider_.setBackground(ui::kSeparatorColor);
    running_.stack().setClipsToBounds(true);
    addSubview(launchStrip_.stack());
    addSubview(divider_);
    addSubview(running_.stack());
    addSubview(systemStack_);
    placeSystemButtons();
    subscribeToStores();
    subscribeToSettings();
    // Shown with its contents from the first frame on.
    rebuildRunningIfNeeded(*services_.store.windows().value());
}

RebuildSchedule::Actions MorvelView::rebuildActions() {
    return {
        [&width = services_.settings.windowButtonWidthMode] { return width.value() == WindowButtonWidthMode::Free; },
        [this](const WindowSnapshot& window) { retitle(window); }, [this](Rebuild due) { rebuild(due); }};
}

BarReveal MorvelView::reveal() {
    return {lifetime_.whileAlive([this] { pinReveal(); }), lifetime_.whileAlive([this] { unpinReveal(); })};
}

RunningStrip::Drops MorvelView::drops() {
    return {[this](const ui::DragPasteboard& pasteboard) { return foreignRunningWindowUUID(pasteboard); },
            [this](const WindowID& id, size_t index) { return runningWindowDropped(id, index); }};
}

// The running strip gets what room they leave.
void MorvelView::placeSystemButtons() {
    launchStrip_.setSystemButtons(systemButtons_.shown());
    setNeedsLayout();
    rebuilds_.schedule(Rebuild::IfNeeded);
}

NowPlayingControls MorvelView::nowPlayingControls() {
    return {&services_.mainLoop,
            [this](ui::View& button, const std::string& bundleID) { openNowPlaying(button, bundleID); },
            [this](const ui::View& button) { nowPlayingPopover_.closeBeside(button); }};
}

void MorvelView::openNowPlaying(ui::View& button, const std::string& bundleID) {
    const std::optional<NowPlayingState> state = services_.nowPlaying.state().value();
    if (!state || state->bundleID != bundleID) return;
    if (!nowPlayingPopover_.isShown()) pinReveal();
    nowPlayingPopover_.show(button, *state, services_.nowPlaying, services_.settings.barEdge.value());
}

void MorvelView::subscribeToStores() {
    // After the launch strip, which has its new width then. Pinned applications may have placeholders no more.
    const auto follows = [this](const auto&) { rebuilds_.schedule(Rebuild::IfNeeded); };
    subscriptions_.push_back(services_.pinned.pinnedItems().subscribe(follows, Current::Skip));
    subscriptions_.push_back(services_.settings.pinnedMaxVisible.subscribe(follows, Current::Skip));
    subscriptions_.push_back(services_.spaceQuery.observeMoves([this] { rebuilds_.schedule(Rebuild::IfNeeded); }));
    subscriptions_.push_back(services_.store.focusedID().subscribe(
        [this](const std::optional<WindowID>& focused) { running_.applyFocus(focused); }));
    nowPlayingPopover_.onDidClose = [this] { unpinReveal(); };
    subscriptions_.push_back(
        services_.nowPlaying.state().subscribe([this](const std::optional<NowPlayingState>& state) {
            running_.applyNowPlaying(state ? std::optional(state->bundleID) : std::nullopt);
        }));
}

void MorvelView::subscribeToSettings() {
    SettingsStore& settings = services_.settings;
    const auto rebuilds = [this](const auto&) { rebuilds_.schedule(Rebuild::Forced); };
    subscriptions_.push_back(settings.groupingMode.subscribe(rebuilds, Current::Skip));
    subscriptions_.push_back(settings.windowSpaceMode.subscribe(rebuilds, Current::Skip));
    subscriptions_.push_back(settings.windowlessAppsMode.subscribe(rebuilds, Current::Skip));
    subscriptions_.push_back(settings.windowlessDisplayMode.subscribe(rebuilds, Current::Skip));
    subscriptions_.push_back(settings.windowBlacklist.subscribe(rebuilds, Current::Skip));

    // Existing buttons take their new width at once; whether they still fit is decided with the next rebuild.
    const auto widens = [this](const auto&) {
        running_.applyWidth();
        rebuilds_.schedule(Rebuild::Forced);
    };
    subscriptions_.push_back(settings.windowButtonWidthMode.subscribe(widens, Current::Skip));
    subscriptions_.push_back(settings.windowButtonCustomWidth.subscribe(widens, Current::Skip));

    const auto restyles = [this](const auto&) {
        running_.applyAppearance();
        launchStrip_.applyAppearance();
    };
    subscriptions_.push_back(settings.showButtonBorders.subscribe(restyles, Current::Skip));
    subscriptions_.push_back(settings.activeButtonStyle.subscribe(restyles, Current::Skip));
    subscriptions_.push_back(settings.accentColorMode.subscribe(restyles, Current::Skip));
    subscriptions_.push_back(settings.accentColorCustom.subscribe(restyles, Current::Skip));

    const auto repaintsBackground = [this](const auto&) {
        backgroundLayer_.apply(services_.settings.barBackgroundStyle.value(),
                               services_.settings.barBlurIntensity.value());
    };
    subscriptions_.push_back(settings.barBackgroundStyle.subscribe(repaintsBackground));
    subscriptions_.push_back(settings.barBlurIntensity.subscribe(repaintsBackground, Current::Skip));
}

void MorvelView::setDisplay(DisplayID screenID, std::optional<SpaceID> spaceID) {
    screenID_ = screenID;
    spaceID_ = spaceID;
    launchStrip_.setScreenID(screenID);
    running_.setScreenID(screenID);
    // The screen's frame and the windows' Spaces may have changed though neither identifier has.
    rebuildRunningIfNeeded(*services_.store.windows().value());
}

void MorvelView::setCompactTop(const CompactTopState& state) {
    if (compactTop_ == state) return;
    const bool wasExpanded = std::exchange(compactTop_, state).isExpanded;
    systemStack_.setInsets(0, kBarInset + state.toggleWidth + state.unseenEnd);
    launchStrip_.stack().setGap(notchIn(0));
    setNeedsLayout();
    if (wasExpanded != state.isExpanded) return forceRebuildRunning();
    rebuildRunningIfNeeded(*services_.store.windows().value());
}

bool MorvelView::isCompactTopExpanded() const {
    const SettingsStore& settings = services_.settings;
    return RunningZoneLayout::isCompactTopExpanded(settings.barEdge.value(), settings.compactAtTop.value(),
                                                   compactTop_.isExpanded);
}

void MorvelView::rebuild(Rebuild due) {
    const WindowMap& windows = *services_.store.windows().value();
    launchStrip_.windowsChanged(windows);
    due == Rebuild::Forced ? forceRebuildRunning() : rebuildRunningIfNeeded(windows);
}

void MorvelView::retitle(const WindowSnapshot& window) {
    running_.retitle(window);
    lastRunningProjection_.reset();  // it has the former title, which may come back
}

void MorvelView::rebuildRunningIfNeeded(const WindowMap& windows) {
    const ProjectionContext context = projectionContext();
    SpaceQueryCache spaces = makeSpaceQueryCache();
    std::vector<WindowSnapshot> filtered = windowsOnThisScreen(windows, context, spaces);
    const GroupingMode mode = services_.settings.groupingMode.value();
    const bool isFirst = !lastRunningProjection_;
    if (isFirst) lastRunningProjection_.emplace();
    const bool isChanged = lastRunningProjection_->update(filtered, context, mode) || isFirst;
    if (!isChanged && lastAvailableWidth_ == availableWidth()) return;
    rebuildRunning(std::move(filtered));
}

void MorvelView::forceRebuildRunning() {
    lastRunningProjection_.reset();
    SpaceQueryCache spaces = makeSpaceQueryCache();
    rebuildRunning(windowsOnThisScreen(*services_.store.windows().value(), projectionContext(), spaces));
}

ProjectionContext MorvelView::projectionContext() const {
    const SettingsStore& settings = services_.settings;
    return {services_.screens.screens(),
            services_.screens.mainDisplay(),
            screenID_,
            spaceID_,
            settings.windowSpaceMode.value(),
            settings.windowlessAppsMode.value(),
            settings.windowBlacklist.value(),
            launchStrip_.pinnedBundleIDs()};
}

SpaceQueryCache MorvelView::makeSpaceQueryCache() const {
    return {[this](WindowNumber window) { return services_.spaceQuery.spaces(window); },
            [this](DisplayID display) -> std::optional<SpaceID> {
                const auto snapshot = services_.spaceQuery.snapshotByDisplay();
                const auto found = snapshot.find(display);
                if (found == snapshot.end() || found->second.spaces.empty()) return std::nullopt;
                return found->second.spaces.front();
            }};
}

double MorvelView::availableWidth() const {
    const SettingsStore& settings = services_.settings;
    const std::vector<Screen> screens = services_.screens.screens();
    const auto screen = std::ranges::find(screens, std::optional(screenID_), &Screen::displayID);
    RunningZoneLayout::RunningZoneRoom room;
    room.baseWidth = screen != screens.end() ? screen->frame.width : bounds().width;
    room.edge = settings.barEdge.value();
    room.leftReserve = compactTop_.leftReserve;
    room.rightReserve = compactTop_.rightReserve;
    room.pinnedWidth = launchStrip_.stack().intrinsicSize().width;
    room.systemWidth = systemStack_.intrinsicSize().width;
    room.spacing = running_.spacing();
    // The pinned strip has been pushed past what it shares with the notch.
    const auto notch = notchIn(room.pinnedWidth + room.spacing);
    if (notch && notch->end > 0) room.notch = {std::max(notch->start, 0.0), notch->end};
    // A bar over the menu bar reserves nothing, but has the notch to avoid as well.
    room.compactAtTop = settings.compactAtTop.value() || room.notch;
    const auto buttonWidth = RunningZoneLayout::resolveWindowButtonWidth(settings.windowButtonWidthMode.value(),
                                                                         settings.windowButtonCustomWidth.value());
    const double wasted =
        room.notch ? RunningZoneLayout::wastedBeforeNotch(room.notch->start, buttonWidth, room.spacing) : 0;
    return std::max(RunningZoneLayout::availableRunningWidth(room) - wasted, RunningZoneLayout::kMinAvailableWidth);
}

void MorvelView::rebuildRunning(std::vector<WindowSnapshot> filtered) {
    const SettingsStore& settings = services_.settings;
    lastAvailableWidth_ = availableWidth();
    const RunningZoneLayout::FlatWidthRule rule{
        settings.windowButtonWidthMode.value(), settings.windowButtonCustomWidth.value(), running_.spacing(),
        [this](std::string_view title) { return services_.toolkit.textSize(title, ButtonGeometry::kTitleFont).width; }};
    const auto mode = RunningZoneLayout::effectiveMode(settings.groupingMode.value(), isCompactTopExpanded());
    auto plan = RunningZoneLayout::planRunningZone(std::move(filtered), rule, lastAvailableWidth_, mode,
                                                   settings.windowlessDisplayMode.value());
    running_.apply(arranger_.arrange(std::move(plan.decision), std::move(plan.windowless)), plan.windowlessIconOnly);
}

/// A click on the bar takes away the lists that are open beside it. A press on a button does not yet: it may begin a
/// drag into the list of the pinned items.
void MorvelView::closeLists() {
    running_.closeGroupPopover();
    launchStrip_.closeOverflow();
}

void MorvelView::mouseDown(const ui::MouseEvent&) {
    closeLists();
}

void MorvelView::rightMouseDown(const ui::MouseEvent& event) {
    closeLists();
    if (!services_.actions.contextMenu) return;
    services_.toolkit.popUpMenu(services_.actions.contextMenu(), *this, event.location, reveal().hold());
}

std::optional<WindowID> MorvelView::foreignRunningWindowUUID(const ui::DragPasteboard& pasteboard) const {
    const auto id = RunningWindowDrag::window(pasteboard);
    return id && !running_.shows(*id) ? id : std::nullopt;
}

void MorvelView::moveRunningWindow(const WindowID& id, size_t position) {
    arranger_.moveRunningWindow(id, position);
    rebuilds_.schedule(Rebuild::Forced);
}

void MorvelView::adoptRunningOrder(const RunningStripArranger& former) {
    arranger_.adopt(former);
    forceRebuildRunning();
}

bool MorvelView::runningWindowDropped(const WindowID& id, size_t index) {
    const WindowMap& windows = *services_.store.windows().value();
    const auto window = windows.find(id);
    if (window == windows.end()) return false;  // closed while it was dragged
    if (running_.shows(id)) {
        moveRunningWindow(id, index);
        return true;
    }
    if (window->second.isWindowless || !services_.actions.onMoveWindow) return false;
    arranger_.expectArrival(id, index);
    services_.actions.onMoveWindow(id, screenID_);
    return true;
}

void MorvelView::installDragHighlightIfNeeded() {
    if (dragHighlightView_) return;
    dragHighlightView_ = std::make_unique<DragHighlightView>(services_.mainLoop);
    const auto strips = std::ranges::find(subviews(), &launchStrip_.stack());  // the background lies before them
    insertSubview(*dragHighlightView_, static_cast<size_t>(strips - subviews().begin()));
}

void MorvelView::setForeignDragHighlight(bool on) {
    if (std::exchange(isForeignDragActive_, on) == on) return;
    installDragHighlightIfNeeded();
    dragHighlightView_->setOn(on, AccentResolver::resolved(services_.settings));
}

void MorvelView::setPinnedByDrag(bool pinned) {
    if (std::exchange(isPinnedByDrag_, pinned) == pinned) return;
    pinned ? pinReveal() : unpinReveal();
}

void MorvelView::windowDragEntered(const ui::DragInfo& info) {
    setPinnedByDrag(true);
    const auto window = RunningWindowDrag::window(info.pasteboard);
    const bool isOwn = (window && running_.shows(*window)) || launchStrip_.isPinnedItemDragged(info.pasteboard);
    setForeignDragHighlight(!isOwn);
}

void MorvelView::windowDragExited() {
    setPinnedByDrag(false);
    setForeignDragHighlight(false);
}

void MorvelView::windowDragEnded() {
    setPinnedByDrag(false);
    setForeignDragHighlight(false);
    running_.dragEnded();
    launchStrip_.dragEnded();
}

bool MorvelView::acceptsDrag(const ui::DragPasteboard& pasteboard) const {
    return FileDrag::isIn(pasteboard);
}

ui::DragOperation MorvelView::draggingEntered(const ui::DragInfo& info) {
    return FileDrag::operation(info.pasteboard);
}

bool MorvelView::performDragOperation(const ui::DragInfo& info) {
    return launchStrip_.filesDropped(info);
}

void MorvelView::layout() {
    const double width = bounds().width;
    const double height = bounds().height;
    const double pinned = launchStrip_.stack().intrinsicSize().width;
    const double system = systemStack_.intrinsicSize().width;
    backgroundLayer_.layout();
    if (dragHighlightView_) dragHighlightView_->setFrame(bounds());
    launchStrip_.stack().setFrame({0, 0, pinned, height});
    systemStack_.setFrame({width - system, 0, system, height});
    divider_.setHidden(launchStrip_.stack().arrangedSubviews().empty());
    const double inset = std::min(kDividerInset, height / 4);
    divider_.setFrame({pinned + (running_.spacing() - kDividerWidth) / 2, inset, kDividerWidth, height - 2 * inset});
    const double runningWidth = std::max(width - pinned - system - 2 * running_.spacing(), 0.0);
    const double runningX = pinned + running_.spacing();
    running_.stack().setGap(notchIn(runningX));
    running_.stack().setFrame({runningX, 0, runningWidth, height});
}

/// The notch in the space of a strip that begins at this x. The bar begins where the left reserve ends.
std::optional<ui::StackView::Gap> MorvelView::notchIn(double stripX) const {
    if (!compactTop_.notch) return std::nullopt;
    const double origin = compactTop_.leftReserve + stripX;
    return ui::StackView::Gap{compactTop_.notch->start - origin, compactTop_.notch->end - origin};
}

}  // namespace morvel
