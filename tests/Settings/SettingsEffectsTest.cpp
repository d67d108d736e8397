// Every control of the settings window: each of its values is stored and seen on the desktop, looks different from the
// others, and going back to the first brings back what was there.
#include <map>
#include <sstream>

#include "App/BarDesktop.h"
#include "Bar/CompactTop/CompactTopExpansionToggleButton.h"
#include "Settings/FormDriver.h"
#include "UI/ImageView.h"
#include "UI/VisualEffectView.h"
#include "sim/SimMenuBar.h"

namespace morvel {
namespace {

std::ostream& operator<<(std::ostream& out, const ui::Color& color) {
    out << static_cast<int>(color.role) << '/' << color.alpha;
    if (color.role == ui::ColorRole::Custom) out << '/' << color.rgba.red << ',' << color.rgba.green;
    return out;
}

template <class Space>
std::ostream& operator<<(std::ostream& out, const Rect<Space>& frame) {
    return out << frame.x << ' ' << frame.y << ' ' << frame.width << 'x' << frame.height;
}

/// What a person would see of the view and below.
void describe(const ui::View& view, std::ostream& out) {
    if (view.isHidden()) return;
    out << '[' << view.frame() << " a" << view.alpha() << " bg" << view.background() << " b" << view.borderWidth()
        << ':' << view.borderColor();
    if (const auto* label = dynamic_cast<const ui::Label*>(&view))
        out << " \"" << label->text() << '"' << label->color();
    if (const auto* image = dynamic_cast<const ui::ImageView*>(&view)) out << ' ' << sim::imageName(image->image());
    if (const auto* blur = dynamic_cast<const ui::VisualEffectView*>(&view))
        out << " material" << static_cast<int>(blur->material());
    for (const ui::View* child : view.subviews()) describe(*child, out);
    out << ']';
}

/// A desktop with something of everything that a setting is about. The editor has the focus, on its window "a"; its
/// window "b" reaches into the bar's strip.
class FullDesktop : public BarDesktop {
public:
    FullDesktop() {
        menus.setTitles(editor, {10, 40, 100, 300}, 400);
        menus.setItems(control, {110, 40}, {1440, 0});
        menus.setItems(extra, {50, 60}, {1440, 0}, 150);
        addDock();
        defaults().set("firstRunCompleted", {true});
        defaults().set("spacesPrefsAsked", {true});
        players().answers["Spotify"] = "playing||Red||Bob";
        launch("Spotify", {.bundleID = "com.spotify.client"}).open({.title = "Red"});
        const SpaceID other = addSpace(DisplayID{1});
        editor.open({.title = "elsewhere", .space = other});
        b.setFrame({200, 300, 400, 600});
        a.focus();
    }
    void open() {
        startMorvel();
        for (const char* name : {"Notes", "One", "Two", "Three"}) {
            const std::string id = std::string("com.example.") + name;
            delegate().pinnedStore()->pinApp(id, name);
        }
        settle();
        delegate().openSettings();
    }
    FormDriver form() { return FormDriver(toolkit().formWindows().at(0)->form); }

    /// All panels that are on the screen.
    std::string bars() {
        std::ostringstream out;
        for (sim::SimPanel* panel : toolkit().panels()) {
            if (!isSeen(*panel)) continue;
            out << "panel " << panel->frame << ' ';
            describe(panel->surface.root(), out);
        }
        return out.str();
    }
    /// All that a person sees, and what is arranged for later.
    std::string look() {
        std::ostringstream out;
        out << bars();
        for (const auto* window : {&a, &b}) out << "\nwindow " << window->frame() << window->isFocused();
        out << "\nappearance " << static_cast<int>(toolkit().appearance()) << " item " << !!toolkit().statusMenu()
            << " login " << loginItem().isRegistered << " dock " << isInForce(" autohide ") << " spaces "
            << isInForce(" mru-spaces ");
        return out.str();
    }
    std::string whetherItLooksForReleases() {
        const size_t before = web().requests.size();
        run(26h);
        return web().requests.size() > before ? "looks" : "does not";
    }
    void expandStatusItems() {
        for (sim::SimPanel* panel : toolkit().panels())
            for (auto* toggle : all<CompactTopExpansionToggleButton>(panel->surface.root()))
                toggle->accessibilityPress();
    }
    /// Which window has the focus after a drag has rested on b's button.
    std::string focusAfterDrag(sim::SimPasteboard dragged) {
        a.focus();
        settle();
        toolkit().drags().bring(std::move(dragged));
        toolkit().drags().over(button("b"));
        run(2s);
        const std::string focused = b.isFocused() ? "b" : "a";
        toolkit().drags().cancel();
        a.focus();
        run(1s);
        return focused;
    }

    sim::SimMenuBar menus{*this};
    sim::SimApp& control =
        launch("Control Center", {.bundleID = "com.apple.controlcenter", .policy = ActivationPolicy::Accessory});
    sim::SimApp& extra = launch("Extra", {.policy = ActivationPolicy::Accessory});
    sim::SimApp& mail = launch("Mail");
    sim::SimApp& notes = launch("Notes", {.bundleID = "com.example.Notes"});
    sim::SimApp& editor = launch("Editor");
    sim::SimWindow& b = editor.open({.title = "b"});
    sim::SimWindow& a = editor.open({.title = "a"});

private:
    bool isInForce(const std::string& key) {
        bool applied = false;
        for (const std::string& line : static_cast<sim::SimShell&>(*platform().shellCommands).lines)
            if (line.find(key) != std::string::npos) applied = line.find("defaults delete") == std::string::npos;
        return applied;
    }
};

/// What is seen, as text; by default all there is.
using Look = std::function<std::string(FullDesktop&)>;

/// A person's circumstances, in which a control is tried: what is set besides, and where they look.
struct Scene {
    std::function<void(FullDesktop&)> arrange = [](FullDesktop&) {};
    Look look = [](FullDesktop& desktop) { return desktop.look(); };
};

using Scenes = std::vector<Scene>;

template <class T>
Scene with(Setting<T> SettingsStore::*setting, T value, Scene scene = {}) {
    return {[=](FullDesktop& desktop) {
                scene.arrange(desktop);
                (desktop.settings().*setting).set(value);
            },
            scene.look};
}

Scene atTop(Scene scene = {}) {
    return with(&SettingsStore::barEdge, MorvelEdge::Top, scene);
}

/// At the top with all status items uncovered.
Scene expandedAtTop() {
    return {[](FullDesktop& desktop) {
        desktop.settings().barEdge.set(MorvelEdge::Top);
        desktop.settle();
        desktop.expandStatusItems();
    }};
}

Scene crowded(Scene scene = {}) {
    return {[=](FullDesktop& desktop) {
                scene.arrange(desktop);
                for (int i = 0; i < 20; ++i) desktop.editor.open({.title = "window " + std::to_string(i)});
                desktop.a.focus();
            },
            scene.look};
}

struct Control {
    std::string label;
    std::string key;            ///< of what is stored
    Scenes scenes = {Scene()};  ///< more than one where no single one tells all values apart
};

/// In the order of the window.
std::vector<Control> allControls() {
    using S = SettingsStore;
    const Look checks = [](FullDesktop& desktop) { return desktop.whetherItLooksForReleases(); };
    const Look fileDrag = [](FullDesktop& desktop) { return desktop.focusAfterDrag(sim::SimPasteboard::ofFile("/a")); };
    const Look textDrag = [](FullDesktop& desktop) {
        return desktop.focusAfterDrag(sim::SimPasteboard::ofText("public.utf8-plain-text", "words"));
    };
    // The shrunk window stays as it is when the bar shrinks too.
    const Look bars = [](FullDesktop& desktop) { return desktop.bars(); };
    const Scene unmeasured = with(&S::autoDetectMacOSItemsWidth, false, expandedAtTop());
    return {
        {"Edge", "barEdge"},
        {"Show Start button", "showStartButton"},
        {"Show Apple menu button", "showAppleMenuButton"},
        {"Start at login", "startAtLogin"},
        {"Theme", "theme"},
        {"Bar height", "barHeight", {{.look = bars}}},
        {"Active button style", "activeButtonStyle"},
        {"Color", "accentColorMode"},
        {"Custom color", "accentColorCustom", {with(&S::accentColorMode, AccentColorMode::Custom)}},
        {"Style", "barBackgroundStyle"},
        {"Blur", "barBlurIntensity"},
        {"Show icon in macOS menu bar", "showMenuBarIcon"},
        {"Show button borders", "showButtonBorders"},
        {"Width", "windowButtonWidthMode", {with(&S::windowButtonCustomWidth, 200.0)}},
        {"Custom width", "windowButtonCustomWidth", {with(&S::windowButtonWidthMode, WindowButtonWidthMode::Custom)}},
        {"Maximum visible on bar", "pinnedMaxVisible"},
        {"Reserve space for morvel", "clampWindows"},
        {"Mode", "groupingMode", {{}, crowded()}},
        {"Show in morvel", "windowlessAppsMode"},
        {"Display as",
         "windowlessDisplayMode",
         {{}, with(&S::groupingMode, GroupingMode::Always), crowded(with(&S::groupingMode, GroupingMode::Never))}},
        {"Show windows from", "windowSpaceMode"},
        {"Disable automatic Space switching", "spacesPrefsChangedByUs"},
        {"Hide bar when cursor is away", "autoHide"},
        {"Compact mode at top", "compactAtTop", {atTop()}},
        {"Match macOS menu bar height", "matchMenuBarHeight", {atTop()}},
        {"Auto-detect macOS status items width", "autoDetectMacOSItemsWidth", {expandedAtTop()}},
        {"Right-side reserved buffer", "compactTopRightBuffer", {unmeasured}},
        {"Items visible when collapsed", "compactTopCollapsedItemCount", {atTop()}},
        {"Auto-reserve space for app menu titles", "autoDetectMacOSMenuWidth", {atTop()}},
        {"Trigger on", "dragHoverRaiseMode", {{.look = fileDrag}, {.look = textDrag}}},
        {"Show Now Playing controls", "nowPlayingEnabled"},
        {"Hide macOS Dock", "dockChangedByUs"},
        {"Check for updates automatically", "updaterAutoCheckEnabled", {{.look = checks}}},
    };
}

/// One way to set a control, and what it stores; nothing where that is told by its key alone.
struct Way {
    std::function<void()> set;
    std::optional<DefaultsValue> stored = {};
};

/// The way that the control is set in comes first.
std::vector<Way> waysToSet(const ui::FormControl& control) {
    std::vector<Way> ways;
    if (const auto* toggle = std::get_if<ui::FormToggle>(&control.kind)) {
        for (const bool on : {toggle->isOn(), !toggle->isOn()})
            ways.push_back({[=] { toggle->set(on); }, DefaultsValue{on}});
    } else if (const auto* picker = std::get_if<ui::FormPicker>(&control.kind)) {
        for (size_t i = 0; i < picker->titles.size(); ++i)
            ways.push_back({[picker, at = (picker->selected() + i) % picker->titles.size()] {
                picker->select(at);
                EXPECT_EQ(picker->selected(), at);
            }});
    } else if (const auto* slider = std::get_if<ui::FormSlider>(&control.kind)) {
        for (const double value : {slider->value(), slider->least, slider->greatest})
            ways.push_back({[=] { slider->set(value); }, DefaultsValue{value}});
    } else if (const auto* stepper = std::get_if<ui::FormStepper>(&control.kind)) {
        for (const int value : {stepper->value(), stepper->least, stepper->greatest})
            ways.push_back({[=] { stepper->set(value); }, DefaultsValue{int64_t{value}}});
    } else if (const auto* well = std::get_if<ui::FormColorWell>(&control.kind)) {
        ways.push_back({[=, color = well->color()] { well->set(color); }});
        ways.push_back({[=] { well->set({1, 0.5, 0, 2}); }, DefaultsValue{std::string("FF8000FF")}});
    }
    return ways;
}

/// What each way of setting the control looks like in the scene.
std::vector<std::string> looks(const Control& tried, const Scene& scene) {
    SCOPED_TRACE(tried.label);
    FullDesktop desktop;
    desktop.open();
    scene.arrange(desktop);
    desktop.run(3s);
    const ui::FormControl* control = desktop.form().find(tried.label);
    if (!control || !desktop.form().isShown(tried.label) || !ui::isEnabled(*control)) {
        ADD_FAILURE() << "it cannot be used";
        return {};
    }
    const auto use = [&](const Way& way) {
        way.set();
        desktop.run(3s);
        return scene.look(desktop);
    };
    const auto ways = waysToSet(*control);
    std::vector<std::string> seen;
    std::vector<std::optional<DefaultsValue>> stored;
    for (const Way& way : ways) {
        seen.push_back(use(way));
        const auto now = desktop.defaults().object(tried.key);
        EXPECT_TRUE(now && now == way.stored.value_or(*now)) << "it stores something else";
        EXPECT_EQ(std::ranges::count(stored, now), 0) << "two of its values are stored alike";
        stored.push_back(now);
    }
    EXPECT_EQ(use(ways.front()), seen.front()) << "what was there before does not come back";
    return seen;
}

TEST(SettingsEffects, EveryValueOfEveryControlIsStoredAndSeen) {
    const std::vector<Control> controls = allControls();
    std::vector<std::string> labels, found;
    for (const Control& control : controls) labels.push_back(control.label);
    {
        FullDesktop desktop;
        desktop.open();
        desktop.form().forEach([&](const ui::FormControl& control, const ui::FormSection&) {
            if (!control.label.empty()) found.push_back(control.label);
        });
    }
    EXPECT_EQ(found, labels);
    for (const Control& control : controls) {
        std::vector<std::string> all;
        for (const Scene& scene : control.scenes) {
            const auto seen = looks(control, scene);
            all.resize(seen.size());
            for (size_t i = 0; i < seen.size(); ++i) all[i] += seen[i];
        }
        EXPECT_GE(all.size(), 2u) << control.label;
        for (size_t i = 0; i < all.size(); ++i)
            for (size_t j = 0; j < i; ++j)
                EXPECT_NE(all[i], all[j]) << control.label << ": values " << j << " and " << i << " look alike";
    }
}

}  // namespace
}  // namespace morvel
