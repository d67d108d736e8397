// The desktop's changes, each as the system makes it: the state first, the notice after it.
#include "MacDesktop.h"

#include <algorithm>

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

std::uint32_t numberOf(const Id& window) {
    return accessibility().windowNumber(*payloadOf<ElementIdentity>(window.raw()));
}

NSView buttonNamed(const NSView& view, const std::string& label) {
    const bool isButton = textOf(property<RawObject>(view.raw(), "accessibilityRole")) == "AXButton";
    if (isButton && textOf(property<RawObject>(view.raw(), "accessibilityLabel")) == label) return view;
    for (const NSView& child : view.subviews().elements<NSView>()) {
        if (const NSView found = buttonNamed(child, label)) return found;
    }
    return {};
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
        if (action == "AXRaise") tellFocus(element);
    };
    accessibility().written = [this](const ElementIdentity& element, const std::string& attribute) {
        if (attribute == "AXPosition") tellMoved(element);
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
    world.setPoint(window, "AXPosition", at);
    world.setSize(window, "AXSize", {600, 400});
    world.setWindowNumber(window, ++lastNumber_);
    windowServer().windows.push_back({.number = lastNumber_, .pid = pid, .bounds = {at, {600, 400}}});
    windowServer().spacesOfWindow[lastNumber_] = {space_};
    windows_[pid].push_back(window);
    windowsChanged(pid);
    world.set(world.application(pid), "AXFocusedWindow", window);
    world.post(window, "AXWindowCreated");
    return window;
}

void MacDesktop::close(const Id& window) {
    const std::int32_t pid = payloadOf<ElementIdentity>(window.raw())->pid;
    std::erase_if(windowServer().windows, [&](const auto& listed) { return listed.number == numberOf(window); });
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
    const ElementIdentity identity = *payloadOf<ElementIdentity>(window.raw());
    tellFocus(identity);
    workspace().activate(identity.pid);
}

Elements MacDesktop::showInMenuBar(std::int32_t pid, const std::string& attribute, const std::vector<double>& lefts,
                                   double width) {
    constexpr std::int32_t kStatusLevel = 25;
    auto& world = accessibility();
    Elements elements;
    for (const double left : lefts) {
        const Id element = world.makeElement(pid);
        world.setPoint(element, "AXPosition", {left, 0});
        world.setSize(element, "AXSize", {width, kMenuBar});
        elements.push_back(element);
        if (attribute != "AXExtrasMenuBar") continue;
        windowServer().windows.push_back(
            {.number = ++lastNumber_, .layer = kStatusLevel, .pid = pid, .bounds = {{left, 0}, {width, kMenuBar}}});
    }
    const Id bar = world.makeElement(pid);
    world.set(bar, "AXChildren", makeArray(elements));
    world.set(world.application(pid), attribute, bar);
    return elements;
}

void MacDesktop::tellFocus(const ElementIdentity& window) {
    for (const Id& candidate : Elements(windows_[window.pid])) {
        if (!(*payloadOf<ElementIdentity>(candidate.raw()) == window)) continue;
        accessibility().set(accessibility().application(window.pid), "AXFocusedWindow", candidate);
        accessibility().post(candidate, "AXFocusedWindowChanged");
    }
}

void MacDesktop::tellMoved(const ElementIdentity& window) {
    for (const Id& candidate : windows_[window.pid]) {
        if (!(*payloadOf<ElementIdentity>(candidate.raw()) == window)) continue;
        // Notices come with a later turn of the run loop, never inside the write.
        dispatch_async_f(&_dispatch_main_q, new Id(candidate), [](void* context) {
            const std::unique_ptr<Id> moved(static_cast<Id*>(context));
            accessibility().post(*moved, "AXWindowMoved");
        });
    }
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
    if (property<bool>(view.raw(), "hidden")) return {};
    if (textOf(property<RawObject>(view.raw(), "accessibilityRole")) == "AXButton")
        return {textOf(property<RawObject>(view.raw(), "accessibilityLabel"))};
    std::vector<std::pair<double, std::vector<std::string>>> parts;
    for (const NSView& child : view.subviews().elements<NSView>())
        parts.emplace_back(child.frame().origin.x, buttonsIn(child));
    std::ranges::stable_sort(parts, {}, &std::pair<double, std::vector<std::string>>::first);
    std::vector<std::string> labels;
    for (const auto& [x, found] : parts) labels.insert(labels.end(), found.begin(), found.end());
    return labels;
}

NSView MacDesktop::button(const NSView& content, const std::string& label) {
    return buttonNamed(content, label);
}

bool MacDesktop::clickButton(const NSView& content, const std::string& label) {
    display(content);
    const NSView button = buttonNamed(content, label);
    if (!button) return false;
    click(content, middleOf(button));
    return true;
}

std::optional<CGPoint> MacDesktop::middleOfButton(const NSView& content, const std::string& label) {
    const objc::AutoreleasePool pool;
    display(content);
    const NSView button = buttonNamed(content, label);
    return button ? std::optional(middleOf(button)) : std::nullopt;
}

bool MacDesktop::pullButton(const NSView& content, const std::string& label) {
    auto at = middleOfButton(content, label);
    if (!at) return false;
    sendMouse(content, "mouseDown:", mouseEvent(NSEventTypeLeftMouseDown, *at));
    at->x += 6;
    sendMouse(content, "mouseDragged:", mouseEvent(NSEventTypeLeftMouseDragged, *at));
    return true;
}

bool MacDesktop::rightClickButton(const NSView& content, const std::string& label) {
    display(content);
    const NSView button = buttonNamed(content, label);
    if (!button) return false;
    sendMouse(content, "rightMouseDown:", mouseEvent(NSEventTypeRightMouseDown, middleOf(button)));
    return true;
}

}  // namespace morvel::mac::checked
