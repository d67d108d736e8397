// Acting as other programs and AppKit do while something is dragged.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "Platform/Mac/apple/AppKit/NSDragging.h"
#include "SystemObjects.h"

namespace morvel::mac::checked {

/// What a program puts on a pasteboard: objects under types, and the URLs that can be read from it.
struct PasteboardContents {
    std::vector<std::pair<std::string, Id>> objects;
    Elements urls;
};
Id makePasteboard(PasteboardContents contents);
/// Files as the system's file manager drags them.
Id makeFiles(const std::vector<std::string>& paths);

/// A drag over windows of ours, routed as AppKit does: to the deepest visible view that registered for a type of it.
class DragOver {
public:
    explicit DragOver(const Id& pasteboard);

    /// To a point of the window, in its coordinates; what a drop there would do.
    std::uint64_t moveTo(const NSView& contentView, CGPoint location);
    /// Out of all windows.
    void leave();
    /// Releases the button; whether the drop was taken. The view it is dropped on is not told of the end.
    bool drop();
    /// Ends the drag elsewhere, which the views that it has been over are told.
    void end();

private:
    std::uint64_t goTo(const NSView& view);
    std::uint64_t ask(const char* selector);
    void tellEnd(const NSView& except);

    Id pasteboard_;
    Id info_;
    NSView over_;
    std::vector<NSView> visited_;
    std::uint64_t operation_ = 0;
};

/// The drag that our program has started and that is not over.
struct OwnDrag {
    Id session;
    RawObject source = nullptr;  // as AppKit has it: nobody keeps it for us
    Elements items;              // NSDraggingItems
};
/// Null when there is none.
const OwnDrag* ownDrag();
/// Of its only item.
Id pasteboardOfOwnDrag();
/// Which operations its source offers within our program or outside.
std::uint64_t operationsOfOwnDrag(std::int64_t context);
void endOwnDrag(std::uint64_t operation);

}  // namespace morvel::mac::checked
