// Running applications as the host tells them, what it asks of them, and the notices of their coming and going.
#include "Platform/Mac/Applications/MacWorkspace.h"

#include <unistd.h>

#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

constexpr ProcessID kPid(42);

class WorkspaceOfTheMac : public RuntimeTest {
protected:
    static NSRunningApplication launchNotes(double launched = 0) {
        return workspace().launch(
            {.pid = kPid.value, .bundleIdentifier = "app.notes", .name = "Notes", .launched = launched});
    }
    /// A listener that notes what it hears as "heading pid".
    Workspace::ApplicationNotice noting(const char* heading) {
        return [this, heading](const RunningApplication& application) {
            heard_.push_back(std::string(heading) + " " + std::to_string(application.pid.value));
        };
    }

    MacWorkspace workspace_;
    Texts heard_;
};

TEST_F(WorkspaceOfTheMac, ApplicationsAreDescribed) {
    launchNotes(1000.25);
    workspace().launch({.pid = 43, .bundleIdentifier = "", .name = "helper", .activationPolicy = 1});
    workspace().launch({.pid = 44, .bundleIdentifier = "", .name = "daemon", .activationPolicy = 2});
    workspace().launch({.pid = 45, .bundleIdentifier = "", .name = "newer", .activationPolicy = 99});
    workspace().launch({.pid = -1, .bundleIdentifier = "app.gone", .name = "Gone"});
    const auto all = workspace_.runningApplications();
    ASSERT_EQ(all.size(), 4U) << "what has no process is no running application";
    EXPECT_EQ(all[0].pid, kPid);
    EXPECT_EQ(all[0].bundleID, "app.notes");
    EXPECT_EQ(all[0].localizedName, "Notes");
    EXPECT_EQ(all[0].policy, ActivationPolicy::Regular);
    EXPECT_EQ(all[1].bundleID, std::nullopt) << "none, and not an empty one";
    EXPECT_EQ(all[1].policy, ActivationPolicy::Accessory);
    EXPECT_EQ(all[2].policy, ActivationPolicy::Prohibited);
    EXPECT_EQ(all[3].policy, ActivationPolicy::Prohibited) << "an unknown policy shows no windows";
    const auto one = workspace_.runningApplication(kPid);
    ASSERT_TRUE(one);
    EXPECT_EQ(one->instance, all[0].instance) << "equal for all records of one process";
    EXPECT_FALSE(workspace_.runningApplication(ProcessID(7)));
}

TEST_F(WorkspaceOfTheMac, AProcessNumberThatIsUsedAgainIsAnotherInstance) {
    std::vector<std::uint64_t> ended;
    const Subscription token = workspace_.observeTerminated(
        [&](const RunningApplication& application) { ended.push_back(application.instance); });
    launchNotes(1000.25);
    const auto first = workspace_.runningApplication(kPid);
    workspace().quit(42);
    launchNotes(1000.75);
    const auto second = workspace_.runningApplication(kPid);
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->instance, second->instance);
    EXPECT_EQ(ended, std::vector{first->instance}) << "the notice of the end names the one that ended";
}

TEST_F(WorkspaceOfTheMac, RequestsReachTheApplication) {
    EXPECT_EQ(workspace_.frontmostApplication(), std::nullopt);
    launchNotes();
    std::uint64_t options = 0;
    runtime().script("NSRunningApplication", "activateWithOptions:", [&](Invocation& i) {
        options = i.argument<std::uint64_t>(0);
        workspace().activate(property<std::int32_t>(i.receiver(), "processIdentifier"));
        i.answer<bool>(true);
    });
    workspace_.activate(kPid);
    EXPECT_EQ(options, 2U) << "over other applications";
    EXPECT_EQ(workspace_.frontmostApplication(), kPid);
    workspace().launch({.pid = 43, .bundleIdentifier = "app.agent", .name = "Agent", .activationPolicy = 1});
    workspace_.activate(ProcessID(43));
    EXPECT_EQ(workspace_.frontmostApplication(), ProcessID(43));
    EXPECT_EQ(workspace_.menuBarOwner(), kPid) << "an application without a menu bar leaves the other's";
    workspace_.terminate(kPid);
    EXPECT_EQ(workspace_.menuBarOwner(), std::nullopt);
    EXPECT_FALSE(workspace_.runningApplication(kPid));
    launchNotes();
    workspace_.forceTerminate(kPid);
    EXPECT_EQ(sentOf({"terminate", "forceTerminate"}), (Texts{"terminate", "forceTerminate"}));
    workspace_.activate(kPid);  // it is gone
    workspace_.terminate(kPid);
    workspace_.forceTerminate(kPid);
    EXPECT_TRUE(workspace_.isProcessAlive(ProcessID(::getpid())));
    EXPECT_FALSE(workspace_.isProcessAlive(ProcessID(0)));
}

TEST_F(WorkspaceOfTheMac, NoticesAreHeardUntilTheirTokensEnd) {
    int spaceChanges = 0;
    Subscription launched = workspace_.observeLaunched(noting("launched"));
    const Subscription terminated = workspace_.observeTerminated(noting("terminated"));
    const Subscription activated = workspace_.observeActivated(noting("activated"));
    const Subscription spaces = workspace_.observeActiveSpaceChanged([&] { ++spaceChanges; });
    const NSRunningApplication notes = launchNotes();
    workspace().activate(42);
    workspace().spaceChanged();
    workspace().quit(42);
    const Texts all = {"launched 42", "activated 42", "terminated 42"};
    EXPECT_EQ(heard_, all);
    EXPECT_EQ(spaceChanges, 1);

    const NSWorkspace sender = NSWorkspace::shared();
    const Id key(NSWorkspaceApplicationKey);
    post(Center::Workspace, NSWorkspaceDidLaunchApplicationNotification, sender);
    post(Center::Workspace, NSWorkspaceDidLaunchApplicationNotification, sender, {{key, makeString("none")}});
    post(Center::Default, NSWorkspaceDidLaunchApplicationNotification, sender, {{key, notes}});
    EXPECT_EQ(heard_, all) << "nothing about nothing, and only from the workspace's centre";
    launched.reset();
    launchNotes();
    EXPECT_EQ(heard_, all);
}

TEST_F(WorkspaceOfTheMac, TheSessionIsSeenUnlessLockedAsleepOrSwitchedAway) {
    int activations = 0;
    const Subscription token = workspace_.observeSessionActivated([&] { ++activations; });
    const auto tellScreen = [](const char* name) { post(Center::Distributed, NSString::from(name).raw(), Id()); };
    EXPECT_TRUE(workspace_.isSessionActive());
    tellScreen("com.apple.screenIsLocked");
    EXPECT_FALSE(workspace_.isSessionActive());
    post(Center::Workspace, NSWorkspaceScreensDidSleepNotification, Id());
    post(Center::Workspace, NSWorkspaceScreensDidWakeNotification, Id());
    EXPECT_FALSE(workspace_.isSessionActive()) << "awake, but locked still";
    EXPECT_EQ(activations, 0);
    tellScreen("com.apple.screenIsUnlocked");
    EXPECT_TRUE(workspace_.isSessionActive());
    post(Center::Workspace, NSWorkspaceSessionDidResignActiveNotification, Id());
    EXPECT_FALSE(workspace_.isSessionActive());
    post(Center::Workspace, NSWorkspaceSessionDidBecomeActiveNotification, Id());
    EXPECT_EQ(activations, 2);
}

TEST_F(WorkspaceOfTheMac, ApplicationsFilesAndPagesAreFoundAndOpened) {
    Texts done;
    runtime().script("NSWorkspace", "URLForApplicationWithBundleIdentifier:", [](Invocation& i) {
        if (textOf(i.object(0)) == "app.notes") i.answerObject(NSURL::file("/Applications/Notes.app"));
    });
    runtime().script("NSWorkspace", "activateFileViewerSelectingURLs:", [&](Invocation& i) {
        for (const Id& url : held<Elements>(i.object(0))) done.push_back("revealed " + NSURL(url).path().text());
    });
    runtime().script("NSWorkspace", "openApplicationAtURL:configuration:completionHandler:", [&](Invocation& i) {
        const RawObject how = i.object(1);
        done.push_back(NSURL(i.object(0)).path().text() +
                       (property<bool>(how, "createsNewApplicationInstance") ? " new" : "") +
                       (property<bool>(how, "activates") ? " activates" : ""));
    });
    runtime().script("NSWorkspace", "openURL:", [&](Invocation& i) {
        done.push_back(NSURL(i.object(0)).absoluteString().text());
        i.answer<bool>(true);
    });
    EXPECT_EQ(workspace_.locate("app.notes"), "/Applications/Notes.app");
    EXPECT_EQ(workspace_.locate("app.unknown"), std::nullopt);
    workspace_.revealInFileManager("/Applications/Notes.app");
    workspace_.openApplication("/Applications/Notes.app", {.createsNewInstance = false, .activates = false});
    workspace_.openApplication("/Applications/Notes.app", {.createsNewInstance = true, .activates = true});
    workspace_.openFile("/Users/me/Docs");
    workspace_.openPage("HTTPS://example.com/notes");
    EXPECT_EQ(std::exchange(done, {}),
              (Texts{"revealed /Applications/Notes.app", "/Applications/Notes.app",
                     "/Applications/Notes.app new activates", "file:///Users/me/Docs", "HTTPS://example.com/notes"}));
    workspace_.revealInFileManager("");
    for (const char* path : {"", "Docs", "~/Docs"}) {
        workspace_.openFile(path);
        workspace_.openApplication(path, {});
    }
    for (const char* address : {"", "http://example.com", "file:///etc/passwd", "https://", "https:///x",
                                "javascript:1", "https://a b", "https://a\nb"})
        workspace_.openPage(address);
    EXPECT_EQ(done, Texts{}) << "only absolute paths and encrypted pages";
}

}  // namespace
}  // namespace morvel::mac::checked
