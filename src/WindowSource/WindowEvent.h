// The changes that can happen to the tracked windows.
#pragma once

#include <optional>
#include <string>
#include <variant>

#include "WindowSource/WindowSnapshot.h"

namespace morvel::event {

/// A window was registered, or registered again.
struct Added {
    WindowSnapshot snapshot;
};
struct Removed {
    WindowID id;
};
struct TitleChanged {
    WindowID id;
    std::string title;
};
struct FrameChanged {
    WindowID id;
    Rect<AXSpace> frame;
};
struct FullscreenChanged {
    WindowID id;
    bool isFullscreen;
};
/// Nothing: none of our windows has the focus.
struct Focused {
    std::optional<WindowID> id;
};
struct AppTerminated {
    ProcessID pid;
};
/// A running regular application has no trackable window.
struct AppBecameWindowless {
    ProcessID pid;
    std::optional<std::string> bundleID;
    std::string appName;
};
/// The last window of an application closed, and the application goes on.
struct AppLostLastWindow {
    WindowID removedID;
    ProcessID pid;
    std::optional<std::string> bundleID;
    std::string appName;
};
struct AppGotFirstWindow {
    ProcessID pid;
};

}  // namespace morvel::event

namespace morvel {

using WindowEvent = std::variant<event::Added, event::Removed, event::TitleChanged, event::FrameChanged,
                                 event::FullscreenChanged, event::Focused, event::AppTerminated,
                                 event::AppBecameWindowless, event::AppLostLastWindow, event::AppGotFirstWindow>;

}  // namespace morvel
