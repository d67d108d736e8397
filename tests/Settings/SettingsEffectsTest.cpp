// Every control of the settings window, seen from the desktop: each of its values looks different from the others, and
// going back to the first brings back what was there.
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
const Scenes kAnywhere = {{}};

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

/// By label. More than one scene where no single one tells all values apart.
std::map<std::string, Scenes> scenesOfControls() {
    using S = SettingsStore;
    const Look checks = [](FullDesktop& desktop) { return desktop.whetherItLooksForReleases(); };
    const Look fileDrag = [](FullDesktop& desktop) { return desktop.focusAfterDrag(sim::SimPasteboard::ofFile("/a")); };
    const Look textDrag = [](FullDesktop& desktop) {
        return desktop.focusAfterDrag(sim::SimPasteboard::ofText("public.utf8-plain-text", "words"));
    };
    // The shrunk window stays as it is when the bar shrinks too.
    const Look bars = [](FullDesktop& desktop) { return desktop.bars(); };
    return {
        {"Edge", kAnywhere},
        {"Show Start button", kAnywhere},
        {"Show Apple menu button", kAnywhere},
        {"Start at login", kAnywhere},
        {"Theme", kAnywhere},
        {"Bar height", {{.look = bars}}},
        {"Active button style", kAnywhere},
        {"Color", kAnywhere},
        {"Custom color", {with(&S::accentColorMode, AccentColorMode::Custom)}},
        {"Style", kAnywhere},
        {"Blur", kAnywhere},
        {"Show icon in macOS menu bar", kAnywhere},
        {"Show button borders", kAnywhere},
        {"Width", {with(&S::windowButtonCustomWidth, 200.0)}},
        {"Custom width", {with(&S::windowButtonWidthMode, WindowButtonWidthMode::Custom)}},
        {"Maximum visible on bar", kAnywhere},
        {"Reserve space for morvel", kAnywhere},
        {"Mode", {{}, crowded()}},
        {"Show in morvel", kAnywhere},
        {"Display as",
         {{}, with(&S::groupingMode, GroupingMode::Always), crowded(with(&S::groupingMode, GroupingMode::Never))}},
        {"Show windows from", kAnywhere},
        {"Disable automatic Space switching", kAnywhere},
        {"Hide bar when cursor is away", kAnywhere},
        {"Compact mode at top", {atTop()}},
        {"Match macOS menu bar height", {atTop()}},
        {"Auto-detect macOS status items width", {expandedAtTop()}},
        {"Right-side reserved buffer", {with(&S::autoDetectMacOSItemsWidth, false, expandedAtTop())}},
        {"Items visible when collapsed", {atTop()}},
        {"Auto-reserve space for app menu titles", {atTop()}},
        {"Trigger on", {{.look = fileDrag}, {.look = textDrag}}},
        {"Show Now Playing controls", kAnywhere},
        {"Hide macOS Dock", kAnywhere},
        {"Check for updates automatically", {{.look = checks}}},
    };
}

/// The ways in which the control can be set, the way that it is set in first.
std::vector<std::function<void()>> waysToSet(const ui::FormControl& control) {
    std::vector<std::function<void()>> ways;
    const auto add = [&](auto value, const auto& set) { ways.push_back([value, &set] { set(value); }); };
    if (const auto* toggle = std::get_if<ui::FormToggle>(&control.kind)) {
        add(toggle->isOn(), toggle->set);
        add(!toggle->isOn(), toggle->set);
    } else if (const auto* picker = std::get_if<ui::FormPicker>(&control.kind)) {
        for (size_t i = 0; i < picker->titles.size(); ++i)
            add((picker->selected() + i) % picker->titles.size(), picker->select);
    } else if (const auto* slider = std::get_if<ui::FormSlider>(&control.kind)) {
        for (const double value : {slider->value(), slider->least, slider->greatest}) add(value, slider->set);
    } else if (const auto* stepper = std::get_if<ui::FormStepper>(&control.kind)) {
        for (const int value : {stepper->value(), stepper->least, stepper->greatest}) add(value, stepper->set);
    } else if (const auto* well = std::get_if<ui::FormColorWell>(&control.kind)) {
        add(well->color(), well->set);
        add(ui::RGBA{1, 0.5, 0, 1}, well->set);
    }
    return ways;
}

/// What each way of setting the control looks like in the scene.
std::vector<std::string> looks(const std::string& label, const Scene& scene) {
    FullDesktop desktop;
    desktop.open();
    scene.arrange(desktop);
    desktop.run(3s);
    const ui::FormControl* control = desktop.form().find(label);
    if (!control || !desktop.form().isShown(label) || !ui::isEnabled(*control)) {
        ADD_FAILURE() << label << " cannot be used";
        return {};
    }
    std::vector<std::string> seen;
    const auto ways = waysToSet(*control);
    const auto use = [&](const std::function<void()>& way) {
        way();
        desktop.run(3s);
        return scene.look(desktop);
    };
    for (const auto& way : ways) seen.push_back(use(way));
    EXPECT_EQ(use(ways.front()), seen.front()) << label << ": what was there before does not come back";
    return seen;
}

TEST(SettingsEffects, EveryValueOfEveryControlIsSeen) {
    const auto scenes = scenesOfControls();
    std::vector<std::string> labels;
    {
        FullDesktop desktop;
        desktop.open();
        desktop.form().forEach([&](const ui::FormControl& control, const ui::FormSection&) {
            if (!control.label.empty()) labels.push_back(control.label);
        });
    }
    EXPECT_EQ(labels.size(), scenes.size());
    for (const std::string& label : labels) {
        ASSERT_TRUE(scenes.contains(label)) << label;
        std::vector<std::string> all;
        for (const Scene& scene : scenes.at(label)) {
            const auto seen = looks(label, scene);
            all.resize(seen.size());
            for (size_t i = 0; i < seen.size(); ++i) all[i] += seen[i];
        }
        EXPECT_GE(all.size(), 2u) << label;
        for (size_t i = 0; i < all.size(); ++i)
            for (size_t j = 0; j < i; ++j)
                EXPECT_NE(all[i], all[j]) << label << ": values " << j << " and " << i << " look alike";
    }
}

}  // namespace
}  // namespace morvel
