// Programs are started from desktop entries, and their windows come to the clicked monitor and its workspace.
#include <glib.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>

#include "BarTest.h"

namespace morvel::e2e {
namespace {

namespace fs = std::filesystem;

constexpr Box kLeft{0, 0, 640, 800};
constexpr Box kRight{640, 0, 640, 800};

class Launching : public BarTest {
protected:
    Launching() { desktop.setMonitors({{"left", kLeft, true}, {"right", kRight}}); }

    /// An installed program of puppets: the shell command of its Exec line.
    void install(const std::string& id, const std::string& command, const std::string& more = "") {
        const fs::path folder = world.server.home() / ".local/share/applications";
        fs::create_directories(folder);
        std::ofstream(folder / (id + ".desktop")) << "[Desktop Entry]\nType=Application\nName=" << id
                                                  << "\nStartupWMClass=" << id << "\nExec=" << command << "\n"
                                                  << more;
    }
    static std::string puppet(const std::string& className, const std::string& title) {
        return std::string(MORVEL_PUPPET) + " " + className + " " + title;
    }
    /// Starts the bar with this one item on it, under the name "Pin".
    void startPinned(const std::string& kind, const std::string& identifier) {
        const std::string items =
            R"([{"kind":")" + kind + R"(","identifier":")" + identifier + R"(","displayName":"Pin"}])";
        const std::unique_ptr<char, decltype(&g_free)> data(
            g_base64_encode(reinterpret_cast<const guchar*>(items.data()), items.size()), &g_free);
        startBar({.defaults = R"({"groupingMode": "never", "pinnedApps": {"$data": ")" + std::string(data.get()) +
                              "\"}}"},
                 2);
    }
    /// The pinned button of the right bar.
    Spot pin() {
        std::optional<Spot> spot;
        EXPECT_TRUE(eventually([&] {
            const BarWindow right = bar->panels().at(1);
            for (const BarView& view : right.views)
                if (!view.hidden && view.tooltip == "Pin") spot = view.frame.center();
            return spot.has_value();
        }));
        return spot.value_or(Spot{});
    }
    void click() { pointer.click(pin()); }
    void launchNewInstance() {
        pointer.rightClick(pin());
        pointer.click(popupItem("Launch New Instance").center());
    }
    void quit() {
        bar->program().signal(SIGTERM);
        EXPECT_EQ(bar->program().waitForExit(), 0);
        bar.reset();
    }
    xcb_window_t window(const std::string& title) {
        std::optional<xcb_window_t> found;
        EXPECT_TRUE(eventually([&] { return (found = desktop.windowTitled(title)).has_value(); })) << title;
        return found.value_or(XCB_NONE);
    }
    bool isOnRight(xcb_window_t window) { return kRight.contains(desktop.windowBox(window)); }
    static std::vector<std::string> words(const fs::path& file) {
        std::ifstream in(file);
        return {std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
    }
    /// The process that says it owns the window.
    pid_t owner(xcb_window_t window) {
        const auto pids = desktop.connection().cardinals(window, "_NET_WM_PID");
        return pids.empty() ? 0 : static_cast<pid_t>(pids[0]);
    }
};

TEST_F(Launching, OpensOnTheMonitorAndTheWorkspaceOfTheClick) {
    install("slow", "sh -c \"sleep 1; exec " + puppet("slow", "Fresh") + "\"");
    startPinned("app", "slow");
    click();
    click();  // by habit: one program is enough
    desktop.runFor(300ms);
    desktop.showWorkspace(1);
    const auto fresh = window("Fresh");
    EXPECT_TRUE(eventually([&] { return isOnRight(fresh); }));
    EXPECT_TRUE(eventually([&] { return desktop.workspaceOf(fresh) == 0; }));
    desktop.showWorkspace(0);
    EXPECT_TRUE(showsButton("Fresh", 1));
    EXPECT_EQ(desktop.windowsOf(owner(fresh)).size(), 1U);
    desktop.runFor(1500ms);
    EXPECT_EQ(std::ranges::count_if(desktop.clients(), [&](auto w) { return desktop.title(w) == "Fresh"; }), 1);
}

TEST_F(Launching, WhatIsStartedIsOnItsOwn) {
    install("plain", puppet("plain", "Fresh"));
    startPinned("app", "plain");
    launchNewInstance();
    const auto fresh = window("Fresh");
    const pid_t pid = owner(fresh);
    const fs::path process = "/proc/" + std::to_string(pid);
    for (const auto& descriptor : fs::directory_iterator(process / "fd")) {
        const std::string target = fs::read_symlink(descriptor);
        EXPECT_TRUE(target == "/dev/null" || target.starts_with("socket:")) << descriptor << " is " << target;
    }
    const auto status = words(process / "stat");
    EXPECT_NE(status.at(3), std::to_string(bar->program().pid())) << "init reaps it";
    EXPECT_EQ(status.at(5), std::to_string(pid)) << "its session is its own";
    quit();
    EXPECT_TRUE(fs::exists(process));
    EXPECT_TRUE(desktop.windowTitled("Fresh"));
}

TEST_F(Launching, ARunningProgramOpensAWindowByItsOwnAction) {
    install("editor", puppet("editor", "Wrong"),
            "Actions=prefs;new-window;\n[Desktop Action prefs]\nName=Settings\nExec=" + puppet("editor", "Wrong") +
                "\n[Desktop Action new-window]\nName=Neues Fenster\nExec=" + puppet("editor", "Fresh") + "\n");
    const Program running = runPuppet("editor", {"Old"});
    const auto old = window("Old");
    const Box before = desktop.windowBox(old);
    startPinned("app", "editor");
    ASSERT_TRUE(showsButton("Old"));
    click();
    const auto fresh = window("Fresh");
    EXPECT_TRUE(eventually([&] { return isOnRight(fresh); }));
    EXPECT_TRUE(becomesActive(fresh));
    EXPECT_EQ(desktop.windowBox(old), before);
    EXPECT_FALSE(desktop.windowTitled("Wrong"));
}

TEST_F(Launching, AnotherWorkspacesWindowIsLentAndGoesBackToItsOwn) {
    desktop.connection().askManager(desktop.connection().root(), "_NET_NUMBER_OF_DESKTOPS", {4});
    install("single", puppet("single", "Wrong"));
    const Program running = runPuppet("single", {"Old"});
    const auto old = window("Old");
    desktop.sendToWorkspace(old, 2);
    desktop.showWorkspace(3);
    startPinned("app", "single");
    desktop.runFor(500ms);
    click();
    EXPECT_TRUE(becomesActive(old));
    EXPECT_EQ(desktop.currentWorkspace(), 3U) << "the person stays where they are";
    EXPECT_TRUE(eventually([&] { return desktop.workspaceOf(old) == 2; }));
    EXPECT_FALSE(desktop.windowTitled("Wrong"));
    click();
    EXPECT_TRUE(eventually([&] { return desktop.workspaceOf(old) == 0xFFFFFFFF; }));
    quit();
    EXPECT_TRUE(eventually([&] { return desktop.workspaceOf(old) == 2; })) << "also when the bar ends meanwhile";
}

TEST_F(Launching, AFolderOpensInTheFileManager) {
    install("files", std::string(MORVEL_PUPPET) + " files %U", "MimeType=inode/directory;\n");
    std::ofstream(world.server.configFolder() / "mimeapps.list")
        << "[Default Applications]\ninode/directory=files.desktop\n";
    const fs::path docs = world.server.home() / "My Docs";
    fs::create_directories(docs);
    fs::create_directory_symlink(docs, world.server.home() / "docs");
    const std::string path = world.server.home() / "docs";
    startPinned("folder", path);
    click();
    const auto opened = window(path);
    EXPECT_TRUE(eventually([&] { return isOnRight(opened); }));
}

TEST_F(Launching, WhatCannotBeStartedIsQuiet) {
    install("broken", "\"unclosed");
    install("gone", "/no/such/program");
    for (const std::string id : {"broken", "gone", "unknown"}) {
        startPinned("app", id);
        click();
        desktop.runFor(300ms);
        EXPECT_TRUE(bar->program().isRunning()) << id;
        quit();
    }
    startPinned("folder", "/no/such/folder");
    click();
    desktop.runFor(300ms);
}

}  // namespace
}  // namespace morvel::e2e
