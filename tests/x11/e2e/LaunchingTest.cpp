// Programs are started from desktop entries, and their windows come to the clicked monitor and its workspace.
#include <glib.h>

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "BarTest.h"

namespace morvel::e2e {
namespace {

namespace fs = std::filesystem;

struct Pin {
    std::string kind, identifier;
};

class Launching : public BarTest {
protected:
    Launching() { splitInTwo(); }

    static std::string puppet(const std::string& className, const std::string& title) {
        return std::string(MORVEL_PUPPET) + " " + className + " " + title;
    }
    /// Starts the bar with these items on it, which are named "Pin 0" and so on.
    void startPinned(const std::vector<Pin>& pins) {
        auto items = nlohmann::json::array();
        for (const auto& [kind, identifier] : pins)
            items.push_back({{"kind", kind}, {"identifier", identifier}, {"displayName", name(items.size())}});
        const std::string text = items.dump();
        const std::unique_ptr<char, decltype(&g_free)> data(
            g_base64_encode(reinterpret_cast<const guchar*>(text.data()), text.size()), &g_free);
        startBar({.defaults = R"({"groupingMode": "never", "pinnedMaxVisible": 5, "pinnedApps": {"$data": ")" +
                              std::string(data.get()) + "\"}}"},
                 2);
    }
    static std::string name(size_t pin) { return "Pin " + std::to_string(pin); }
    /// The pinned button of the right bar.
    Spot pin(size_t index = 0) {
        EXPECT_TRUE(eventually([&] { return bar->group(name(index), 1).has_value(); })) << name(index);
        return bar->group(name(index), 1).value_or(BarView{}).frame.center();
    }
    void click(size_t index = 0) { pointer.click(pin(index)); }
    testing::AssertionResult comesToTheRight(xcb_window_t window) {
        return eventually([&] { return kRight.contains(desktop.windowBox(window)); }) << desktop.windowBox(window);
    }
    testing::AssertionResult comesToWorkspace(uint32_t workspace, xcb_window_t window) {
        return eventually([&] { return desktop.workspaceOf(window) == workspace; }) << desktop.workspaceOf(window);
    }
};

TEST_F(Launching, OpensOnTheMonitorAndTheWorkspaceOfTheClick) {
    install("slow", "sh -c \"sleep 1; exec " + puppet("slow", "Fresh") + "\"");
    startPinned({{"app", "slow"}});
    click();
    click();  // by habit: one program is enough
    desktop.runFor(300ms);
    desktop.showWorkspace(1);
    const auto fresh = awaitWindow("Fresh");
    EXPECT_TRUE(comesToTheRight(fresh));
    EXPECT_TRUE(comesToWorkspace(0, fresh));
    desktop.showWorkspace(0);
    EXPECT_TRUE(showsButton("Fresh", 1));
    desktop.runFor(1500ms);
    EXPECT_EQ(std::ranges::count_if(desktop.clients(), [&](auto w) { return desktop.title(w) == "Fresh"; }), 1);
}

TEST_F(Launching, WhatIsStartedIsOnItsOwn) {
    install("plain", puppet("plain", "Fresh"));
    startPinned({{"app", "plain"}});
    pointer.rightClick(pin());
    pick("Launch New Instance");
    const auto pids = desktop.connection().cardinals(awaitWindow("Fresh"), "_NET_WM_PID");
    ASSERT_EQ(pids.size(), 1U);
    const std::string pid = std::to_string(pids[0]);
    for (const auto& descriptor : fs::directory_iterator("/proc/" + pid + "/fd")) {
        const std::string target = fs::read_symlink(descriptor);
        EXPECT_TRUE(target == "/dev/null" || target.starts_with("socket:")) << descriptor << " is " << target;
    }
    std::ifstream stat("/proc/" + pid + "/stat");
    const std::vector<std::string> status{std::istream_iterator<std::string>(stat), {}};
    EXPECT_NE(status.at(3), std::to_string(bar->program().pid())) << "init reaps it";
    EXPECT_EQ(status.at(5), pid) << "its session is its own";
    quitBar();
    EXPECT_TRUE(fs::exists("/proc/" + pid));
    EXPECT_TRUE(desktop.windowTitled("Fresh"));
}

TEST_F(Launching, ARunningProgramOpensAWindowByItsOwnAction) {
    install("editor", puppet("editor", "Wrong"),
            "Actions=prefs;new-window;\n[Desktop Action prefs]\nName=Settings\nExec=" + puppet("editor", "Wrong") +
                "\n[Desktop Action new-window]\nName=Neues Fenster\nExec=" + puppet("editor", "Fresh") + "\n");
    const Program running = runPuppet("editor", {"Old"});
    const auto old = awaitWindow("Old");
    const Box before = desktop.windowBox(old);
    startPinned({{"app", "editor"}});
    ASSERT_TRUE(showsButton("Old"));
    click();
    const auto fresh = awaitWindow("Fresh");
    EXPECT_TRUE(comesToTheRight(fresh));
    EXPECT_TRUE(becomesActive(fresh));
    EXPECT_EQ(desktop.windowBox(old), before);
    EXPECT_FALSE(desktop.windowTitled("Wrong"));
}

TEST_F(Launching, AnotherWorkspacesWindowIsLentAndGoesBackToItsOwn) {
    desktop.connection().askManager(desktop.connection().root(), "_NET_NUMBER_OF_DESKTOPS", {4});
    install("single", puppet("single", "Wrong"));
    const Program running = runPuppet("single", {"Old"});
    const auto old = awaitWindow("Old");
    desktop.sendToWorkspace(old, 2);
    desktop.showWorkspace(3);
    startPinned({{"app", "single"}});
    desktop.runFor(500ms);
    click();
    EXPECT_TRUE(becomesActive(old));
    EXPECT_EQ(desktop.currentWorkspace(), 3U) << "the person stays where they are";
    EXPECT_TRUE(comesToWorkspace(2, old));
    EXPECT_FALSE(desktop.windowTitled("Wrong"));
    click();
    constexpr uint32_t kAllWorkspaces = 0xFFFFFFFF;
    EXPECT_TRUE(comesToWorkspace(kAllWorkspaces, old));
    quitBar();
    EXPECT_TRUE(comesToWorkspace(2, old)) << "also when the bar ends meanwhile";
}

TEST_F(Launching, AFolderOpensInTheFileManagerAndWhatCannotBeStartedIsQuiet) {
    install("files", std::string(MORVEL_PUPPET) + " files %U", "MimeType=inode/directory;\n");
    std::ofstream(world.server.configFolder() / "mimeapps.list")
        << "[Default Applications]\ninode/directory=files.desktop\n";
    const fs::path docs = world.server.home() / "My Docs";
    fs::create_directories(docs);
    const std::string link = world.server.home() / "docs";
    fs::create_directory_symlink(docs, link);
    install("broken", "\"unclosed");
    install("gone", "/no/such/program");
    startPinned(
        {{"folder", "/no/such/folder"}, {"app", "broken"}, {"app", "gone"}, {"app", "unknown"}, {"folder", link}});
    for (size_t i = 0; i < 4; ++i) {
        click(i);
        desktop.runFor(300ms);
        EXPECT_TRUE(bar->program().isRunning()) << i;
    }
    click(4);
    EXPECT_TRUE(comesToTheRight(awaitWindow(link)));
}

}  // namespace
}  // namespace morvel::e2e
