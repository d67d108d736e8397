// The settings window of the whole macOS host: opened from a bar's menu, and every control used as a person does.
#include "Settings/UI/SettingsWindow.h"

#include <cmath>

#include "Forms.h"
#include "HostStory.h"
#include "Platform/Mac/apple/AppKit/NSFormControls.h"

namespace morvel::mac::checked {
namespace {

class SettingsWindowOnAMac : public HostStory {
protected:
    void run(const std::function<void(SettingsStore&)>& story) {
        HostStory::run([&] {
            openFromMenu();
            story(settings());
        });
    }
    static void openFromMenu() {
        whenMenuPopsUp([&](const NSMenu& menu) { EXPECT_TRUE(choose(menu, "Morvel Settings…")); });
        rightClickBar();
        dispatch().runFor(10ms);
    }
    static NSWindow window() { return keyWindow(); }
    static NSView content() { return window().contentView(); }
    static NSSegmentedControl tabs() { return NSSegmentedControl(viewsOfClass(content(), "NSSegmentedControl").at(0)); }
    static void showTab(NSInteger tab) {
        tabs().select(tab);
        use(tabs());
        dispatch().runFor(1ms);
    }
    static void search(const std::string& query) {
        const NSSearchField field{viewsOfClass(content(), "NSSearchField").at(0)};
        field.setStringValue(NSString::from(query));
        use(field);
    }
    /// The control with this text.
    static NSControl control(const std::string& className, const std::string& property, const std::string& text) {
        for (const NSView& view : viewsOfClass(content(), className))
            if (textProperty(view, property) == text) return NSControl(view);
        ADD_FAILURE() << "no " << className << " with " << text;
        return {};
    }
    static NSControl button(const std::string& title) { return control("NSButton", "title", title); }
    static bool says(const std::string& part) {
        for (const NSView& view : viewsOfClass(content(), "NSTextField"))
            if (NSTextField(view).stringValue().text().find(part) != std::string::npos) return true;
        return false;
    }
};

TEST_F(SettingsWindowOnAMac, OpensOnceInFrontOfEverything) {
    run([&](SettingsStore&) {
        EXPECT_TRUE(window().isVisible());
        EXPECT_EQ(property<std::uint64_t>(window(), "styleMask"), 32775U);
        EXPECT_EQ(window().frame().size, (CGSize{720, 560}));
        EXPECT_FALSE(property<bool>(window(), "releasedWhenClosed"));
        EXPECT_TRUE(property<bool>(window(), "titlebarAppearsTransparent"));
        EXPECT_GT(callsOf("NSApplication activateIgnoringOtherApps:"), 0);
        const NSWindow first = window();
        showTab(2);
        first.close();
        openFromMenu();
        EXPECT_TRUE(first.isVisible());
        EXPECT_EQ(window().raw(), first.raw());
        EXPECT_EQ(tabs().selected(), 2) << "as it was left";
    });
}

TEST_F(SettingsWindowOnAMac, EveryControlWorks) {
    run([&](SettingsStore& settings) {
        std::size_t used = 0;
        const auto useAll = [&](const char* className, const auto& change) {
            for (const NSView& view : viewsOfClass(content(), className)) {
                change(view);
                used += use(view);
                dispatch().runFor(1ms);
            }
        };
        for (NSInteger tab = 0; tab < 5; ++tab) {
            showTab(tab);
            // Two turns each, so that what one hides does not hide it from the rest.
            for (int turn = 0; turn < 2; ++turn) {
                useAll("NSSwitch", [](const NSView& view) {
                    const NSSwitch control(view);
                    control.setState(control.state() == NSControlStateValueOn ? NSControlStateValueOff
                                                                              : NSControlStateValueOn);
                });
            }
            useAll("NSPopUpButton", [](const NSView& view) {
                const NSPopUpButton control(view);
                control.select(control.selected() == 0 ? 1 : 0);
            });
            useAll("NSSlider",
                   [](const NSView& view) { NSControl(view).setDoubleValue(property<double>(view, "maxValue") - 1); });
            useAll("NSStepper", [](const NSView& view) { NSControl(view).setDoubleValue(4); });
            useAll("NSColorWell", [](const NSView& view) { NSColorWell(view).setColor(NSColor::sRGB(1, 0.5, 0, 1)); });
        }
        EXPECT_GT(used, 40U);
        EXPECT_EQ(settings.barEdge.value(), MorvelEdge::Top);
        EXPECT_EQ(settings.theme.value(), morvel::Theme::Light);
        EXPECT_EQ(settings.barHeight.value(), 44) << "locked by the edge that was chosen before";
        EXPECT_EQ(settings.accentColorCustom.value(), "FF8000FF");
        EXPECT_EQ(settings.pinnedMaxVisible.value(), 4);
        EXPECT_EQ(settings.compactTopRightBuffer.value(), 399);
        EXPECT_EQ(settings.groupingMode.value(), GroupingMode::Always);
    });
}

TEST_F(SettingsWindowOnAMac, ShowsWhatChangesElsewhere) {
    run([&](SettingsStore& settings) {
        showTab(1);
        const NSControl height = control("NSSlider", "accessibilityLabel", "Bar height");
        EXPECT_TRUE(viewsOfClass(content(), "NSSlider").size() == 1) << "the width is not custom";
        settings.barHeight.set(30);
        settings.barEdge.set(MorvelEdge::Top);
        settings.windowButtonWidthMode.set(WindowButtonWidthMode::Custom);
        dispatch().runFor(10ms);
        EXPECT_EQ(height.doubleValue(), 30);
        EXPECT_FALSE(property<bool>(height, "enabled"));
        EXPECT_TRUE(says("Locked when the bar is at the top edge"));
        EXPECT_EQ(viewsOfClass(content(), "NSSlider").size(), 2U);
    });
}

TEST_F(SettingsWindowOnAMac, RowsStandBelowOneAnother) {
    run([&](SettingsStore&) {
        showTab(2);
        const NSView page = viewsOfClass(content(), "MorvelFormPage").at(0);
        double bottom = 0;
        for (const NSView& view : viewsOfClass(page, "NSTextField")) {
            const CGRect frame = view.frame();
            EXPECT_LE(frame.origin.x + frame.size.width, 720) << NSTextField(view).stringValue().text();
            EXPECT_GT(frame.size.height, 0) << NSTextField(view).stringValue().text();
            bottom = std::max(bottom, frame.origin.y + frame.size.height);
        }
        EXPECT_GT(bottom, 560) << "longer than the window";
        EXPECT_GE(page.frame().size.height, bottom) << "and scrolled to its end";
    });
}

TEST_F(SettingsWindowOnAMac, SearchListsAndPanels) {
    run([&](SettingsStore& settings) {
        search("borders");
        EXPECT_EQ(tabs().selected(), 1);
        EXPECT_EQ(viewsOfClass(content(), "NSSwitch").size(), 1U);
        search("nothing of the kind");
        EXPECT_TRUE(says("No settings found."));
        search("");

        showTab(3);
        EXPECT_TRUE(says("No hidden apps."));
        settings.windowBlacklist.set({"com.example.b"});
        dispatch().runFor(10ms);
        EXPECT_FALSE(says("No hidden apps."));
        use(button("Show"));
        EXPECT_TRUE(settings.windowBlacklist.value().empty());
        dispatch().runFor(10ms);
        EXPECT_TRUE(says("No hidden apps."));

        showTab(0);
        answerPanels("/proc/no/such/file");
        use(button("Import Settings…"));
        dispatch().runFor(10ms);
        EXPECT_TRUE(says("The file could not be read."));
        answerPanels({});
        use(button("Export Settings…"));
    });
}

}  // namespace
}  // namespace morvel::mac::checked
