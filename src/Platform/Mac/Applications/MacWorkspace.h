// Running applications as NSWorkspace and NSRunningApplication tell them.
#pragma once

#include "Platform/Mac/Applications/SessionWatch.h"
#include "Platform/ProcessProbe.h"
#include "Platform/Workspace.h"

namespace morvel::mac {

class MacWorkspace : public Workspace {
public:
    std::vector<RunningApplication> runningApplications() override;
    std::optional<RunningApplication> runningApplication(ProcessID pid) override;
    std::optional<ProcessID> frontmostApplication() override;
    std::optional<ProcessID> menuBarOwner() override;
    ProcessID ownProcess() override { return morvel::ownProcess(); }

    void activate(ProcessID pid) override;
    void terminate(ProcessID pid) override;
    void forceTerminate(ProcessID pid) override;
    bool isProcessAlive(ProcessID pid) override;
    bool isSessionActive() override { return session_.isActive(); }

    std::optional<std::string> locate(const std::string& bundleID) override;
    std::string fileManager() override { return "com.apple.finder"; }
    std::string homeFolder() override;
    void openApplication(const std::string& path, const OpenApplication& how) override;
    void openFile(const std::string& path) override;
    void openPage(const std::string& address) override;
    void revealInFileManager(const std::string& path) override;

    [[nodiscard]] Subscription observeLaunched(ApplicationNotice notice) override;
    [[nodiscard]] Subscription observeTerminated(ApplicationNotice notice) override;
    [[nodiscard]] Subscription observeActivated(ApplicationNotice notice) override;
    [[nodiscard]] Subscription observeActiveSpaceChanged(std::function<void()> notice) override;
    [[nodiscard]] Subscription observeSessionActivated(std::function<void()> notice) override {
        return session_.observeActivated(std::move(notice));
    }

private:
    SessionWatch session_;
};

}  // namespace morvel::mac
