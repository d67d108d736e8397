// The class MorvelDragSource, and what a drag carries.
#include "Platform/Mac/UI/DragSource.h"

#include <memory>
#include <utility>

#include "Platform/Mac/apple/AppKit/NSDragging.h"
#include "Platform/Mac/apple/AppKit/Selectors.h"
#include "Platform/Mac/objc/Associated.h"
#include "Platform/Mac/objc/Subclass.h"

namespace morvel::mac {

namespace {

static constexpr objc::AssociationKey kSourceKey;

struct DragSource {
    static constexpr const char* kClassName = "MorvelDragSource";
    std::function<void(ui::DragOperation)> ended;  // empty once it was called

    /// What is dragged is never copied. The items name windows and pins under types that mean something to this program
    /// alone, so no other one takes a drop, and the picture slides back.
    NSUInteger operationMask(NSDraggingSession, NSInteger) { return NSDragOperationMove; }

    void sessionEnded(NSDraggingSession, CGPoint, NSUInteger operation) {
        const auto call = std::exchange(ended, {});
        if (!call) return;
        if (operation & NSDragOperationMove) return call(ui::DragOperation::Move);
        call(operation & NSDragOperationCopy ? ui::DragOperation::Copy : ui::DragOperation::None);
    }

    static NSObject make(std::function<void(ui::DragOperation)> ended) {
        using Class = objc::Subclass<DragSource>;
        [[maybe_unused]] static const objc::RawClass registered =
            Class("NSObject")
                .adopts("NSDraggingSource")
                .overrides<&DragSource::operationMask>(selectors::sourceOperationMask)
                .overrides<&DragSource::sessionEnded>(selectors::draggingSessionEnded)
                .registered();
        auto source = std::make_unique<DragSource>();
        source->ended = std::move(ended);
        return Class::create<NSObject>(std::move(source), selectors::init);
    }
};

/// AppKit raises an exception for events of other kinds, and ends every drag with the release of the left button.
bool canStartDrag(const NSEvent& event) {
    const NSUInteger type = event.type();
    return type == NSEventTypeLeftMouseDown || type == NSEventTypeLeftMouseDragged;
}

/// What the view shows now; transparent where it cannot be drawn.
NSImage pictureOf(const NSView& view) {
    const CGRect bounds = view.bounds();
    const NSImage picture = NSImage::empty(bounds.size);
    if (const NSBitmapImageRep pixels = view.bitmapForCachingDisplay(bounds)) {
        view.cacheDisplay(bounds, pixels);
        picture.addRepresentation(pixels);
    }
    return picture;
}

/// Empty when the text or the type cannot be put on a pasteboard.
NSPasteboardItem contentsOf(const ui::DragItem& item) {
    const NSString text = NSString::from(item.text);
    const NSString type = NSString::from(item.type);
    const auto contents = create<NSPasteboardItem>();
    return text && type && contents.setString(text, type) ? contents : NSPasteboardItem();
}

}  // namespace

bool startDrag(const NSView& view, const ui::DragItem& item, const NSEvent& event,
               std::function<void(ui::DragOperation)> ended) {
    if (!view.window() || !canStartDrag(event)) return false;
    const NSPasteboardItem contents = contentsOf(item);
    if (!contents) return false;
    const NSDraggingItem dragged = NSDraggingItem::make(contents);
    dragged.setDraggingFrame(view.bounds(), pictureOf(view));
    const NSObject source = DragSource::make(std::move(ended));
    const NSDraggingSession session =
        beginDraggingSession(view, NSArray::from<NSDraggingItem>({dragged}), event, source);
    objc::setAssociated(session, kSourceKey, source);  // nobody promises that the session keeps its source
    return static_cast<bool>(session);
}

}  // namespace morvel::mac
