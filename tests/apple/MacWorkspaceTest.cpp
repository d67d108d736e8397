// Running applications as the host tells them, what it asks of them, and the notices of their coming and going.
#include "Platform/Mac/Applications/MacWorkspace.h"

#include <unistd.h>

#include "Platform/Mac/apple/Foundation/NSNumber.h"
#include "Properties.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

constexpr ProcessID kPid(42);

class WorkspaceOfTheMac : public RuntimeTest {
protected:
    using Names = std::vector<std::string>;

    /// A listener that notes what it hears as "heading pid".
    Workspace::ApplicationNotice noting(const char* heading) {
        return [this, heading](const RunningApplication& application) {
            heard_.push_back(std::string(heading) + " " + std::to_string(application.pid.value));
        };
    }

    MacWorkspace workspace_;
    Names heard_;
};

TEST_F(WorkspaceOfTheMac, ApplicationsAreDescribed) {
    workspace().launch({.pid = 42, .bundleIdentifier = "app.notes", .name = "Notes", .launched = 1000.25});
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
    workspace().launch({.pid = 42, .bundleIdentifier = "app.notes", .name = "Notes", .launched = 1000.25});
    const auto first = workspace_.runningApplication(kPid);
    workspace().quit(42);
    workspace().launch({.pid = 42, .bundleIdentifier = "app.notes", .name = "Notes", .launched = 1000.75});
    const auto second = workspace_.runningApplication(kPid);
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->instance, second->instance);
    EXPECT_EQ(ended, std::vector{first->instance}) << "the notice of the end names the one that ended";
}

TEST_F(WorkspaceOfTheMac, RequestsReachTheApplication) {
    EXPECT_EQ(workspace_.frontmostApplication(), std::nullopt);
    workspace().launch({.pid = 42, .bundleIdentifier = "app.notes", .name = "Notes"});
    runtime().forgetCalls();
    workspace_.activate(kPid);
    const auto activation = std::ranges::find(runtime().calls(), "activateWithOptions:", &Call::selector);
    ASSERT_NE(activation, runtime().calls().end());
    std::uint64_t options = 0;
    std::memcpy(&options, activation->arguments[0].bytes.data(), sizeof options);
    EXPECT_EQ(options, 2U) << "over other applications";
    EXPECT_EQ(workspace_.frontmostApplication(), kPid);
    workspace().launch({.pid = 43, .bundleIdentifier = "app.agent", .name = "Agent", .activationPolicy = 1});
    workspace_.activate(ProcessID(43));
    EXPECT_EQ(workspace_.frontmostApplication(), ProcessID(43));
    EXPECT_EQ(workspace_.menuBarOwner(), kPid) << "an application without a menu bar leaves the other's";
    workspace_.terminate(kPid);
    EXPECT_EQ(workspace_.menuBarOwner(), std::nullopt);
    EXPECT_FALSE(workspace_.runningApplication(kPid));
    workspace().launch({.pid = 42, .bundleIdentifier = "app.notes", .name = "Notes"});
    runtime().forgetCalls();
    workspace_.forceTerminate(kPid);
    const auto names = runtime().callNames();
    EXPECT_TRUE(std::ranges::count(names, "NSRunningApplication forceTerminate"));
    EXPECT_FALSE(std::ranges::count(names, "NSRunningApplication terminate"));
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
    workspace().launch({.pid = 42, .bundleIdentifier = "", .name = "Notes"});
    workspace().activate(42);
    workspace().spaceChanged();
    workspace().quit(42);
    EXPECT_EQ(heard_, (Names{"launched 42", "activated 42", "terminated 42"}));
    EXPECT_EQ(spaceChanges, 1);
    launched.reset();
    workspace().launch({.pid = 43, .bundleIdentifier = "", .name = "Mail"});
    EXPECT_EQ(heard_.size(), 3U);
}

TEST_F(WorkspaceOfTheMac, NoticesAboutNothingAreNotPassedOn) {
    const Subscription launched = workspace_.observeLaunched(noting("launched"));
    const NSWorkspace sender = NSWorkspace::shared();
    post(Center::Workspace, NSWorkspaceDidLaunchApplicationNotification, sender);
    post(Center::Workspace, NSWorkspaceDidLaunchApplicationNotification, sender,
         {{Id(NSWorkspaceApplicationKey), makeString("no application")}});
    post(Center::Default, NSWorkspaceDidLaunchApplicationNotification, sender,
         {{Id(NSWorkspaceApplicationKey), workspace().launch({.pid = 42, .bundleIdentifier = "", .name = "Notes"})}});
    EXPECT_EQ(heard_, Names{"launched 42"}) << "only from the workspace's centre";
}

TEST_F(WorkspaceOfTheMac, TheSessionIsSeenUnlessLockedAsleepOrSwitchedAway) {
    int activations = 0;
    const Subscription token = workspace_.observeSessionActivated([&] { ++activations; });
    const Id nobody;
    EXPECT_TRUE(workspace_.isSessionActive());
    post(Center::Distributed, NSString::from("com.apple.screenIsLocked").raw(), nobody);
    EXPECT_FALSE(workspace_.isSessionActive());
    post(Center::Workspace, NSWorkspaceScreensDidSleepNotification, nobody);
    post(Center::Workspace, NSWorkspaceScreensDidWakeNotification, nobody);
    EXPECT_FALSE(workspace_.isSessionActive()) << "awake, but locked still";
    EXPECT_EQ(activations, 0);
    post(Center::Distributed, NSString::from("com.apple.screenIsUnlocked").raw(), nobody);
    EXPECT_TRUE(workspace_.isSessionActive());
    post(Center::Workspace, NSWorkspaceSessionDidResignActiveNotification, nobody);
    EXPECT_FALSE(workspace_.isSessionActive());
    post(Center::Workspace, NSWorkspaceSessionDidBecomeActiveNotification, nobody);
    EXPECT_EQ(activations, 2);
}

TEST_F(WorkspaceOfTheMac, ApplicationsAreLocatedAndFilesRevealed) {
    runtime().script("NSWorkspace", "URLForApplicationWithBundleIdentifier:", [](Invocation& i) {
        if (textOf(i.object(0)) == "app.notes") i.answerObject(NSURL::file("/Applications/Notes.app"));
    });
    EXPECT_EQ(workspace_.locate("app.notes"), "/Applications/Notes.app");
    EXPECT_EQ(workspace_.locate("app.unknown"), std::nullopt);
    Names revealed;
    runtime().script("NSWorkspace", "activateFileViewerSelectingURLs:", [&](Invocation& i) {
        for (const NSURL& url : objc::as<NSArray>(Id(i.object(0))).elements<NSURL>())
            revealed.push_back(url.path().text());
    });
    workspace_.revealInFileManager("/Applications/Notes.app");
    workspace_.revealInFileManager("");
    EXPECT_EQ(revealed, Names{"/Applications/Notes.app"});
}

TEST_F(WorkspaceOfTheMac, ApplicationsFilesAndPagesAreOpened) {
    Names opened;
    runtime().script("NSWorkspace", "openApplicationAtURL:configuration:completionHandler:", [&](Invocation& i) {
        const RawObject how = i.object(1);
        opened.push_back(NSURL(i.object(0)).path().text() +
                         (property<bool>(how, "createsNewApplicationInstance") ? " new" : "") +
                         (property<bool>(how, "activates") ? " activates" : ""));
    });
    runtime().script("NSWorkspace", "openURL:", [&](Invocation& i) {
        opened.push_back(NSURL(i.object(0)).absoluteString().text());
        i.answer<bool>(true);
    });
    workspace_.openApplication("/Applications/Notes.app", {.createsNewInstance = false, .activates = false});
    workspace_.openApplication("/Applications/Notes.app", {.createsNewInstance = true, .activates = true});
    workspace_.openFile("/Users/me/Docs");
    workspace_.openPage("HTTPS://example.com/notes");
    EXPECT_EQ(opened, (Names{"/Applications/Notes.app", "/Applications/Notes.app new activates",
                             "file:///Users/me/Docs", "HTTPS://example.com/notes"}));
    opened.clear();
    for (const char* path : {"", "Docs", "~/Docs"}) {
        workspace_.openFile(path);
        workspace_.openApplication(path, {});
    }
    for (const char* address : {"", "http://example.com", "file:///etc/passwd", "https://", "https:///x", "javascript:1",
                                "https://a b", "https://a\nb"})
        workspace_.openPage(address);
    EXPECT_EQ(opened, Names{}) << "only absolute paths and encrypted pages";
}

}  // namespace
}  // namespace morvel::mac::checked
