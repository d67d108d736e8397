// Pasteboards, registrations, sessions, and the messages of a drag in AppKit's order.
#include "Drags.h"

#include <algorithm>

#include "Platform/Mac/apple/AppKit/NSEvent.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Platform/Mac/objc/Subclass.h"
#include "Properties.h"

namespace morvel::mac::checked {

namespace {

using namespace objc::literals;
using Texts = std::vector<std::string>;

/// What a destination is told a drag by. Its class is of the system's own, so it is made here.
struct FakeDraggingInfo {
    static constexpr const char* kClassName = "CheckedDraggingInfo";
    CGPoint location;
    NSPasteboard pasteboard;

    CGPoint draggingLocation() { return location; }
    NSPasteboard draggingPasteboard() { return pasteboard; }

    static Id make(const Id& pasteboard) {
        using Class = objc::Subclass<FakeDraggingInfo>;
        static const objc::RawClass registered =
            Class("NSObject")
                .adopts("NSDraggingInfo")
                .overrides<&FakeDraggingInfo::draggingLocation>("draggingLocation"_sel)
                .overrides<&FakeDraggingInfo::draggingPasteboard>("draggingPasteboard"_sel)
                .registered();
        (void)registered;
        auto info = std::make_unique<FakeDraggingInfo>();
        info->pasteboard = NSPasteboard(pasteboard);
        return Class::create<NSObject>(std::move(info), "init"_sel);
    }
};

void reportBad(const std::string& what) {
    runtime().faults().add(FaultKind::BadCall, what);
}

RawObject under(RawObject pasteboard, const std::string& type) {
    const auto* const contents = payloadOf<PasteboardContents>(pasteboard);
    if (!contents) return nullptr;
    const auto found = std::ranges::find(contents->objects, type, &std::pair<std::string, Id>::first);
    return found == contents->objects.end() ? nullptr : found->second.raw();
}

/// The URLs that a reading of NSURLs with these options finds.
Elements readableURLs(const Invocation& i) {
    const auto* const classes = payloadOf<Elements>(i.object(0));
    const bool wantsURLs = classes && std::ranges::any_of(*classes, [](const Id& wanted) {
                               return isClassObject(wanted.raw()) && classOf(wanted.raw())->name == "NSURL";
                           });
    const auto* const contents = payloadOf<PasteboardContents>(i.receiver());
    if (!wantsURLs || !contents) return {};
    const auto only = NSDictionary(Id(i.object(1))).at<NSNumber>(textOf(NSPasteboardURLReadingFileURLsOnlyKey));
    Elements found = contents->urls;
    if (only && only.boolValue()) std::erase_if(found, [](const Id& url) { return !NSURL(url).isFileURL(); });
    return found;
}

Texts registeredTypes(RawObject view) {
    Texts types;
    const auto* const held = payloadOf<Elements>(property<RawObject>(view, "registeredDraggedTypes"));
    for (const Id& type : held ? *held : Elements()) types.push_back(textOf(type.raw()));
    return types;
}

void installPasteboards(Runtime& runtime) {
    runtime.implement("NSPasteboard", "types", [](Invocation& i) {
        Elements types;
        if (const auto* const contents = payloadOf<PasteboardContents>(i.receiver())) {
            for (const auto& [type, object] : contents->objects) types.push_back(makeString(type));
        }
        i.answerObject(makeArray(std::move(types)));
    });
    runtime.implement("NSPasteboard", "stringForType:", [](Invocation& i) {
        const RawObject held = under(i.receiver(), textOf(i.object(0)));
        i.answerObject(Id(payloadOf<std::string>(held) ? held : nullptr));
    });
    runtime.implement("NSPasteboard", "propertyListForType:", [](Invocation& i) {
        i.answerObject(Id(under(i.receiver(), textOf(i.object(0)))));
    });
    runtime.implement("NSPasteboard", "canReadObjectForClasses:options:", [](Invocation& i) {
        i.answer<bool>(!readableURLs(i).empty());
    });
    runtime.implement("NSPasteboard", "readObjectsForClasses:options:", [](Invocation& i) {
        i.answerObject(makeArray(readableURLs(i)));
    });
    runtime.implement("NSPasteboardItem", "setString:forType:", [](Invocation& i) {
        if (!i.object(0) || !i.object(1)) return reportBad("a pasteboard item is given nil");
        const std::string type = textOf(i.object(1));
        if (type.find(' ') != std::string::npos) return;  // no name of a type: refused
        PasteboardContents contents;
        contents.objects.emplace_back(type, Id(i.object(0)));
        setPayload(i.receiver(), std::move(contents));
        i.answer<bool>(true);
    });
}

void installRegistrations(Runtime& runtime) {
    runtime.implement("NSView", "registerForDraggedTypes:", [](Invocation& i) {
        Elements all;
        if (const auto* const held = payloadOf<Elements>(property<RawObject>(i.receiver(), "registeredDraggedTypes")))
            all = *held;
        for (const Id& type : *payloadOf<Elements>(i.object(0))) all.push_back(type);
        setProperty(i.receiver(), "registeredDraggedTypes", makeArray(std::move(all)).raw());
    });
    runtime.implement("NSView", "unregisterDraggedTypes",
                      [](Invocation& i) { setProperty(i.receiver(), "registeredDraggedTypes", RawObject()); });
    runtime.implement("NSImageView", "initWithFrame:", [](Invocation& i) {
        // Image views take pictures and their files by themselves, whether they may be edited or not.
        setProperty(i.receiver(), "frame", i.argument<CGRect>(0));
        setProperty(i.receiver(), "registeredDraggedTypes",
                    makeArray({makeString("public.file-url"), makeString("public.tiff")}).raw());
        i.answer<RawObject>(i.receiver());
    });
}

OwnDrag& current() {
    const Id holder = runtime().shared("NSObject", "NSDraggingSession current");
    if (!payloadOf<OwnDrag>(holder.raw())) setPayload(holder.raw(), OwnDrag());
    return *payloadOf<OwnDrag>(holder.raw());
}

void beginSession(Invocation& i) {
    const auto type = property<std::uint64_t>(i.object(1), "type");
    const bool isMouse = type == NSEventTypeLeftMouseDown || type == NSEventTypeLeftMouseDragged;
    if (!property<RawObject>(i.receiver(), "window")) return reportBad("a drag starts in a view that is in no window");
    if (!isMouse) return reportBad("a drag starts with an event that is no press or drag of the left button");
    if (current().session) return reportBad("a drag starts while another is under way");
    const Elements items = *payloadOf<Elements>(i.object(0));
    for (const Id& item : items) {
        if (property<CGRect>(item.raw(), "draggingFrame").size == CGSize{}) reportBad("an item has no dragging frame");
        if (!payloadOf<PasteboardContents>(property<RawObject>(item.raw(), "pasteboardWriter")))
            reportBad("an item has nothing for the pasteboard");
    }
    if (items.empty() || !i.object(2)) reportBad("a drag starts without items or source");
    current() = {runtime().make("NSDraggingSession", 0), i.object(2), items};
    i.answerObject(current().session);
}

void installSessions(Runtime& runtime) {
    runtime.implement("NSDraggingItem", "setDraggingFrame:contents:", [](Invocation& i) {
        setProperty(i.receiver(), "draggingFrame", i.argument<CGRect>(0));
        setProperty(i.receiver(), "contents", i.object(1));
    });
    runtime.implement("NSView", "bitmapImageRepForCachingDisplayInRect:", [](Invocation& i) {
        const auto part = i.argument<CGRect>(0);
        if (part.size.width <= 0 || part.size.height <= 0) return;
        i.answerObject(
            Id(objc::kAdopt, checked::runtime().allocate(checked::runtime().classNamed("NSBitmapImageRep"))));
    });
    runtime.implement("NSView", "cacheDisplayInRect:toBitmapImageRep:", [](Invocation& i) {
        setProperty(i.object(1), "shownAlpha", property<double>(i.receiver(), "alphaValue"));
    });
    runtime.implement("NSImage", "addRepresentation:", [](Invocation& i) {
        setProperty(i.receiver(), "representation", i.object(0));
    });
    runtime.implement("NSView", "beginDraggingSessionWithItems:event:source:", beginSession);
}

bool isVisibleAt(const NSView& view, CGPoint inWindow) {
    const CGPoint point = view.convertPointFrom(inWindow, NSView());
    const CGSize size = view.bounds().size;
    const bool isInside = point.x >= 0 && point.x < size.width && point.y >= 0 && point.y < size.height;
    return isInside && !property<bool>(view.raw(), "hidden");
}

/// A view that is no destination does not hide the one it lies on.
NSView destinationAt(const NSView& view, CGPoint inWindow, const Texts& types) {
    if (!isVisibleAt(view, inWindow)) return {};
    const auto children = view.subviews().elements<NSView>();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        if (const NSView found = destinationAt(*child, inWindow, types)) return found;
    }
    const Texts registered = registeredTypes(view.raw());
    const bool wantsIt =
        std::ranges::any_of(types, [&](const std::string& type) { return std::ranges::count(registered, type) > 0; });
    return wantsIt ? view : NSView();
}

void tell(const NSView& view, const char* selector, const Id& info) {
    objc::sendRaw<void, Id>(view.raw(), objc::sel_registerName(selector), info);
}

}  // namespace

void installDrags(Runtime& runtime) {
    installPasteboards(runtime);
    installRegistrations(runtime);
    installSessions(runtime);
}

Id makePasteboard(PasteboardContents contents) {
    return runtime().make("NSPasteboard", std::move(contents));
}

Id makeFiles(const std::vector<std::string>& paths) {
    PasteboardContents files;
    Elements names;
    for (const std::string& path : paths) {
        files.urls.push_back(NSURL::file(path));
        names.push_back(makeString(path));
    }
    files.objects.emplace_back("public.file-url", NSURL(files.urls.at(0)).absoluteString());
    files.objects.emplace_back("NSFilenamesPboardType", makeArray(std::move(names)));
    return makePasteboard(std::move(files));
}

DragOver::DragOver(const Id& pasteboard) : pasteboard_(pasteboard), info_(FakeDraggingInfo::make(pasteboard)) {}

std::uint64_t DragOver::ask(const char* selector) {
    return over_ ? objc::sendRaw<std::uint64_t, Id>(over_.raw(), objc::sel_registerName(selector), info_) : 0;
}

void DragOver::goTo(const NSView& view) {
    if (over_) tell(over_, "draggingExited:", info_);
    over_ = view;
    if (over_ && std::ranges::count(visited_, over_) == 0) visited_.push_back(over_);
    operation_ = ask("draggingEntered:");
}

std::uint64_t DragOver::moveTo(const NSView& contentView, CGPoint location) {
    const objc::AutoreleasePool pool;
    objc::Subclass<FakeDraggingInfo>::of(info_)->location = location;
    Texts types;
    for (const NSString& type : NSPasteboard(pasteboard_).types().elements<NSString>()) types.push_back(type.text());
    const NSView view = destinationAt(contentView, location, types);
    if (view == over_) {
        operation_ = ask("draggingUpdated:");
    } else {
        goTo(view);
    }
    return operation_;
}

void DragOver::leave() {
    const objc::AutoreleasePool pool;
    goTo({});
}

void DragOver::tellEnd(const NSView& except) {
    for (const NSView& view : std::exchange(visited_, {})) {
        if (!(view == except)) tell(view, "draggingEnded:", info_);
    }
}

bool DragOver::drop() {
    const objc::AutoreleasePool pool;
    if (!over_ || operation_ == 0) {
        end();
        return false;
    }
    const NSView target = std::exchange(over_, {});
    const auto agrees = [&](const char* selector) {
        return objc::Native<bool>::fromNative(
            objc::sendRaw<bool, Id>(target.raw(), objc::sel_registerName(selector), info_));
    };
    const bool isTaken = agrees("prepareForDragOperation:") && agrees("performDragOperation:");
    if (isTaken) tell(target, "concludeDragOperation:", info_);
    tellEnd(target);
    return isTaken;
}

void DragOver::end() {
    const objc::AutoreleasePool pool;
    if (over_) goTo({});
    tellEnd({});
}

const OwnDrag* ownDrag() {
    return current().session ? &current() : nullptr;
}

Id pasteboardOfOwnDrag() {
    const RawObject item = current().items.at(0).raw();
    return makePasteboard(*payloadOf<PasteboardContents>(property<RawObject>(item, "pasteboardWriter")));
}

std::uint64_t operationsOfOwnDrag(std::int64_t context) {
    const objc::AutoreleasePool pool;
    return objc::sendRaw<std::uint64_t, Id, std::int64_t>(
        current().source, objc::sel_registerName("draggingSession:sourceOperationMaskForDraggingContext:"),
        current().session, context);
}

void endOwnDrag(std::uint64_t operation) {
    const objc::AutoreleasePool pool;
    const OwnDrag drag = std::exchange(current(), {});
    objc::sendRaw<void, Id, CGPoint, std::uint64_t>(drag.source,
                                                    objc::sel_registerName("draggingSession:endedAtPoint:operation:"),
                                                    drag.session, CGPoint{}, operation);
}

}  // namespace morvel::mac::checked
