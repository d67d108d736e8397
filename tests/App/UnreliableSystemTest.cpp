// What systems really do to such a program: drop requests, take permissions away, tell nothing while locked.
#include "App/BarDesktop.h"

namespace morvel {
namespace {

TEST(UnreliableSystem, ADroppedActivationIsAskedForOnceMore) {
    BarDesktop desktop;
    auto& one = desktop.launch("One").open({.title = "one"});
    auto& two = desktop.launch("Two").open({.title = "two"});
    auto& three = desktop.launch("Three").open({.title = "three"});
    desktop.startMorvel();
    two.focus();
    desktop.settle();

    const auto activate = desktop.workspace().onActivate;
    int requests = 0;
    int dropped = 1;
    desktop.workspace().onActivate = [&](ProcessID pid) {
        ++requests;
        if (dropped-- <= 0) activate(pid);
    };
    desktop.click(desktop.button("one"));
    EXPECT_FALSE(one.isFocused());
    desktop.run(1s);
    EXPECT_TRUE(one.isFocused());
    EXPECT_EQ(requests, 2);

    requests = 0, dropped = 100;
    desktop.click(desktop.button("two"));
    desktop.run(10s);
    EXPECT_EQ(requests, 2) << "asked for once more, not for ever";

    requests = 0, dropped = 1;
    desktop.click(desktop.button("two"));
    desktop.workspace().onActivate = activate;
    three.focus();
    desktop.run(10s);
    EXPECT_TRUE(three.isFocused()) << "the person has gone elsewhere meanwhile and is left there";
}

TEST(UnreliableSystem, APermissionThatIsTakenAwayIsAskedForAgain) {
    BarDesktop desktop;
    auto& app = desktop.launch("Editor");
    auto& window = app.open({.title = "one"});
    desktop.startMorvel();
    desktop.accessibility().trusted = false;
    window.setFrame({10, 10, 300, 300});
    desktop.run(20s);
    EXPECT_EQ(desktop.strip(), "one") << "silence is no reason to drop anything";
    desktop.accessibility().trusted = true;
    app.open({.title = "two"});
    desktop.run(2s);
    EXPECT_EQ(desktop.strip(), "one two");
    window.setTitle("changed");
    desktop.run(1s);
    EXPECT_EQ(desktop.strip(), "changed two") << "it is observed again";
}

TEST(UnreliableSystem, DefaultsFullOfWrongTypesDoNoHarm) {
    const DefaultsValue text{std::string("\xff nonsense")}, data{Data(3, 0xff)};
    const DefaultsValue date{Date(std::chrono::duration<double>(1e300))}, dictionary{DefaultsDictionary{{"a", text}}};
    const DefaultsValue array{DefaultsArray{text, {int64_t{1}}, dictionary}};
    for (const DefaultsValue& wrong : {text, data, date, dictionary, array}) {
        BarDesktop desktop;
        sim::SimShell& shell = desktop.addDock();
        std::map<std::string, std::optional<DefaultsValue>> fallbacks;
        SettingsStore fresh(desktop.defaults());
        fresh.forEachChoice([&](const auto& setting) { fallbacks[setting.key()] = setting.stored(); });
        fallbacks.erase("accentColorCustom");  // any text is stored; a wrong one is shown as the default
        for (const auto& [key, fallback] : fallbacks) desktop.defaults().values[key] = wrong;
        for (const char* key : {"accentColorCustom", "firstRunCompleted", "dockChangedByUs", "spacesPrefsChangedByUs",
                                "spacesPrefsAsked", "updaterLastCheckedAt", "updaterSkippedVersion",
                                "updaterCachedRemote", "pinnedApps", "clampingBlacklist", "systemChangesInForce"})
            desktop.defaults().values[key] = wrong;
        desktop.launch("Editor").open({.title = "one"});
        desktop.startMorvel();
        EXPECT_EQ(desktop.strip(), "one");
        desktop.settings().forEachChoice([&](const auto& setting) {
            if (!fallbacks.contains(setting.key())) return;
            EXPECT_EQ(setting.stored(), fallbacks[setting.key()]) << setting.key();
        });
        desktop.delegate().openSettings();
        desktop.toolkit().answer("Skip");
        desktop.toolkit().answer("Skip");
        desktop.run(48h);
        EXPECT_EQ(desktop.strip(), "one");
        desktop.quitMorvel();
        EXPECT_TRUE(shell.lines.empty()) << "the flags were not set";
    }
}

TEST(UnreliableSystem, NothingIsDroppedWhileTheScreenIsLocked) {
    BarDesktop desktop;
    auto& app = desktop.launch("Editor");
    auto& one = app.open({.title = "one"});
    auto& other = app.open({.title = "other"});
    desktop.startMorvel();
    desktop.workspace().sessionActive = false;
    const auto listed = desktop.windowServer().windows;
    const auto spaces = desktop.windowServer().windowSpaces;
    desktop.windowServer().unlist(one.number());
    desktop.run(60s);
    EXPECT_EQ(desktop.strip(), "one other");
    desktop.windowServer().windows = listed;
    desktop.windowServer().windowSpaces = spaces;
    other.vanish();
    desktop.workspace().sessionActive = true;
    desktop.workspace().sessionActivated.emit();
    desktop.run(60s);
    EXPECT_EQ(desktop.strip(), "one") << "what closed meanwhile is found out afterwards";
}

}  // namespace
}  // namespace morvel
