// Applications and screens are property objects; NSWorkspace's and NSScreen's answers are read from the world.
#include "WorkspaceWorld.h"

#include <algorithm>

#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Properties.h"

namespace morvel::mac::checked {

namespace {

Id makeObject(const char* className) {
    return Id(objc::kAdopt, runtime().allocate(runtime().classNamed(className)));
}

std::int32_t pidOf(const Id& application) {
    return property<std::int32_t>(application.raw(), "processIdentifier");
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
    const Id made = makeObject("NSRunningApplication");
    setProperty(made.raw(), "processIdentifier", application.pid);
    setProperty(made.raw(), "activationPolicy", application.activationPolicy);
    setProperty(made.raw(), "localizedName", makeString(application.name).raw());
    if (!application.bundleIdentifier.empty()) {
        setProperty(made.raw(), "bundleIdentifier", makeString(application.bundleIdentifier).raw());
    }
    if (application.launched != 0) {
        setProperty(made.raw(), "launchDate", NSDate::since1970(application.launched).raw());
    }
    runningApplications.push_back(made);
    postAboutApplication(NSWorkspaceDidLaunchApplicationNotification, made);
    return NSRunningApplication(made);
}

void WorkspaceWorld::quit(std::int32_t pid, Notice notice) {
    const NSRunningApplication gone = withPid(pid);
    if (!gone) return;
    setProperty(gone.raw(), "terminated", true);
    std::erase_if(runningApplications, [&](const Id& application) { return pidOf(application) == pid; });
    if (notice == Notice::Posted) postAboutApplication(NSWorkspaceDidTerminateApplicationNotification, gone);
}

void WorkspaceWorld::activate(std::int32_t pid) {
    const NSRunningApplication chosen = withPid(pid);
    if (!chosen) return;
    for (const Id& application : runningApplications) setProperty(application.raw(), "active", false);
    setProperty(chosen.raw(), "active", true);
    if (chosen.activationPolicy() == NSApplicationActivationPolicyRegular) menuBarOwner = pid;
    postAboutApplication(NSWorkspaceDidActivateApplicationNotification, chosen);
}

void WorkspaceWorld::spaceChanged() {
    post(Center::Workspace, NSWorkspaceActiveSpaceDidChangeNotification, NSWorkspace::shared());
}

void WorkspaceWorld::setScreens(const std::vector<Screen>& described) {
    screens.clear();
    for (const Screen& screen : described) {
        const Id made = makeObject("NSScreen");
        setProperty(made.raw(), "frame", screen.frame);
        setProperty(made.raw(), "visibleFrame", screen.visibleFrame);
        setProperty(made.raw(), "auxiliaryTopLeftArea", screen.auxiliaryTopLeft);
        setProperty(made.raw(), "auxiliaryTopRightArea", screen.auxiliaryTopRight);
        setProperty(made.raw(), "localizedName", makeString(screen.name).raw());
        const Id number = makeNumber(std::int64_t{screen.display});
        setProperty(made.raw(), "deviceDescription", makeDictionary({{makeString("NSScreenNumber"), number}}).raw());
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
        runningApplications, [](const Id& application) { return property<bool>(application.raw(), "active"); });
    return found == runningApplications.end() ? NSRunningApplication() : NSRunningApplication(*found);
}

void installWorkspace(Runtime& runtime) {
    runtime.implement("NSWorkspace", "runningApplications",
                      [](Invocation& i) { i.answerObject(makeArray(workspace().runningApplications)); });
    runtime.implement("NSWorkspace", "frontmostApplication",
                      [](Invocation& i) { i.answerObject(workspace().frontmost()); });
    runtime.implement("NSWorkspace", "menuBarOwningApplication",
                      [](Invocation& i) { i.answerObject(workspace().withPid(workspace().menuBarOwner)); });
    runtime.implement("NSRunningApplication", "+runningApplicationWithProcessIdentifier:", [](Invocation& i) {
        i.answerObject(workspace().withPid(i.argument<std::int32_t>(0)));
    });
    runtime.implement("NSRunningApplication", "+runningApplicationsWithBundleIdentifier:", [](Invocation& i) {
        Elements found;
        for (const Id& application : workspace().runningApplications)
            if (textOf(property<RawObject>(application.raw(), "bundleIdentifier")) == textOf(i.object(0)))
                found.push_back(application);
        i.answerObject(makeArray(std::move(found)));
    });
    runtime.implement("NSRunningApplication", "activateWithOptions:", [](Invocation& i) {
        workspace().activate(property<std::int32_t>(i.receiver(), "processIdentifier"));
        i.answer<bool>(true);
    });
    for (const char* quit : {"terminate", "forceTerminate"}) {
        runtime.implement("NSRunningApplication", quit, [](Invocation& i) {
            workspace().quit(property<std::int32_t>(i.receiver(), "processIdentifier"));
            i.answer<bool>(true);
        });
    }
    runtime.implement("NSScreen", "+screens", [](Invocation& i) { i.answerObject(makeArray(workspace().screens)); });
}

}  // namespace morvel::mac::checked
