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

}  // namespace

TEST_F(SettingsWindowTest, ControlsTakeNoOddValues) {
    open();
    form().forEach([](const ui::FormControl& control, const ui::FormSection&) {
        if (const auto* picker = std::get_if<ui::FormPicker>(&control.kind)) {
            const size_t before = picker->selected();
            picker->select(picker->titles.size());
            EXPECT_EQ(picker->selected(), before) << control.label << ": there is no such title";
        } else if (const auto* slider = std::get_if<ui::FormSlider>(&control.kind)) {
            slider->set(slider->least + 1.4);
            EXPECT_EQ(slider->value(), slider->least + 1) << control.label << ": whole points";
        }
    });
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
    const struct {
        const char *heading, *key;
    } lists[] = {{"Hidden Apps (Window Blacklist)", "windowBlacklist"}, {"Clamping Blacklist", "clampingBlacklist"}};
    for (const auto& [heading, key] : lists) {
        const auto& list = form().below<ui::FormList>(heading);
        const auto& entry = form().below<ui::FormEntry>(heading);
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
        EXPECT_EQ(desktop.defaults().object(key), (DefaultsValue{DefaultsArray{{std::string("com.example.gone")}}}));
    }
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
    const fs::path folder =
        ::testing::TempDir() + "/morvel-settings-" + std::to_string(reinterpret_cast<uintptr_t>(this));
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

TEST_F(SettingsWindowTest, TellsOfUpdates) {
    open();
    EXPECT_TRUE(form().says(std::string("Version ") + MORVEL_VERSION));
    EXPECT_TRUE(form().says("Last checked: never"));
    EXPECT_FALSE(form().isShown("Skip this version"));
    const auto check = [&](const HttpAnswer& answer) {
        desktop.web().answer = answer;
        form().at<ui::FormButton>("Check Now").press();
        EXPECT_THROW(form().at<ui::FormButton>("Check Now"), std::runtime_error) << "one at a time";
        desktop.settle();
    };
    check(HttpFailure{"The network is down."});
    EXPECT_TRUE(form().says("Couldn't reach update server."));
    check(sim::release("0.9.0"));
    EXPECT_TRUE(form().says("You're up to date."));
    desktop.settings().updaterLastCheckedAt.set(desktop.now() - 3h);
    EXPECT_TRUE(form().says("Last checked: 3 hours ago"));
    check(sim::release("2.0.0"));
    EXPECT_TRUE(form().says("Update available: version 2.0.0 (7)"));
    form().at<ui::FormLink>("Download…").open();
    form().at<ui::FormLink>("Release notes").open();
    EXPECT_EQ(desktop.journal().texts(),
              (Texts{"openPage https://example.com/d.zip", "openPage https://example.com/notes"}));
    check(sim::release("2.1.0", "file:///etc/passwd"));
    EXPECT_FALSE(form().isShown("Release notes")) << "it would not be opened";
    form().at<ui::FormButton>("Skip this version").press();
    EXPECT_FALSE(form().isShown("Skip this version"));
    EXPECT_FALSE(form().says("Update available"));
}

TEST_F(SettingsWindowTest, ListsPinnedItems) {
    open();
    desktop.run(1s);
    const int before = window().refreshes;
    for (const char* path : {"/home/me/Music", "/home/me/Films"})
        form().at<ui::FormPathButton>("Pin Folder…").chosen(path);
    desktop.run(1ms);
    EXPECT_EQ(window().refreshes, before + 1);
    const auto& list = form().below<ui::FormList>("Pinned Items");
    ASSERT_EQ(list.rows().size(), 2u);
    EXPECT_EQ(list.rows()[0].title, "Music");
    list.press(list.rows()[0].id);
    EXPECT_FALSE(desktop.delegate().pinnedStore()->isPinnedFolder("/home/me/Music"));
    EXPECT_TRUE(desktop.delegate().pinnedStore()->isPinnedFolder("/home/me/Films"));
}

TEST(RelativeTime, InWholeUnits) {
    const Date now(std::chrono::duration<double>(2e9));
    const std::pair<double, const char*> rows[] = {
        {-500, "just now"},          {59, "just now"},     {60, "1 minute ago"},        {7199, "1 hour ago"},
        {7200, "2 hours ago"},       {86400, "1 day ago"}, {15 * 86400, "2 weeks ago"}, {40 * 86400, "1 month ago"},
        {800 * 86400, "2 years ago"}};
    for (const auto& [seconds, words] : rows)
        EXPECT_EQ(relativeTime(now - std::chrono::duration<double>(seconds), now), words) << seconds;
}

}  // namespace morvel
