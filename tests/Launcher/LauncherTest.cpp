// The launcher beside a bar of its own: what it lists, what typing and clicking do, and what it costs.
#include <gtest/gtest.h>

#include "Launcher/LauncherPopover.h"
#include "Launcher/StartButton.h"
#include "UI/Panel.h"
#include "sim/FakeMainLoop.h"
#include "sim/SimIcons.h"
#include "sim/SimToolkit.h"

namespace morvel {
namespace {

using Names = std::vector<std::string>;

struct Launcher : testing::Test {
    sim::FakeMainLoop loop;
    sim::SimIcons icons;
    sim::SimToolkit toolkit{loop};
    IconCache cache{icons, loop};
    ui::View bar;
    StartButton button{icons, StartButton::Kind::Start, [](ui::View&) {}};
    ui::Panel panel{toolkit, {.frame = {0, 0, 600, 36}}, bar};
    std::vector<InstalledApp> installed;
    std::function<void(const std::vector<InstalledApp>&)> waiting;  // while `isSlow`
    bool isSlow = false;
    Names opened;
    int pins = 0;
    std::unique_ptr<LauncherPopover> launcher = std::make_unique<LauncherPopover>(
        toolkit, cache,
        LauncherBindings{.apps =
                             [this](std::function<void(const std::vector<InstalledApp>&)> use) {
                                 if (!isSlow) return use(installed);
                                 waiting = std::move(use);
                             },
                         .open = [this](const InstalledApp& app) { opened.push_back(app.bundleURL); },
                         .onWillShow = [this] { ++pins; },
                         .onDidClose = [this] { --pins; }});

    Launcher() {
        bar.addSubview(button);
        button.setFrame({0, 0, 36, 36});
        for (const char* name : {"App Store", "Mail", "Safari", "TextEdit"}) install(name);
    }
    void install(const std::string& name) {
        installed.push_back({"com.apple." + name, name, "/Applications/" + name + ".app"});
    }
    void open(MorvelEdge edge = MorvelEdge::Bottom) {
        launcher->show(button, edge);
        loop.settle();
    }
    Names listed() {
        Names names;
        for (const InstalledApp* app : launcher->view()->filtered()) names.push_back(app->displayName);
        return names;
    }
    std::string selected() {
        const auto place = launcher->view()->list().selected();
        return place ? launcher->view()->filtered().at(*place)->displayName : "none";
    }
    /// The rows that can be seen, in no order.
    std::vector<LauncherRow*> rows() {
        std::vector<LauncherRow*> shown;
        for (ui::View* row : launcher->view()->list().subviews())
            if (!row->isHidden()) shown.push_back(static_cast<LauncherRow*>(row));
        return shown;
    }
    LauncherRow& row(const std::string& name) {
        for (LauncherRow* row : rows())
            if (row->nameLabel().text() == name) return *row;
        throw std::runtime_error("no row " + name);
    }
};

TEST_F(Launcher, ListsEverythingAndThenWhatIsTyped) {
    open();
    EXPECT_EQ(toolkit.shownPopover()->size, (Size{320, 400}));
    EXPECT_EQ(toolkit.shownPopover()->kind, ui::PopoverKind::Search);
    EXPECT_EQ(listed(), (Names{"App Store", "Mail", "Safari", "TextEdit"}));
    EXPECT_EQ(selected(), "none");
    toolkit.type("SAF");
    EXPECT_EQ(listed(), Names{"Safari"});
    EXPECT_EQ(selected(), "Safari");
    toolkit.erase();
    toolkit.type(" ");
    EXPECT_EQ(listed(), Names{"App Store"}) << "a space finds names with a space";
    toolkit.erase();
    toolkit.type("com.apple");
    EXPECT_EQ(listed(), Names{}) << "identifiers are not searched";
    loop.settle();
    EXPECT_TRUE(rows().empty());
    EXPECT_TRUE(toolkit.give(ui::TextCommand::Confirm)) << "there is nothing to open";
    EXPECT_TRUE(toolkit.give(ui::TextCommand::MoveDown));
    EXPECT_TRUE(launcher->isShown());
}

TEST_F(Launcher, OpensAwayFromTheScreenEdgeWithNothingTyped) {
    open(MorvelEdge::Bottom);
    EXPECT_EQ(toolkit.shownPopover()->edge, ui::Edge::Top);
    toolkit.type("Saf");
    launcher->close();
    EXPECT_EQ(launcher->view(), nullptr);
    open(MorvelEdge::Top);
    EXPECT_EQ(toolkit.shownPopover()->edge, ui::Edge::Bottom);
    EXPECT_EQ(launcher->view()->query(), "");
    open(MorvelEdge::Top);
    EXPECT_EQ(pins, 1) << "it was open already";
    toolkit.pressOutside();
    EXPECT_FALSE(launcher->isShown());
    EXPECT_EQ(pins, 0);
}

TEST_F(Launcher, AClickOpensTheApplicationAndClosesIt) {
    open();
    toolkit.click(row("Mail"));
    EXPECT_EQ(opened, Names{"/Applications/Mail.app"});
    EXPECT_FALSE(launcher->isShown());
    open();
    toolkit.press(row("Mail"));
    toolkit.drag({-50, -50});
    toolkit.release();
    EXPECT_EQ(opened.size(), 1u) << "released elsewhere";
}

TEST_F(Launcher, TheKeyboardSelectsAndOpens) {
    open();
    EXPECT_TRUE(toolkit.give(ui::TextCommand::Confirm));
    EXPECT_TRUE(opened.empty()) << "nothing was chosen yet";
    toolkit.give(ui::TextCommand::MoveDown);
    EXPECT_EQ(selected(), "App Store");
    toolkit.give(ui::TextCommand::MoveUp);
    EXPECT_EQ(selected(), "App Store") << "there is nothing above";
    toolkit.give(ui::TextCommand::PageDown);
    EXPECT_EQ(selected(), "TextEdit");
    toolkit.give(ui::TextCommand::MoveDown);
    EXPECT_EQ(selected(), "TextEdit");
    toolkit.type("a");
    toolkit.give(ui::TextCommand::MoveDown);
    EXPECT_EQ(selected(), "Mail") << "after App Store, which begins so";
    EXPECT_TRUE(toolkit.give(ui::TextCommand::Confirm));
    EXPECT_EQ(opened, Names{"/Applications/Mail.app"});
    EXPECT_FALSE(launcher->isShown());
    open();
    EXPECT_TRUE(toolkit.give(ui::TextCommand::Cancel));
    EXPECT_FALSE(launcher->isShown());
}

TEST_F(Launcher, AListThatIsReadSlowlyComesWhereItIsStillWanted) {
    isSlow = true;
    open();
    toolkit.type("saf");
    EXPECT_EQ(listed(), Names{});
    waiting(installed);
    EXPECT_EQ(listed(), Names{"Safari"}) << "what was typed meanwhile counts";
    launcher->close();
    waiting(installed);
    open();
    const auto late = waiting;
    launcher.reset();
    late(installed);  // touches nothing that is gone: the sanitizers look
}

TEST_F(Launcher, AThousandApplicationsCostWhatCanBeSeen) {
    for (int i = 0; i < 1000; ++i) install("Tool " + std::to_string(1000 + i));
    open();
    const size_t made = launcher->view()->list().subviews().size();
    EXPECT_LE(made, 14u) << "more rows than can be seen";
    const auto iconLoads = [this] {
        return std::ranges::count_if(icons.loads, [](const auto& load) { return load.first.starts_with("file:"); });
    };
    EXPECT_LE(iconLoads(), 14);
    for (int i = 0; i < 100; ++i) toolkit.turnWheel(launcher->view()->list(), 1);
    loop.settle();
    EXPECT_LE(launcher->view()->list().subviews().size(), made + 1) << "one more where two are cut";
    for (const LauncherRow* row : rows()) {
        const std::string& name = row->nameLabel().text();
        EXPECT_EQ(sim::imageName(row->iconView().image()), "baked:file:/Applications/" + name + ".app") << name;
    }
    toolkit.give(ui::TextCommand::PageDown);
    EXPECT_EQ(selected(), "App Store");
    EXPECT_EQ(launcher->view()->scrollView().offset(), 0) << "what is selected is shown";
    toolkit.type("tool 1999");
    loop.settle();
    EXPECT_EQ(rows().size(), 1u);
    EXPECT_EQ(row("Tool 1999").state(), RowState::Selected);
}

TEST_F(Launcher, ItsOwnersMayGoWhileItIsOpen) {
    open();
    launcher->view()->onLaunch = [this](const InstalledApp&) { launcher.reset(); };
    toolkit.click(row("Mail"));
    EXPECT_EQ(toolkit.shownPopover(), nullptr);
}

}  // namespace
}  // namespace morvel
