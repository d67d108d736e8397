// Applications and screens are property objects; NSWorkspace's and NSScreen's answers are read from the world.
#include "WorkspaceWorld.h"

#include <algorithm>

#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Properties.h"

namespace morvel::mac::checked {

namespace {

std::int32_t pidOf(const Id& application) {
    return property<std::int32_t>(application, "processIdentifier");
}

void postAboutApplication(RawObject name, const Id& application) {
    post(Center::Workspace, name, NSWorkspace::shared(), {{Id(NSWorkspaceApplicationKey), application}});
}

}  // namespace

WorkspaceWorld& WorkspaceWorld::process() {
    static WorkspaceWorld instance;
    return instance;
}

NSRunningApplication WorkspaceWorld::launch(const Application& application) {
    const Id made = runtime().make("NSRunningApplication");
    setProperty(made, "processIdentifier", application.pid);
    setProperty(made, "activationPolicy", application.activationPolicy);
    setProperty(made, "localizedName", makeString(application.name));
    if (!application.bundleIdentifier.empty()) {
        setProperty(made, "bundleIdentifier", makeString(application.bundleIdentifier));
    }
    if (application.launched != 0) {
        setProperty(made, "launchDate", NSDate::since1970(application.launched));
    }
    runningApplications.push_back(made);
    postAboutApplication(NSWorkspaceDidLaunchApplicationNotification, made);
    return NSRunningApplication(made);
}

void WorkspaceWorld::quit(std::int32_t pid) {
    const NSRunningApplication gone = withPid(pid);
    if (!gone) return;
    setProperty(gone, "terminated", true);
    std::erase_if(runningApplications, [&](const Id& application) { return pidOf(application) == pid; });
    postAboutApplication(NSWorkspaceDidTerminateApplicationNotification, gone);
}

void WorkspaceWorld::activate(std::int32_t pid) {
    const NSRunningApplication chosen = withPid(pid);
    if (!chosen) return;
    for (const Id& application : runningApplications) setProperty(application, "active", false);
    setProperty(chosen, "active", true);
    if (chosen.activationPolicy() == NSApplicationActivationPolicyRegular) menuBarOwner = pid;
    postAboutApplication(NSWorkspaceDidActivateApplicationNotification, chosen);
}

void WorkspaceWorld::spaceChanged() {
    post(Center::Workspace, NSWorkspaceActiveSpaceDidChangeNotification, NSWorkspace::shared());
}

void WorkspaceWorld::setScreens(const std::vector<Screen>& described) {
    screens.clear();
    for (const Screen& screen : described) {
        const Id made = runtime().make("NSScreen");
        setProperty(made, "frame", screen.frame);
        setProperty(made, "visibleFrame", screen.visibleFrame);
        setProperty(made, "auxiliaryTopLeftArea", screen.auxiliaryTopLeft);
        setProperty(made, "auxiliaryTopRightArea", screen.auxiliaryTopRight);
        setProperty(made, "localizedName", makeString(screen.name));
        const Id number = makeNumber(std::int64_t{screen.display});
        setProperty(made, "deviceDescription", makeDictionary({{makeString("NSScreenNumber"), number}}).raw());
        screens.push_back(made);
    }
    post(Center::Default, NSApplicationDidChangeScreenParametersNotification, NSApplication::shared());
}

NSRunningApplication WorkspaceWorld::withPid(std::int32_t pid) const {
    const auto found = std::ranges::find(runningApplications, pid, pidOf);
    return found == runningApplications.end() ? NSRunningApplication() : NSRunningApplication(*found);
}

NSRunningApplication WorkspaceWorld::frontmost() const {
    const auto found = std::ranges::find_if(
        runningApplications, [](const Id& application) { return property<bool>(application, "active"); });
    return found == runningApplications.end() ? NSRunningApplication() : NSRunningApplication(*found);
}

void installWorkspace(Runtime& target) {
    const auto sharedWorkspace = target.implementing("NSWorkspace");
    sharedWorkspace("runningApplications",
                    [](Invocation& i) { i.answerObject(makeArray(workspace().runningApplications)); });
    sharedWorkspace("frontmostApplication", [](Invocation& i) { i.answerObject(workspace().frontmost()); });
    sharedWorkspace("menuBarOwningApplication",
                    [](Invocation& i) { i.answerObject(workspace().withPid(workspace().menuBarOwner)); });
    const auto runningApplication = target.implementing("NSRunningApplication");
    runningApplication("+runningApplicationWithProcessIdentifier:",
                       [](Invocation& i) { i.answerObject(workspace().withPid(i.argument<std::int32_t>(0))); });
    runningApplication("+runningApplicationsWithBundleIdentifier:", [](Invocation& i) {
        Elements found;
        for (const Id& application : workspace().runningApplications)
            if (textProperty(application, "bundleIdentifier") == textOf(i.object(0))) found.push_back(application);
        i.answerObject(makeArray(std::move(found)));
    });
    runningApplication("activateWithOptions:", [](Invocation& i) {
        workspace().activate(property<std::int32_t>(i.receiver(), "processIdentifier"));
        i.answer<bool>(true);
    });
    for (const char* quit : {"terminate", "forceTerminate"}) {
        runningApplication(quit, [](Invocation& i) {
            workspace().quit(property<std::int32_t>(i.receiver(), "processIdentifier"));
            i.answer<bool>(true);
        });
    }
    const auto screen = target.implementing("NSScreen");
    screen("+screens", [](Invocation& i) { i.answerObject(makeArray(workspace().screens)); });
}

}  // namespace morvel::mac::checked
