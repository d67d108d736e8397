// Frames that windows reach after a while: what is set through an animator goes on until another one takes over, also
// over frames that are set on the window itself meanwhile.
#pragma once

#include "Platform/Mac/apple/AppKit/NSWindow.h"
#include "Runtime.h"

namespace morvel::mac::checked {

/// For the windows' fake: a frame was set on this object, which is passed on where it is an animator.
bool passToAnimatedWindow(RawObject animator, CGRect frame);

bool isSliding(const NSWindow& window);
/// Where the window is, or will be when its slide has ended.
CGRect slideTarget(const NSWindow& window);
/// Of its last slide, in seconds.
double slideDuration(const NSWindow& window);
void finishSlide(const NSWindow& window);

}  // namespace morvel::mac::checked
