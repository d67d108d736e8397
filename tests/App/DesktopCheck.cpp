#include "App/DesktopCheck.h"

#include <algorithm>

#include "Bar/Buttons/ButtonTexts.h"
#include "Bar/Drag/DragPlaceholderButton.h"
#include "Pinned/PinnedOverflowSlicing.h"
#include "Platform/AXNames.h"

namespace morvel {

namespace {

size_t viewsIn(const ui::View& root) {
    size_t count = 1;
    for (const ui::View* child : root.subviews()) count += viewsIn(*child);
    return count;
}

bool contains(const ui::View& root, const ui::View* wanted) {
    return &root == wanted ||
           std::ranges::any_of(root.subviews(), [&](const ui::View* child) { return contains(*child, wanted); });
}

}  // namespace

void DesktopCheck::storeEqualsDesktop() {
    size_t expected = 0;
    for (const RunningApplication& running : desktop_.workspace().running) {
        const sim::SimApp* app = desktop_.app(running.pid);
        ASSERT_NE(app, nullptr);
        if (running.policy != ActivationPolicy::Regular) continue;
        size_t counting = 0;
        for (const auto& window : app->windows()) {
            if (!window->isOpen() || !countable_.contains(window.get())) continue;
            expectRecord(*window);
            ++counting;
        }
        const auto mine = desktop_.delegate().windowStore()->snapshot(running.pid);
        if (counting == 0) {
            EXPECT_EQ(std::ranges::count(mine, true, &WindowSnapshot::isWindowless), 1) << *running.localizedName;
        }
        expected += std::max<size_t>(counting, 1);
    }
    EXPECT_EQ(records().size(), expected) << "records of windows or applications that are gone, or doubled ones";
}

void DesktopCheck::expectRecord(const sim::SimWindow& window) {
    std::vector<WindowSnapshot> found;
    for (const auto& [id, record] : records())
        if (record.cgWindowID == window.number()) found.push_back(record);
    ASSERT_EQ(found.size(), 1u) << "\"" << window.title() << "\"";
    const WindowSnapshot& record = found.front();
    const auto& attributes = desktop_.accessibility().at(window.element()).attributes;
    EXPECT_EQ(record.title, window.title());
    EXPECT_EQ(record.frame, window.frame()) << window.title();
    EXPECT_EQ(record.isFullscreen, std::get<bool>(attributes.find(ax::kFullScreen)->second)) << window.title();
    EXPECT_FALSE(record.isWindowless);
}

void DesktopCheck::barsShowWhatTheyShould() {
    const std::vector<Screen> screens = desktop_.screens().screens();
    const auto isBar = [](const sim::SimPanel* panel) { return panel->options.kind == ui::PanelKind::Bar; };
    ASSERT_EQ(static_cast<size_t>(std::ranges::count_if(desktop_.toolkit().panels(), isBar)), screens.size());
    const bool isTop = desktop_.settings().barEdge.value() == MorvelEdge::Top;
    // Nothing shows status items here, so that a compact bar keeps what the settings reserve.
    const bool isCompact = isTop && desktop_.settings().compactAtTop.value();
    const double reserved = isCompact ? desktop_.settings().compactTopRightBuffer.value() : 0;
    const bool hides = desktop_.settings().autoHide.value();
    ASSERT_EQ(desktop_.toolkit().panels().size(), screens.size() * (1 + (isCompact ? 1 : 0) + (hides ? 1 : 0)))
        << "each with its toggle and the strip at its edge";
    for (size_t i = 0; i < screens.size(); ++i) {
        ui::View& bar = desktop_.bar(i);
        const auto panel = std::ranges::find_if(desktop_.toolkit().panels(), [&](const sim::SimPanel* each) {
            return &each->surface == sim::SimToolkit::surfaceOf(bar);
        });
        ASSERT_NE(panel, desktop_.toolkit().panels().end());
        const Rect<ScreenSpace>& screen = screens[i].frame;
        const Rect<ScreenSpace>& frame = (*panel)->frame;
        EXPECT_EQ(frame.x, screen.x);
        EXPECT_EQ(frame.width, screen.width - reserved);
        if (desktop_.isSeen(**panel)) {
            EXPECT_EQ(isTop ? frame.maxY() : frame.minY(), isTop ? screen.maxY() : screen.minY());
        } else {
            EXPECT_TRUE(hides);
        }
        EXPECT_EQ((*panel)->reservesSpace, desktop_.settings().clampWindows.value() && !hides);
        EXPECT_EQ(bar.bounds().size(), frame.size());

        const std::multiset<WindowID> shown = shownOn(bar);
        const std::set<WindowID> expected = expectedOn(screens[i]);
        EXPECT_TRUE(std::ranges::equal(shown, expected))
            << "bar " << i << " shows " << shown.size() << " of " << expected.size() << ": " << desktop_.strip(i);
    }
}

std::set<WindowID> DesktopCheck::expectedOn(const Screen& screen) {
    std::set<WindowID> expected;
    for (const auto& [id, record] : records())
        if (belongsOn(record, screen)) expected.insert(id);
    return expected;
}

bool DesktopCheck::belongsOn(const WindowSnapshot& record, const Screen& screen) {
    SettingsStore& settings = desktop_.settings();
    const auto current = desktop_.currentSpace(*screen.displayID);
    if (record.isWindowless) {
        const bool isListed = settings.windowlessAppsMode.value() == WindowlessAppsMode::AllRunning ||
                              !desktop_.delegate().pinnedStore()->isPinnedApp(record.bundleID.value_or(""));
        const auto* spaces = desktop_.windowServer().display(sim::SimScreens::uuidOf(*screen.displayID));
        return isListed && settings.windowlessAppsMode.value() != WindowlessAppsMode::Off &&
               screen.displayID == desktop_.screens().mainDisplay() && spaces->spaces.front().id64 == current;
    }
    if (record.bundleID && settings.windowBlacklist.value().contains(*record.bundleID)) return false;
    const Point<AXSpace> centre = record.frame.center();
    if (!screen.frame.contains({centre.x, centre.y})) return false;
    if (settings.windowSpaceMode.value() == WindowSpaceMode::AllSpaces) return true;
    const auto& spaces = desktop_.windowServer().windowSpaces;
    const auto mine = spaces.find(*record.cgWindowID);
    return !record.isFullscreen && mine != spaces.end() && mine->second.contains(*current);
}

std::multiset<WindowID> DesktopCheck::shownOn(ui::View& bar) {
    std::multiset<WindowID> shown;
    const auto expectCurrent = [this](const WindowSnapshot& snapshot) {
        const auto record = records().find(snapshot.id);
        ASSERT_NE(record, records().end()) << "a button without a record: " << snapshot.title;
        EXPECT_EQ(snapshot.title, record->second.title);
    };
    for (const WindowButton* button : desktop_.all<WindowButton>(bar)) {
        expectCurrent(button->snapshot());
        const ButtonTexts texts = buttonTexts(button->snapshot());
        EXPECT_EQ(button->titleLabel().text(), texts.label);
        EXPECT_EQ(button->tooltip(), texts.tooltip);
        EXPECT_EQ(button->alpha(), texts.alpha) << texts.label;
        shown.insert(button->snapshot().id);
    }
    for (const GroupedAppButton* group : desktop_.all<GroupedAppButton>(bar)) {
        EXPECT_EQ(group->countBadge().text(), std::to_string(group->windows().size()));
        for (const WindowSnapshot& window : group->windows()) {
            expectCurrent(window);
            shown.insert(window.id);
        }
    }
    return shown;
}

void DesktopCheck::pinsAreShown() {
    const auto& items = desktop_.delegate().pinnedStore()->pinnedItems().value();
    const auto sliced = PinnedOverflowSlicing::slice(items, desktop_.settings().pinnedMaxVisible.value());
    for (size_t i = 0; i < desktop_.screens().screens().size(); ++i) {
        const auto pins = desktop_.all<PinnedAppButton>(desktop_.bar(i));
        EXPECT_TRUE(std::ranges::equal(pins, sliced.visible, {}, &PinnedAppButton::pinnedItem)) << "bar " << i;
        EXPECT_EQ(desktop_.all<PinnedOverflowButton>(desktop_.bar(i)).size(), sliced.hasOverflow() ? 1 : 0);
        EXPECT_TRUE(desktop_.all<DragPlaceholderButton>(desktop_.bar(i)).empty());
        for (const PinnedAppButton* pin : pins) {
            const bool runs = std::ranges::any_of(records(), [&](const auto& entry) {
                return pin->pinnedItem().id() == PinnedItem::app(entry.second.bundleID.value_or(""), "").id();
            });
            EXPECT_EQ(pin->runningDot().isHidden(), !runs) << pin->tooltip();
            EXPECT_EQ(pin->alpha(), 1);
        }
    }
}

void DesktopCheck::nothingIsLeftOver() {
    for (sim::SimPanel* panel : desktop_.toolkit().panels())
        EXPECT_EQ(panel->surface.attachedViews(), viewsIn(panel->surface.root()));
    for (sim::SimPopover* popover : desktop_.toolkit().popovers()) {
        EXPECT_EQ(popover->surface.attachedViews(), popover->isShown ? viewsIn(popover->surface.root()) : 0);
        if (!popover->isShown) continue;
        EXPECT_TRUE(std::ranges::any_of(desktop_.toolkit().panels(), [&](sim::SimPanel* panel) {
            return contains(panel->surface.root(), popover->anchor);
        })) << "a popover whose button is gone";
        for (const GroupRowButton* row : desktop_.all<GroupRowButton>(popover->surface.root()))
            EXPECT_TRUE(records().contains(row->snapshot().id)) << "a row whose window is gone";
    }
}

void DesktopCheck::onlyFocused(const sim::SimWindow& window) {
    const auto focused = desktop_.delegate().windowStore()->focusedID().value();
    ASSERT_TRUE(focused) << window.title();
    EXPECT_EQ(records().at(*focused).cgWindowID, window.number()) << window.title();
    for (size_t i = 0; i < desktop_.screens().screens().size(); ++i)
        for (const WindowButton* button : desktop_.all<WindowButton>(desktop_.bar(i)))
            EXPECT_EQ(button->isActive(), button->snapshot().id == *focused) << button->snapshot().title;
}

}  // namespace morvel
