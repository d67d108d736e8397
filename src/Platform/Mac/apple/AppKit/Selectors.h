// The names of the system's messages that our classes answer, and of the initialisers that make their instances. The
// rest of the host names messages by these constants and by the wrappers' members, never as text.
#pragma once

#include "Platform/Mac/objc/Selector.h"

namespace morvel::mac::selectors {

using namespace objc::literals;

inline constexpr auto init = "init"_sel;
inline constexpr auto initWithFrame = "initWithFrame:"_sel;
inline constexpr auto initWithContentRect = "initWithContentRect:styleMask:backing:defer:"_sel;

// The application's delegate.
inline constexpr auto applicationDidFinishLaunching = "applicationDidFinishLaunching:"_sel;
inline constexpr auto applicationWillTerminate = "applicationWillTerminate:"_sel;
inline constexpr auto applicationShouldHandleReopen = "applicationShouldHandleReopen:hasVisibleWindows:"_sel;

// Windows.
inline constexpr auto canBecomeKeyWindow = "canBecomeKeyWindow"_sel;
inline constexpr auto canBecomeMainWindow = "canBecomeMainWindow"_sel;
inline constexpr auto performKeyEquivalent = "performKeyEquivalent:"_sel;
inline constexpr auto performClose = "performClose:"_sel;
inline constexpr auto performMiniaturize = "performMiniaturize:"_sel;

// What a field does with the text that is selected in it.
inline constexpr auto cut = "cut:"_sel;
inline constexpr auto copy = "copy:"_sel;
inline constexpr auto paste = "paste:"_sel;
inline constexpr auto selectAll = "selectAll:"_sel;

// Views.
inline constexpr auto acceptsFirstMouse = "acceptsFirstMouse:"_sel;
inline constexpr auto isFlipped = "isFlipped"_sel;
inline constexpr auto hitTest = "hitTest:"_sel;
inline constexpr auto updateTrackingAreas = "updateTrackingAreas"_sel;
inline constexpr auto viewDidChangeEffectiveAppearance = "viewDidChangeEffectiveAppearance"_sel;
inline constexpr auto mouseDown = "mouseDown:"_sel;
inline constexpr auto mouseDragged = "mouseDragged:"_sel;
inline constexpr auto mouseUp = "mouseUp:"_sel;
inline constexpr auto mouseEntered = "mouseEntered:"_sel;
inline constexpr auto mouseExited = "mouseExited:"_sel;
inline constexpr auto mouseMoved = "mouseMoved:"_sel;
inline constexpr auto rightMouseDown = "rightMouseDown:"_sel;
inline constexpr auto otherMouseDown = "otherMouseDown:"_sel;
inline constexpr auto otherMouseDragged = "otherMouseDragged:"_sel;
inline constexpr auto otherMouseUp = "otherMouseUp:"_sel;
inline constexpr auto scrollWheel = "scrollWheel:"_sel;
inline constexpr auto layout = "layout"_sel;
inline constexpr auto accessibilityPerformPress = "accessibilityPerformPress"_sel;

// Drags over a view.
inline constexpr auto draggingEntered = "draggingEntered:"_sel;
inline constexpr auto draggingUpdated = "draggingUpdated:"_sel;
inline constexpr auto draggingExited = "draggingExited:"_sel;
inline constexpr auto draggingEnded = "draggingEnded:"_sel;
inline constexpr auto prepareForDragOperation = "prepareForDragOperation:"_sel;
inline constexpr auto performDragOperation = "performDragOperation:"_sel;

// Drags of ours.
inline constexpr auto sourceOperationMask = "draggingSession:sourceOperationMaskForDraggingContext:"_sel;
inline constexpr auto draggingSessionEnded = "draggingSession:endedAtPoint:operation:"_sel;

// Text fields, and the key bindings' names for what is typed.
inline constexpr auto controlTextDidChange = "controlTextDidChange:"_sel;
inline constexpr auto controlDoCommand = "control:textView:doCommandBySelector:"_sel;
inline constexpr auto moveUp = "moveUp:"_sel;
inline constexpr auto moveDown = "moveDown:"_sel;
inline constexpr auto pageUp = "pageUp:"_sel;
inline constexpr auto pageDown = "pageDown:"_sel;
inline constexpr auto scrollPageUp = "scrollPageUp:"_sel;
inline constexpr auto scrollPageDown = "scrollPageDown:"_sel;
inline constexpr auto insertNewline = "insertNewline:"_sel;
inline constexpr auto cancelOperation = "cancelOperation:"_sel;

// Popovers.
inline constexpr auto popoverDidClose = "popoverDidClose:"_sel;

// Answers from web servers.
inline constexpr auto willPerformHTTPRedirection =
    "URLSession:task:willPerformHTTPRedirection:newRequest:completionHandler:"_sel;
inline constexpr auto didReceiveData = "URLSession:dataTask:didReceiveData:"_sel;
inline constexpr auto didCompleteWithError = "URLSession:task:didCompleteWithError:"_sel;

// Actions of our own.
inline constexpr auto menuItemChosen = "menuItemChosen:"_sel;
inline constexpr auto controlUsed = "controlUsed:"_sel;

}  // namespace morvel::mac::selectors
