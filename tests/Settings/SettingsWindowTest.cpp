#include "Settings/UI/SettingsWindow.h"

#include <filesystem>
#include <fstream>

#include "App/BarDesktop.h"
#include "Settings/FormDriver.h"
#include "Settings/SettingsFile.h"
#include "Settings/UI/RelativeTime.h"
#include "sim/FakeDefaults.h"

namespace morvel {

namespace {

using Texts = std::vector<std::string>;

class SettingsWindowTest : public testing::Test {
protected:
    void open() {
        if (!isStarted_) desktop.startMorvel();
        isStarted_ = true;
        desktop.rightClick(desktop.bar());
        desktop.choose({"Morvel Settings…"});
    }
    sim::SimFormWindow& window() { return *desktop.toolkit().formWindows().at(0); }
    FormDriver form() { return FormDriver(window().form); }
    void pick(const std::string& label, size_t index) {
        form().at<ui::FormPicker>(label).select(index);
        desktop.settle();
    }
    void turn(const std::string& label, bool on) {
        form().at<ui::FormToggle>(label).set(on);
        desktop.settle();
    }

    BarDesktop desktop;

private:
    bool isStarted_ = false;
};

/// Uses the control in every way that it offers; after each the stored value has to follow.
class Operator {
public:
    Operator(const sim::FakeDefaults& defaults, std::string key) : defaults_(defaults), key_(std::move(key)) {}

    void operator()(const ui::FormToggle& toggle) const {
        for (const bool on : {!toggle.isOn(), toggle.isOn()}) {
            toggle.set(on);
            expectStored(DefaultsValue{on});
            EXPECT_EQ(toggle.isOn(), on) << key_;
        }
    }
    void operator()(const ui::FormPicker& picker) const {
        std::vector<DefaultsValue> seen;
        for (size_t i = 0; i < picker.titles.size(); ++i) {
            picker.select(i);
            EXPECT_EQ(picker.selected(), i) << key_;
            const auto stored = defaults_.object(key_);
            ASSERT_TRUE(stored) << key_;
            EXPECT_EQ(std::ranges::count(seen, *stored), 0) << key_ << ": two titles stand for one value";
            seen.push_back(*stored);
        }
        picker.select(picker.titles.size());
        EXPECT_EQ(picker.selected(), picker.titles.size() - 1) << "there is no such title";
    }
    void operator()(const ui::FormSlider& slider) const {
        for (const double value : {slider.least, slider.greatest}) {
            slider.set(value);
            expectStored(DefaultsValue{value});
        }
        slider.set(slider.least + 1.4);
        EXPECT_EQ(slider.value(), slider.least + 1) << "whole points";
    }
    void operator()(const ui::FormStepper& stepper) const {
        for (const int value : {stepper.least, stepper.greatest}) {
            stepper.set(value);
            expectStored(DefaultsValue{int64_t{value}});
        }
    }
    void operator()(const ui::FormColorWell& well) const {
        well.set({1, 0.5, 0, 2});
        expectStored(DefaultsValue{std::string("FF8000FF")});
        EXPECT_EQ(well.color(), (ui::RGBA{1, 128 / 255.0, 0, 1}));
    }
    void operator()(const auto&) const { ADD_FAILURE() << key_ << ": not a control of one value"; }

private:
    void expectStored(const DefaultsValue& value) const { EXPECT_EQ(defaults_.object(key_), value) << key_; }

    const sim::FakeDefaults& defaults_;
    std::string key_;
};

}  // namespace

TEST_F(SettingsWindowTest, EveryControlChangesItsSettingAndWhatIsStored) {
    struct Row {
        const char *label, *key;
    };
    // In the order of the window. That of two labels "Mode" or "Style" would be told apart by the section.
    const std::vector<Row> rows = {
        {"Edge", "barEdge"},
        {"Show Start button", "showStartButton"},
        {"Show Apple menu button", "showAppleMenuButton"},
        {"Start at login", "startAtLogin"},
        {"Theme", "theme"},
        {"Bar height", "barHeight"},
        {"Active button style", "activeButtonStyle"},
        {"Color", "accentColorMode"},
        {"Custom color", "accentColorCustom"},
        {"Style", "barBackgroundStyle"},
        {"Blur", "barBlurIntensity"},
        {"Show icon in macOS menu bar", "showMenuBarIcon"},
        {"Show button borders", "showButtonBorders"},
        {"Width", "windowButtonWidthMode"},
        {"Custom width", "windowButtonCustomWidth"},
        {"Maximum visible on bar", "pinnedMaxVisible"},
        {"Reserve space for morvel", "clampWindows"},
        {"Mode", "groupingMode"},
        {"Show in morvel", "windowlessAppsMode"},
        {"Display as", "windowlessDisplayMode"},
        {"Show windows from", "windowSpaceMode"},
        {"Disable automatic Space switching", "spacesPrefsChangedByUs"},
        {"Hide bar when cursor is away", "autoHide"},
        {"Compact mode at top", "compactAtTop"},
        {"Match macOS menu bar height", "matchMenuBarHeight"},
        {"Auto-detect macOS status items width", "autoDetectMacOSItemsWidth"},
        {"Right-side reserved buffer", "compactTopRightBuffer"},
        {"Items visible when collapsed", "compactTopCollapsedItemCount"},
        {"Auto-reserve space for app menu titles", "autoDetectMacOSMenuWidth"},
        {"Trigger on", "dragHoverRaiseMode"},
        {"Show Now Playing controls", "nowPlayingEnabled"},
        {"Hide macOS Dock", "dockChangedByUs"},
        {"Check for updates automatically", "updaterAutoCheckEnabled"},
    };
    open();
    std::vector<std::string> labels;
    form().forEach([&](const ui::FormControl& control, const ui::FormSection&) {
        if (!control.label.empty()) labels.push_back(control.label);
    });
    Texts expected;
    for (const Row& row : rows) expected.push_back(row.label);
    EXPECT_EQ(labels, expected);
    for (const Row& row : rows) {
        const ui::FormControl* control = form().find(row.label);
        ASSERT_TRUE(control) << row.label;
        std::visit(Operator(desktop.defaults(), row.key), control->kind);
        desktop.settle();
    }
}

TEST_F(SettingsWindowTest, OpensOnceAndFollowsWhatChangesElsewhere) {
    open();
    EXPECT_TRUE(window().isShown);
    EXPECT_EQ(window().form.title, "Morvel Settings");
    window().isShown = false;  // closed by hand
    open();
    EXPECT_EQ(desktop.toolkit().formWindows().size(), 1u);
    EXPECT_TRUE(window().isShown);
    const int before = window().refreshes;
    desktop.settings().autoHide.set(true);
    desktop.settings().barHeight.set(50);
    EXPECT_EQ(window().refreshes, before) << "never inside the change itself";
    desktop.run(1ms);
    EXPECT_EQ(window().refreshes, before + 1) << "once for both";
    desktop.quitMorvel();
    EXPECT_TRUE(desktop.toolkit().formWindows().empty());
}

TEST_F(SettingsWindowTest, ChangesShowAtOnce) {
    auto& editor = desktop.launch("Editor");
    editor.open({.title = "a"});
    editor.open({.title = "b"});
    open();
    pick("Theme", 2);
    EXPECT_EQ(desktop.toolkit().appearance(), ui::Appearance::Dark);
    form().at<ui::FormSlider>("Bar height").set(60);
    desktop.settle();
    EXPECT_EQ(desktop.toolkit().panels().at(0)->frame.height, 60);
    pick("Mode", 1);
    EXPECT_EQ(desktop.strip(), "Editorx2");
    pick("Mode", 2);
    pick("Width", 2);
    form().at<ui::FormSlider>("Custom width").set(200);
    desktop.settle();
    EXPECT_EQ(desktop.button("a").frame().width, 200);
    form().below<ui::FormEntry>("Hidden Apps (Window Blacklist)").take("com.example.editor");
    desktop.settle();
    EXPECT_EQ(desktop.strip(), "");
    form().below<ui::FormList>("Hidden Apps (Window Blacklist)").press("com.example.editor");
    turn("Match macOS menu bar height", false);
    pick("Edge", 1);
    desktop.settle();
    EXPECT_EQ(desktop.toolkit().panels().at(0)->frame.maxY(), 900);
    EXPECT_FALSE(desktop.strip().empty());
}

TEST_F(SettingsWindowTest, TheHeightIsLockedWhileTheMenuBarGivesIt) {
    open();
    const auto isLocked = [&] {
        return !ui::isEnabled(*form().find("Bar height")) && form().says("Locked when the bar");
    };
    EXPECT_FALSE(isLocked());
    pick("Edge", 1);
    EXPECT_TRUE(isLocked());
    turn("Match macOS menu bar height", false);
    EXPECT_FALSE(isLocked());
    EXPECT_FALSE(form().isShown("Custom width"));
    pick("Width", 2);
    EXPECT_TRUE(form().isShown("Custom width"));
}

TEST_F(SettingsWindowTest, OffersNothingThatTheSystemLacks) {
    desktop.platform().features = {};
    open();
    for (const char* absent : {"Show Apple menu button", "Show icon in macOS menu bar", "Hide macOS Dock",
                               "Disable automatic Space switching", "Compact mode at top",
                               "Match macOS menu bar height", "Items visible when collapsed"})
        EXPECT_FALSE(form().find(absent)) << absent;
    pick("Edge", 1);
    EXPECT_TRUE(ui::isEnabled(*form().find("Bar height"))) << "there is no menu bar whose height it could have";
}

TEST_F(SettingsWindowTest, ListsTakeIdentifiersOnly) {
    desktop.launch("Editor");
    open();
    const auto& list = form().below<ui::FormList>("Hidden Apps (Window Blacklist)");
    const auto& entry = form().below<ui::FormEntry>("Hidden Apps (Window Blacklist)");
    EXPECT_TRUE(list.rows().empty());
    for (const std::string& bad :
         {std::string(), std::string("  "), std::string("two words"), std::string("a/b"), std::string(300, 'x')})
        EXPECT_FALSE(entry.take(bad)) << bad;
    EXPECT_TRUE(entry.take(" com.example.editor\n"));
    EXPECT_TRUE(entry.take("com.example.gone"));
    EXPECT_TRUE(entry.take("com.example.gone"));
    const auto rows = list.rows();
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].title, "Editor");
    EXPECT_EQ(rows[0].detail, "com.example.editor");
    EXPECT_EQ(rows[1].title, "com.example.gone") << "its name is not known";
    list.press("com.example.unknown");
    list.press("com.example.editor");
    EXPECT_EQ(desktop.settings().windowBlacklist.value(), (std::set<std::string>{"com.example.gone"}));
}

TEST_F(SettingsWindowTest, IsSearchedByLabelHelpAndHeading) {
    open();
    const ui::Form& searched = window().form;
    const auto found = [&](const std::string& query) {
        const ui::ShownControls shown = ui::shownControls(searched, query);
        Texts names;
        for (size_t tab = 0; tab < searched.tabs.size(); ++tab)
            for (size_t section = 0; section < searched.tabs[tab].sections.size(); ++section)
                for (size_t i = 0; i < searched.tabs[tab].sections[section].controls.size(); ++i)
                    if (shown.isShown(tab, section, i))
                        names.push_back(FormDriver::nameOf(searched.tabs[tab].sections[section].controls[i]));
        return names;
    };
    EXPECT_EQ(found("BORDERS"), Texts{"Show button borders"});
    EXPECT_EQ(found("activity monitor"), Texts{"Show in morvel"}) << "in its help text";
    EXPECT_EQ(found(" dock   hide "), Texts{"Hide macOS Dock"}) << "each word, in any order";
    EXPECT_EQ(found("top edge").size(), 6u) << "by the section";
    EXPECT_EQ(found("export"), Texts{"Export Settings…"});
    EXPECT_TRUE(found("xyzzy").empty());
    EXPECT_EQ(found("").size(), found("  ").size());

    const ui::ShownControls shown = ui::shownControls(searched, "borders");
    EXPECT_EQ(shown.tabToShow(0), 1u) << "where it was found";
    EXPECT_EQ(ui::shownControls(searched, "xyzzy").tabToShow(3), 3u);
    EXPECT_EQ(ui::shownControls(searched, "").tabToShow(3), 3u) << "the tab stays";
}

TEST_F(SettingsWindowTest, SettingsTravelInAFileAndABadOneChangesNothing) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() /
                            ("morvel-settings-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
                             "-" + std::to_string(reinterpret_cast<uintptr_t>(this)));
    fs::create_directories(folder);
    open();
    SettingsStore& settings = desktop.settings();
    settings.barHeight.set(52);
    settings.groupingMode.set(GroupingMode::Never);
    settings.windowBlacklist.set({"com.example.hidden", "not UTF-8: \xff"});
    settings.dockChangedByUs.set(true);
    const std::string path = folder / "settings.json";
    form().at<ui::FormPathButton>("Export Settings…").chosen(path);
    EXPECT_TRUE(form().says("Settings exported."));

    sim::FakeDefaults fresh;
    SettingsStore other(fresh);
    std::ifstream file(path);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    ASSERT_TRUE(SettingsFile::imported(other, text));
    EXPECT_EQ(other.barHeight.value(), 52);
    EXPECT_EQ(other.groupingMode.value(), GroupingMode::Never);
    EXPECT_TRUE(other.windowBlacklist.value().contains("com.example.hidden"));
    EXPECT_FALSE(other.dockChangedByUs.value()) << "a change to one machine's Dock is no setting to carry around";

    form().at<ui::FormPathButton>("Import Settings…").chosen(folder);
    EXPECT_TRUE(form().says("could not be read"));
    form().at<ui::FormPathButton>("Export Settings…").chosen("/proc/no/such/folder");
    EXPECT_TRUE(form().says("could not be written"));
    const DefaultsDictionary before = desktop.defaults().values;
    for (const char* bad :
         {"", "null", "[]", "{", "{}", R"({"morvelSettings": []})",
          R"({"morvelSettings": {"barHeight": 30, "autoHide": 1}})",
          R"({"morvelSettings": {"barHeight": 30, "theme": "Dark"}})", R"({"morvelSettings": {"barHeight": "30"}})",
          R"({"morvelSettings": {"barHeight": 30, "pinnedMaxVisible": 2.5}})",
          R"({"morvelSettings": {"barHeight": 30, "windowBlacklist": ["a", 1]}})"}) {
        std::ofstream(path, std::ios::trunc) << bad;
        form().at<ui::FormPathButton>("Import Settings…").chosen(path);
        EXPECT_TRUE(form().says("Nothing was changed.")) << bad;
        EXPECT_EQ(desktop.defaults().values, before) << bad;
    }
    std::ofstream(path, std::ios::trunc) << R"({"morvelSettings": {"barHeight": 999, "fromTheFuture": {}}})";
    form().at<ui::FormPathButton>("Import Settings…").chosen(path);
    EXPECT_TRUE(form().says("Settings imported."));
    EXPECT_EQ(settings.barHeight.value(), 64);
    EXPECT_EQ(settings.groupingMode.value(), GroupingMode::Never) << "what the file does not name stays";
    fs::remove_all(folder);
}

TEST_F(SettingsWindowTest, ExemptsApplicationsFromClamping) {
    open();
    const std::string heading = "Clamping Blacklist";
    EXPECT_TRUE(form().below<ui::FormEntry>(heading).take("com.example.editor"));
    EXPECT_EQ(desktop.defaults().object("clampingBlacklist"),
              (DefaultsValue{DefaultsArray{{std::string("com.example.editor")}}}));
    EXPECT_EQ(form().below<ui::FormList>(heading).rows().size(), 1u);
    form().below<ui::FormList>(heading).press("com.example.editor");
    EXPECT_TRUE(form().below<ui::FormList>(heading).rows().empty());
}

TEST(SettingsWindow, TellsOfUpdatesAndOfPinnedItems) {
    sim::FakeMainLoop loop;
    sim::SimToolkit toolkit(loop);
    sim::SimIcons icons;
    sim::FakeDefaults defaults;
    SettingsStore settings(defaults);
    UpdateState state;
    int checks = 0;
    Texts pinned = {"folder:/home/me/Music"}, pages;
    Signal<> changed;
    const auto observe = [&](std::function<void()> call) { return changed.subscribe(std::move(call)); };
    const Date now(std::chrono::duration<double>(2e9));
    SettingsSources sources{.settings = settings, .features = {}, .icons = icons};
    sources.nameOf = [](const std::string& id) { return id; };
    sources.openPage = [&](const std::string& page) { pages.push_back(page); };
    sources.now = [&] { return now; };
    sources.updates = {[&] { return state; }, [&] { ++checks; }, [&] { state.isSkipped = true; }, observe};
    sources.pinnedItems.items = [&] {
        std::vector<ListedItem> items;
        for (const std::string& id : pinned) items.push_back({ListedItem::Kind::Folder, id, id.substr(7), "Music"});
        return items;
    };
    sources.pinnedItems.remove = [&](const std::string& id) { std::erase(pinned, id); };
    sources.pinnedItems.add = [&](const std::string& path) { pinned.push_back("folder:" + path); };
    sources.pinnedItems.observe = observe;
    SettingsWindow window(toolkit, loop, sources);
    window.show();
    const FormDriver form(toolkit.formWindows().at(0)->form);

    EXPECT_TRUE(form.says(std::string("Version ") + MORVEL_VERSION));
    EXPECT_TRUE(form.says("Last checked: never"));
    EXPECT_FALSE(form.isShown("Skip this version"));
    form.at<ui::FormButton>("Check Now").press();
    EXPECT_EQ(checks, 1);
    state.kind = UpdateState::Kind::Checking;
    EXPECT_THROW(form.at<ui::FormButton>("Check Now"), std::runtime_error) << "one at a time";
    settings.updaterLastCheckedAt.set(now - std::chrono::hours(3));
    EXPECT_TRUE(form.says("Last checked: 3 hours ago"));
    state = {.kind = UpdateState::Kind::Failed};
    EXPECT_TRUE(form.says("Couldn't reach update server."));
    state = {.kind = UpdateState::Kind::UpToDate};
    EXPECT_TRUE(form.says("You're up to date."));
    state = {UpdateState::Kind::Available, "2.0.0", "431", "https://a.example/d", "https://a.example/n"};
    EXPECT_TRUE(form.says("Update available: version 2.0.0 (431)"));
    form.at<ui::FormLink>("Download…").open();
    form.at<ui::FormLink>("Release notes").open();
    EXPECT_EQ(pages, (Texts{"https://a.example/d", "https://a.example/n"}));
    state.notesPage = "file:///etc/passwd";
    EXPECT_FALSE(form.isShown("Release notes")) << "it would not be opened";
    form.at<ui::FormButton>("Skip this version").press();
    EXPECT_FALSE(form.isShown("Skip this version"));
    EXPECT_FALSE(form.says("Update available"));

    const int before = toolkit.formWindows()[0]->refreshes;
    form.at<ui::FormPathButton>("Pin Folder…").chosen("/home/me/Films");
    changed.emit();
    loop.advance(1ms);
    EXPECT_EQ(toolkit.formWindows()[0]->refreshes, before + 1);
    form.below<ui::FormList>("Pinned Items").press("folder:/home/me/Music");
    EXPECT_EQ(pinned, Texts{"folder:/home/me/Films"});
    ASSERT_EQ(form.below<ui::FormList>("Pinned Items").rows().size(), 1u);
    EXPECT_EQ(form.below<ui::FormList>("Pinned Items").rows()[0].title, "Music");
}

TEST(RelativeTime, InWholeUnits) {
    struct Row {
        double seconds;
        const char* words;
    };
    for (const Row& row : {Row{0, "just now"},
                           {-500, "just now"},
                           {59, "just now"},
                           {60, "1 minute ago"},
                           {119, "1 minute ago"},
                           {7199, "1 hour ago"},
                           {7200, "2 hours ago"},
                           {86400, "1 day ago"},
                           {6 * 86400, "6 days ago"},
                           {15 * 86400, "2 weeks ago"},
                           {40 * 86400, "1 month ago"},
                           {800 * 86400.0, "2 years ago"}}) {
        const Date now(std::chrono::duration<double>(2e9));
        EXPECT_EQ(relativeTime(now - std::chrono::duration<double>(row.seconds), now), row.words) << row.seconds;
    }
}

}  // namespace morvel
