// The processes that own windows as running applications, known by their desktop entries.
#pragma once

#include <map>

#include "Platform/Linux/Applications/DesktopEntries.h"
#include "Platform/Linux/Applications/ProgramLauncher.h"
#include "Platform/Linux/System/GLibMainLoop.h"
#include "Platform/Linux/Windows/ClientWindows.h"
#include "Platform/Linux/Windows/WindowRequests.h"
#include "Platform/Log.h"
#include "Platform/ProcessProbe.h"
#include "Platform/Workspace.h"

namespace morvel::x11 {

/// A process becomes an application with its first window that the person works with, and stays one until it ends; a
/// client whose process is not known, until its last window is gone.
class XWorkspace : public Workspace {
public:
    struct System {
        GLibMainLoop& mainLoop;
        Log& log;
        RootState& root;
        ClientWindows& clients;
        WindowRequests& requests;
        DesktopEntries& entries;
    };

    /// All of the system outlives this.
    explicit XWorkspace(System system);

    std::vector<RunningApplication> runningApplications() override;
    std::optional<RunningApplication> runningApplication(ProcessID pid) override;
    std::optional<ProcessID> frontmostApplication() override;
    std::optional<ProcessID> menuBarOwner() override { return std::nullopt; }
    ProcessID ownProcess() override { return morvel::ownProcess(); }

    void activate(ProcessID pid) override;
    void terminate(ProcessID pid) override;
    void forceTerminate(ProcessID pid) override;
    bool isProcessAlive(ProcessID pid) override;

    std::optional<std::string> locate(const std::string& bundleID) override;
    /// The entry for folders; empty where there is none.
    std::string fileManager() override;
    std::string homeFolder() override;
    /// The path of a desktop entry. What runs already is brought to the front, or started again if it has no window.
    void openApplication(const std::string& path, const OpenApplication& how) override;
    void openFile(const std::string& path) override;
    void openPage(const std::string& address) override;
    void revealInFileManager(const std::string& path) override;

    [[nodiscard]] Subscription observeLaunched(ApplicationNotice notice) override;
    [[nodiscard]] Subscription observeTerminated(ApplicationNotice notice) override;
    [[nodiscard]] Subscription observeActivated(ApplicationNotice notice) override;
    [[nodiscard]] Subscription observeActiveSpaceChanged(std::function<void()> notice) override;

    /// Whether the application's entry says how it opens a new window.
    bool canOpenNewWindow(ProcessID pid) const;
    /// False when the application is gone, or cannot.
    bool openNewWindow(ProcessID pid);

private:
    struct Application {
        RunningApplication record;
        uint64_t order = 0;                      // of appearance
        std::optional<xcb_window_t> lastActive;  // or opened: the one that it comes to the front with
        Subscription watch;
    };

    void clientChanged(const ClientWindow& client, ClientChange change);
    void activeChanged();
    void ensureApplication(const ClientWindow& client);
    void windowShown(const ClientWindow& client);
    std::optional<DesktopEntry> entryOf(ProcessID pid) const;
    std::optional<ProcessID> runningFrom(const std::string& entryPath) const;
    RunningApplication describe(const ClientWindow& client) const;
    void watchEnd(ProcessID pid, Application& application);
    void ended(ProcessID pid);
    std::vector<const ClientWindow*> windowsOf(ProcessID pid) const;

    System system_;
    ProgramLauncher launcher_;
    std::map<std::string, Instant> starts_;  // of the last moments, by the entry's path
    std::map<ProcessID, Application> applications_;
    uint64_t lastOrder_ = 0;
    Signal<const RunningApplication&> launched_, terminated_, activated_;
    std::optional<ProcessID> frontmost_;
    Subscriptions subscriptions_;
};

}  // namespace morvel::x11
