// The fixture of the AppKit toolkit's tests: a panel with a row of buttons that note what they are told.
#pragma once

#include "Appearance.h"
#include "Events.h"
#include "Platform/Mac/UI/MacToolkit.h"
#include "Platform/Mac/UI/ViewTree.h"
#include "Platform/Mac/apple/AppKit/NSWindow.h"
#include "Properties.h"
#include "RuntimeTest.h"
#include "UI/Panel.h"

namespace morvel::mac::checked {

using Texts = std::vector<std::string>;

/// Posts go to the fake dispatch queue in the real loop; here they wait until the test runs them.
class PostedWork : public MainLoop {
public:
    Instant now() const override { return {}; }
    void post(std::function<void()> work) override { work_.push_back(std::move(work)); }
    Timer after(Duration, std::function<void()>) override { return {}; }
    Timer every(Duration, Duration, std::function<void()>) override { return {}; }
    void run() {
        for (const auto& work : std::exchange(work_, {})) work();
    }

private:
    std::vector<std::function<void()>> work_;
};

/// A button that notes what it is told, and may leave its parent when pressed.
struct Button : ui::View {
    explicit Button(Texts& shared, std::string itsName) : notes(shared), name(std::move(itsName)) {}
    bool acceptsMouse() const override { return true; }
    bool tracksHover() const override { return true; }
    ui::AccessibilityRole accessibilityRole() const override { return ui::AccessibilityRole::Button; }
    bool accessibilityPress() override {
        notes.push_back(name + " pressed");
        if (leavesWhenPressed) removeFromParent();
        return true;
    }
    void mouseDown(const ui::MouseEvent& event) override {
        note("down", event);
        if (leavesWhenPressed) removeFromParent();
    }
    void mouseDragged(const ui::MouseEvent& event) override { note("dragged", event); }
    void mouseUp(const ui::MouseEvent& event) override { note("up", event); }
    void rightMouseDown(const ui::MouseEvent& event) override {
        note("right", event);
        if (onRightClick) onRightClick(event);
    }
    void mouseEntered(const ui::MouseEvent& event) override { note("entered", event); }
    void mouseExited() override { notes.push_back(name + " exited"); }
    void note(const std::string& what, const ui::MouseEvent& event) {
        notes.push_back(name + " " + what + " " + std::to_string(int(event.location.x)) + "," +
                        std::to_string(int(event.location.y)));
    }

    Texts& notes;
    std::string name;
    bool leavesWhenPressed = false;
    std::function<void(const ui::MouseEvent&)> onRightClick;
};

/// A root that stacks its subviews from the left, 100 points wide each.
struct Row : ui::View {
    int layouts = 0;

protected:
    void layout() override {
        ++layouts;
        double x = 0;
        for (ui::View* view : subviews()) {
            view->setFrame({x, 4, 90, 24});
            x += 100;
        }
    }
};

class Toolkit : public RuntimeTest {
protected:
    static NSView native(const ui::View& view) { return ViewTree::nativeOf(view); }
    static std::vector<NSView> nativeChildren(const ui::View& view) {
        return native(view).subviews().elements<NSView>();
    }
    static std::string background(const ui::View& view) {
        return describe(property<CGColorRef>(native(view).layer().raw(), "backgroundColor"));
    }
    NSPanel panelWindow() const { return NSPanel(native(row).window()); }
    void show() {
        panel.orderFront();
        display(native(row));
    }

    PostedWork loop;
    MacToolkit toolkit{loop};
    Row row;
    ui::Panel panel{toolkit, {.frame = {0, 0, 400, 32}}, row};
    Texts notes;
    Button first{notes, "first"};
    Button second{notes, "second"};
};

}  // namespace morvel::mac::checked
