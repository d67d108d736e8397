// The desktop's changes, each as the system makes it: the state first, the notice after it.
#include "MacDesktop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>

#include "Platform/Mac/apple/Dispatch.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Properties.h"

namespace morvel::mac::checked {

namespace {

constexpr CGSize kScreen{1440, 900};
constexpr double kMenuBar = 24;

WorkspaceWorld::Screen screen(std::uint32_t display, const char* name, double x) {
    return {display, name, {{x, 0}, kScreen}, {{x, 0}, {kScreen.width, kScreen.height - kMenuBar}}};
}

Id space(std::uint64_t number) {
    return makeDictionary({{makeString("id64"), makeNumber(static_cast<std::int64_t>(number))},
                           {makeString("type"), makeNumber(std::int64_t{0})}});
}

/// The buttons below that can be seen, from the left.
std::vector<NSView> buttonsBelow(const NSView& view) {
    if (property<bool>(view, "hidden")) return {};
    if (textProperty(view, "accessibilityRole") == "AXButton") return {view};
    auto children = view.subviews().elements<NSView>();
    std::ranges::stable_sort(children, {}, [](const NSView& child) { return child.frame().origin.x; });
    std::vector<NSView> found;
    for (const NSView& child : children) std::ranges::copy(buttonsBelow(child), std::back_inserter(found));
    return found;
}

/// The middle of a view in its window's coordinates.
CGPoint middleOf(const NSView& view) {
    const CGSize size = view.frame().size;
    // The window's origin seen from the view, turned round: the view is flipped.
    const CGPoint origin = view.convertPointFrom({0, 0}, NSView());
    return {size.width / 2 - origin.x, origin.y - size.height / 2};
}

}  // namespace

MacDesktop::MacDesktop() {
    plugInBoth();
    accessibility().performed = [this](const ElementIdentity& element, const std::string& action) {
        if (action == "AXRaise") tellFocus(windowOf(element));
    };
    accessibility().written = [this](const ElementIdentity& element, const std::string& attribute) {
        // Notices come with a later turn of the run loop, never inside the write.
        const Id window = windowOf(element);
        if (window && attribute == "AXPosition")
            dispatch_async_f(&_dispatch_main_q, new Id(window), [](void* context) {
                const std::unique_ptr<Id> moved(static_cast<Id*>(context));
                accessibility().post(*moved, "AXWindowMoved");
            });
    };
}

void MacDesktop::plugInBoth() {
    windowServer().displayUUIDs = {{1, "LEFT"}, {2, "RIGHT"}};
    showSpace(space_);
    workspace().setScreens({screen(1, "Left", 0), screen(2, "Right", kScreen.width)});
}

void MacDesktop::unplugRight() {
    windowServer().displayUUIDs.erase(2);
    workspace().setScreens({screen(1, "Left", 0)});
}

void MacDesktop::showSpace(std::uint64_t number) {
    space_ = number;
    Elements displays;
    for (const char* uuid : {"LEFT", "RIGHT"}) {
        displays.push_back(makeDictionary({{makeString("Display Identifier"), makeString(uuid)},
                                           {makeString("Current Space"), space(number)},
                                           {makeString("Spaces"), makeArray({space(1), space(2)})}}));
    }
    windowServer().managedDisplaySpaces = makeArray(std::move(displays));
    windowServer().activeSpace = number;
    workspace().spaceChanged();
}

void MacDesktop::launch(std::int32_t pid, const std::string& name) {
    const Id application = accessibility().application(pid);
    accessibility().set(application, "AXRole", makeString("AXApplication"));
    windowsChanged(pid);
    workspace().launch({.pid = pid, .bundleIdentifier = "app.example." + name, .name = name});
}

Id MacDesktop::open(std::int32_t pid, const std::string& title, CGPoint at) {
    auto& world = accessibility();
    const Id window = world.makeElement(pid);
    world.set(window, "AXRole", makeString("AXWindow"));
    world.set(window, "AXSubrole", makeString("AXStandardWindow"));
    world.set(window, "AXTitle", makeString(title));
    world.set(window, "AXMinimized", makeNumber(false));
    world.set(window, "AXFullScreen", makeNumber(false));
    world.set(window, "AXPosition", makeValue(at));
    world.set(window, "AXSize", makeValue(CGSize{600, 400}));
    world.state(window).windowNumber = ++lastNumber_;
    windowServer().windows.push_back({.number = lastNumber_, .pid = pid, .bounds = {at, {600, 400}}});
    windowServer().spacesOfWindow[lastNumber_] = {space_};
    windows_[pid].push_back(window);
    windowsChanged(pid);
    world.set(world.application(pid), "AXFocusedWindow", window);
    world.post(window, "AXWindowCreated");
    return window;
}

void MacDesktop::close(const Id& window) {
    const std::int32_t pid = payloadOf<ElementIdentity>(window)->pid;
    const auto number = accessibility().state(window).windowNumber;
    std::erase_if(windowServer().windows, [&](const auto& listed) { return listed.number == number; });
    std::erase(windows_[pid], window);
    windowsChanged(pid);
    accessibility().destroy(window);
    accessibility().post(window, "AXUIElementDestroyed");
}

void MacDesktop::rename(const Id& window, const std::string& title) {
    accessibility().set(window, "AXTitle", makeString(title));
    accessibility().post(window, "AXTitleChanged");
}

void MacDesktop::focus(const Id& window) {
    tellFocus(window);
    workspace().activate(payloadOf<ElementIdentity>(window)->pid);
}

void MacDesktop::showInMenuBar(std::int32_t pid, const std::string& attribute, const std::vector<double>& lefts,
                               double width) {
    constexpr std::int32_t kStatusLevel = 25;
    auto& world = accessibility();
    Elements elements;
    for (const double left : lefts) {
        const Id element = world.makeElement(pid);
        world.set(element, "AXPosition", makeValue(CGPoint{left, 0}));
        world.set(element, "AXSize", makeValue(CGSize{width, kMenuBar}));
        elements.push_back(element);
        if (attribute != "AXExtrasMenuBar") continue;
        windowServer().windows.push_back(
            {.number = ++lastNumber_, .layer = kStatusLevel, .pid = pid, .bounds = {{left, 0}, {width, kMenuBar}}});
    }
    const Id bar = world.makeElement(pid);
    world.set(bar, "AXChildren", makeArray(std::move(elements)));
    world.set(world.application(pid), attribute, bar);
}

Id MacDesktop::windowOf(const ElementIdentity& element) {
    for (const Id& window : windows_[element.pid])
        if (*payloadOf<ElementIdentity>(window) == element) return window;
    return {};
}

void MacDesktop::tellFocus(const Id& window) {
    if (!window) return;
    auto& world = accessibility();
    world.set(world.application(payloadOf<ElementIdentity>(window)->pid), "AXFocusedWindow", window);
    world.post(window, "AXFocusedWindowChanged");
}

void MacDesktop::windowsChanged(std::int32_t pid) {
    accessibility().set(accessibility().application(pid), "AXWindows", makeArray(windows_[pid]));
}

std::vector<NSPanel> MacDesktop::bars() {
    std::vector<NSPanel> found;
    std::vector<RawObject> panels;  // first: asking them adds to the calls
    for (const Call& call : runtime().calls())
        if (call.className == "MorvelPanel" && call.selector == "setLevel:" && !call.receiver->isDead)
            panels.push_back(call.receiver);
    for (const RawObject raw : panels) {
        const NSPanel panel{Id(raw)};
        if (panel.isVisible()) found.push_back(panel);
    }
    std::ranges::sort(found, {}, [](const NSPanel& bar) { return bar.frame().origin.x; });
    return found;
}

std::vector<std::string> MacDesktop::buttonsIn(const NSView& view) {
    const objc::AutoreleasePool pool;
    display(view);
    std::vector<std::string> labels;
    for (const NSView& button : buttonsBelow(view)) labels.push_back(textProperty(button, "accessibilityLabel"));
    return labels;
}

NSView MacDesktop::button(const NSView& content, const std::string& label) {
    const objc::AutoreleasePool pool;
    display(content);
    for (const NSView& button : buttonsBelow(content))
        if (textProperty(button, "accessibilityLabel") == label) return button;
    ADD_FAILURE() << "no button " << label;
    return {};
}

CGPoint MacDesktop::middleOfButton(const NSView& content, const std::string& label) {
    const objc::AutoreleasePool pool;
    const NSView found = button(content, label);
    return found ? middleOf(found) : CGPoint{-1, -1};
}

void MacDesktop::clickButton(const NSView& content, const std::string& label) {
    click(content, middleOfButton(content, label));
}

void MacDesktop::rightClickButton(const NSView& content, const std::string& label) {
    sendMouse(content, "rightMouseDown:", mouseEvent(NSEventTypeRightMouseDown, middleOfButton(content, label)));
}

void MacDesktop::pullButton(const NSView& content, const std::string& label) {
    CGPoint at = middleOfButton(content, label);
    sendMouse(content, "mouseDown:", mouseEvent(NSEventTypeLeftMouseDown, at));
    at.x += 6;
    sendMouse(content, "mouseDragged:", mouseEvent(NSEventTypeLeftMouseDragged, at));
}

}  // namespace morvel::mac::checked
