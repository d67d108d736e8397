// The fixtures of tests of the AppKit toolkit, and views that note what they are told.
#pragma once

#include "Events.h"
#include "Platform/Mac/System/MacMainLoop.h"
#include "Platform/Mac/UI/MacToolkit.h"
#include "Platform/Mac/UI/ViewTree.h"
#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Mac/apple/AppKit/NSWindow.h"
#include "RuntimeTest.h"
#include "UI/Panel.h"

namespace morvel::mac::checked {

class ToolkitFixture : public RuntimeTest {
protected:
    static NSView native(const ui::View& view) { return ViewTree::nativeOf(view); }
    static NSWindow windowOf(const ui::View& view) { return NSWindow(native(view).window()); }

    MacMainLoop loop;
    std::unique_ptr<MacToolkit> owned = std::make_unique<MacToolkit>(loop);
    MacToolkit& toolkit = *owned;
};

inline std::string textOf(const Point<ViewSpace>& at) {
    return std::to_string(int(at.x)) + "," + std::to_string(int(at.y));
}

/// A button that notes what it is told, and may leave its parent when pressed.
struct Button : ui::View {
    explicit Button(Texts& shared, std::string itsName) : notes(shared), name(std::move(itsName)) {}
    bool acceptsMouse() const override { return true; }
    bool tracksHover() const override { return true; }
    ui::AccessibilityRole accessibilityRole() const override { return ui::AccessibilityRole::Button; }
    bool accessibilityPress() override {
        note("pressed");
        if (leavesWhenPressed) removeFromParent();
        return true;
    }
    void mouseDown(const ui::MouseEvent& event) override {
        note("down " + textOf(event.location));
        if (leavesWhenPressed) removeFromParent();
    }
    void mouseDragged(const ui::MouseEvent& event) override { note("dragged " + textOf(event.location)); }
    void mouseUp(const ui::MouseEvent& event) override { note("up " + textOf(event.location)); }
    void rightMouseDown(const ui::MouseEvent& event) override {
        note("right " + textOf(event.location));
        if (onRightClick) onRightClick(event);
    }
    void mouseEntered(const ui::MouseEvent& event) override { note("entered " + textOf(event.location)); }
    void mouseExited() override { note("exited"); }
    void note(const std::string& what) { notes.push_back(name + " " + what); }

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

/// A bar's panel with a row for two buttons.
class BarFixture : public ToolkitFixture {
protected:
    /// With these buttons.
    void show(std::initializer_list<Button*> buttons) {
        for (Button* button : buttons) row.addSubview(*button);
        panel.orderFront();
        display(native(row));
    }
    Texts told() { return std::exchange(notes, {}); }

    Row row;
    ui::Panel panel{toolkit, {.frame = {0, 0, 400, 32}}, row};
    Texts notes;
    Button first{notes, "first"};
    Button second{notes, "second"};
};

}  // namespace morvel::mac::checked
