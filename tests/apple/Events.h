// Acting as the user and AppKit do: the application's life, pointer events on views, choices from menus.
#pragma once

#include <cstdint>
#include <functional>

#include "Platform/Mac/apple/AppKit/NSMenu.h"
#include "Platform/Mac/apple/CGGeometry.h"
#include "SystemObjects.h"

namespace morvel::mac::checked {

/// Until the end of the test, -[NSApplication run] tells the delegate of the launch, runs `script`, and returns.
void whileRunning(std::function<void()> script);

/// An event at a point of its window, in the window's coordinates.
Id mouseEvent(std::uint64_t type, CGPoint location, std::int64_t clickCount = 1);

/// Sends "mouseDown:" and its kin as AppKit does: local monitors see it first, then the deepest visible view under the
/// point gets it, inside a pool, and is kept alive while it handles the event. Returns that view; empty where there is
/// none.
NSView sendMouse(const NSView& contentView, const char* selector, const Id& event);
/// The deepest visible view at a point of the window; empty outside all.
NSView viewAt(const NSView& contentView, CGPoint location);

/// Presses and releases the left button over one point; both go to the view that took the press, as AppKit has it.
void click(const NSView& contentView, CGPoint location);
/// What precedes a display: views that asked for layout are laid out, from the root down.
void display(const NSView& view);

/// A press of this event type in another program's window, as global monitors see it.
void pressElsewhere(std::uint64_t type);
std::size_t monitorCount();

/// Uses a control or chooses a menu item: while it is enabled its action goes to its target. Whether someone was told.
bool use(const Id& control);
/// The item of that title; empty when the menu has none.
NSMenuItem itemTitled(const NSMenu& menu, const std::string& title);
bool choose(const NSMenu& menu, const std::string& title);
/// Until the end of the test, each menu that pops up is handed to `user`, who may choose from it; then it closes.
void whenMenuPopsUp(std::function<void(const NSMenu&)> user);

}  // namespace morvel::mac::checked
