// Messages as the host writes them, compiled for Apple's processors by check_send.py to see what becomes of them.
#include "Platform/Mac/apple/AppKit/NSView.h"

namespace morvel::mac {

void probeArgument(const NSView& view, CGRect frame) {
    view.setFrame(frame);
}
CGRect probeStruct(const NSView& view) {
    return view.frame();
}
void probeObject(const NSView& view, const NSView& child) {
    view.addSubview(child);
}

}  // namespace morvel::mac
