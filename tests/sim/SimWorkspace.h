// Running applications that a test starts and ends.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "Platform/Workspace.h"
#include "Util/Signal.h"
#include "Util/WebAddress.h"
#include "sim/Journal.h"

namespace morvel::sim {

/// Requests are written down and handed to whoever plays the applications.
class SimWorkspace : public Workspace {
public:
    /// The number of the program under test.
    static constexpr ProcessID kOwnProcess{2};

    explicit SimWorkspace(Journal& journal) : journal_(journal) {}

    std::vector<RunningApplication> runningApplications() override { return running; }
    std::optional<RunningApplication> runningApplication(ProcessID pid) override {
        for (const RunningApplication& app : running)
            if (app.pid == pid) return app;
        return std::nullopt;
    }
    std::optional<ProcessID> frontmostApplication() override { return frontmost; }
    std::optional<ProcessID> menuBarOwner() override { return frontmost; }
    ProcessID ownProcess() override { return kOwnProcess; }
    void activate(ProcessID pid) override { request("activate", pid, onActivate); }
    void terminate(ProcessID pid) override { request("terminate", pid, onTerminate); }
    void forceTerminate(ProcessID pid) override { request("forceTerminate", pid, onForceTerminate); }
    bool isProcessAlive(ProcessID pid) override { return runningApplication(pid).has_value(); }

    std::optional<std::string> locate(const std::string& bundleID) override {
        const auto found = installed.find(bundleID);
        return found == installed.end() ? std::nullopt : std::optional(found->second);
    }
    std::string fileManager() override { return "com.apple.finder"; }
    std::string homeFolder() override { return "/Users/me"; }
    void openApplication(const std::string& path, const OpenApplication& how) override {
        journal_.add(
            {"openApplication " + path + (how.createsNewInstance ? " new" : "") + (how.activates ? " activates" : ""),
             {},
             {}});
        if (onOpenApplication) onOpenApplication(path, how);
    }
    void openFile(const std::string& path) override {
        journal_.add({"openFile " + path, {}, {}});
        if (onOpenFile) onOpenFile(path);
    }
    void openPage(const std::string& address) override {
        if (isSecureWebAddress(address)) journal_.add({"openPage " + address, {}, {}});
    }
    void revealInFileManager(const std::string& path) override { journal_.add({"reveal " + path, {}, {}}); }

    Subscription observeLaunched(ApplicationNotice notice) override { return launched.subscribe(std::move(notice)); }
    Subscription observeTerminated(ApplicationNotice notice) override {
        return terminated.subscribe(std::move(notice));
    }
    Subscription observeActivated(ApplicationNotice notice) override { return activated.subscribe(std::move(notice)); }
    Subscription observeActiveSpaceChanged(std::function<void()> notice) override {
        return activeSpaceChanged.subscribe(std::move(notice));
    }

    bool isSessionActive() override { return sessionActive; }
    Subscription observeSessionActivated(std::function<void()> notice) override {
        return sessionActivated.subscribe(std::move(notice));
    }

    /// Forgets the process without any notice.
    void drop(ProcessID pid) {
        std::erase_if(running, [pid](const RunningApplication& app) { return app.pid == pid; });
        if (frontmost == pid) frontmost.reset();
    }

    std::vector<RunningApplication> running;  ///< in the order of their launch
    std::optional<ProcessID> frontmost;
    std::map<std::string, std::string> installed;  ///< bundle identifier → path
    Signal<const RunningApplication&> launched;
    Signal<const RunningApplication&> terminated;
    Signal<const RunningApplication&> activated;
    Signal<> activeSpaceChanged;
    bool sessionActive = true;
    Signal<> sessionActivated;
    std::function<void(ProcessID)> onActivate;
    std::function<void(ProcessID)> onTerminate;
    std::function<void(ProcessID)> onForceTerminate;
    std::function<void(const std::string& path, const OpenApplication& how)> onOpenApplication;
    std::function<void(const std::string& path)> onOpenFile;

private:
    void request(const char* what, ProcessID pid, const std::function<void(ProcessID)>& handler) {
        journal_.add({what, pid, {}});
        if (handler) handler(pid);
    }

    Journal& journal_;
};

}  // namespace morvel::sim
