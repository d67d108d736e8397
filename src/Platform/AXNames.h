// The accessibility interface's own names of attributes, actions, notifications, roles and subroles.
// Source: the accessibility constants of Apple's ApplicationServices. Every host speaks them.
#pragma once

#include <string_view>

namespace morvel::ax {

// Attributes of applications.
inline constexpr std::string_view kWindows = "AXWindows";
inline constexpr std::string_view kFocusedWindow = "AXFocusedWindow";
inline constexpr std::string_view kMenuBar = "AXMenuBar";
inline constexpr std::string_view kExtrasMenuBar = "AXExtrasMenuBar";

// Attributes of windows.
inline constexpr std::string_view kRole = "AXRole";
inline constexpr std::string_view kSubrole = "AXSubrole";
inline constexpr std::string_view kTitle = "AXTitle";
inline constexpr std::string_view kPosition = "AXPosition";
inline constexpr std::string_view kSize = "AXSize";
inline constexpr std::string_view kMinimized = "AXMinimized";
inline constexpr std::string_view kFullScreen = "AXFullScreen";
inline constexpr std::string_view kMain = "AXMain";
inline constexpr std::string_view kFocused = "AXFocused";
inline constexpr std::string_view kCloseButton = "AXCloseButton";

// Attributes of menu bars, menus and their items.
inline constexpr std::string_view kChildren = "AXChildren";
inline constexpr std::string_view kMenuItemCmdChar = "AXMenuItemCmdChar";
inline constexpr std::string_view kMenuItemCmdModifiers = "AXMenuItemCmdModifiers";

// Actions.
inline constexpr std::string_view kRaise = "AXRaise";
inline constexpr std::string_view kPress = "AXPress";

// Notifications.
inline constexpr std::string_view kWindowCreated = "AXWindowCreated";
inline constexpr std::string_view kUIElementDestroyed = "AXUIElementDestroyed";
inline constexpr std::string_view kTitleChanged = "AXTitleChanged";
inline constexpr std::string_view kWindowMoved = "AXWindowMoved";
inline constexpr std::string_view kWindowResized = "AXWindowResized";
inline constexpr std::string_view kFocusedWindowChanged = "AXFocusedWindowChanged";
inline constexpr std::string_view kMainWindowChanged = "AXMainWindowChanged";
inline constexpr std::string_view kApplicationActivated = "AXApplicationActivated";

// Roles and subroles.
inline constexpr std::string_view kWindowRole = "AXWindow";
inline constexpr std::string_view kButtonRole = "AXButton";
inline constexpr std::string_view kApplicationRole = "AXApplication";
inline constexpr std::string_view kStandardWindowSubrole = "AXStandardWindow";
inline constexpr std::string_view kDialogSubrole = "AXDialog";
inline constexpr std::string_view kFloatingWindowSubrole = "AXFloatingWindow";
inline constexpr std::string_view kSheetSubrole = "AXSheet";
inline constexpr std::string_view kUnknownSubrole = "AXUnknown";

}  // namespace morvel::ax
