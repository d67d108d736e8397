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
    for (const auto& [offered, object] : held<PasteboardContents>(pasteboard).objects)
        if (offered == type) return object.raw();
    return nullptr;
}

/// The URLs that a reading of NSURLs with these options finds.
Elements readableURLs(const Invocation& i) {
    const bool wantsURLs = std::ranges::any_of(held<Elements>(i.object(0)), [](const Id& wanted) {
        return isClassObject(wanted.raw()) && classOf(wanted.raw())->name == "NSURL";
    });
    if (!wantsURLs) return {};
    const auto only = NSDictionary(Id(i.object(1))).at<NSNumber>(textOf(NSPasteboardURLReadingFileURLsOnlyKey));
    Elements found = held<PasteboardContents>(i.receiver()).urls;
    if (only && only.boolValue()) std::erase_if(found, [](const Id& url) { return !NSURL(url).isFileURL(); });
    return found;
}

void installPasteboards(Runtime& target) {
    const auto pasteboard = target.implementing("NSPasteboard");
    pasteboard("types", [](Invocation& i) {
        Elements types;
        for (const auto& offered : held<PasteboardContents>(i.receiver()).objects)
            types.push_back(makeString(offered.first));
        i.answerObject(makeArray(std::move(types)));
    });
    pasteboard("stringForType:", [](Invocation& i) {
        const RawObject offered = under(i.receiver(), textOf(i.object(0)));
        i.answerObject(Id(payloadOf<std::string>(offered) ? offered : nullptr));
    });
    pasteboard("propertyListForType:",
               [](Invocation& i) { i.answerObject(Id(under(i.receiver(), textOf(i.object(0))))); });
    pasteboard("canReadObjectForClasses:options:", [](Invocation& i) { i.answer<bool>(!readableURLs(i).empty()); });
    pasteboard("readObjectsForClasses:options:", [](Invocation& i) { i.answerObject(makeArray(readableURLs(i))); });
    const auto pasteboardItem = target.implementing("NSPasteboardItem");
    pasteboardItem("setString:forType:", [](Invocation& i) {
        if (!i.object(0) || !i.object(1)) return reportBad("a pasteboard item is given nil");
        const std::string type = textOf(i.object(1));
        if (type.find(' ') != std::string::npos) return;  // no name of a type: refused
        ensured<PasteboardContents>(i.receiver()).objects = {{type, Id(i.object(0))}};
        i.answer<bool>(true);
    });
}

void installRegistrations(Runtime& target) {
    const auto view = target.implementing("NSView");
    view("registerForDraggedTypes:", [](Invocation& i) {
        for (const Id& type : held<Elements>(i.object(0))) list(i.receiver(), "registeredDraggedTypes").push_back(type);
    });
    view("unregisterDraggedTypes",
         [](Invocation& i) { setProperty(i.receiver(), "registeredDraggedTypes", RawObject()); });
    const auto imageView = target.implementing("NSImageView");
    imageView("initWithFrame:", [](Invocation& i) {
        // Image views take pictures and their files by themselves, whether they may be edited or not.
        setProperty(i.receiver(), "frame", i.argument<CGRect>(0));
        list(i.receiver(), "registeredDraggedTypes") = {makeString("public.file-url"), makeString("public.tiff")};
        i.answer<RawObject>(i.receiver());
    });
}

OwnDrag& current() {
    return runtime().known<OwnDrag>();
}

void beginSession(Invocation& i) {
    const auto type = property<std::uint64_t>(i.object(1), "type");
    const bool isMouse = type == NSEventTypeLeftMouseDown || type == NSEventTypeLeftMouseDragged;
    if (!property<RawObject>(i.receiver(), "window")) return reportBad("a drag starts in a view that is in no window");
    if (!isMouse) return reportBad("a drag starts with an event that is no press or drag of the left button");
    if (current().session) return reportBad("a drag starts while another is under way");
    const Elements items = *payloadOf<Elements>(i.object(0));
    for (const Id& item : items) {
        if (property<CGRect>(item, "draggingFrame").size == CGSize{}) reportBad("an item has no dragging frame");
        if (!payloadOf<PasteboardContents>(property<RawObject>(item, "pasteboardWriter")))
            reportBad("an item has nothing for the pasteboard");
    }
    if (items.empty() || !i.object(2)) reportBad("a drag starts without items or source");
    current() = {runtime().make("NSDraggingSession"), i.object(2), items};
    i.answerObject(current().session);
}

void installSessions(Runtime& target) {
    const auto draggingItem = target.implementing("NSDraggingItem");
    draggingItem("setDraggingFrame:contents:", [](Invocation& i) {
        setProperty(i.receiver(), "draggingFrame", i.argument<CGRect>(0));
        setProperty(i.receiver(), "contents", i.object(1));
    });
    const auto view = target.implementing("NSView");
    view("bitmapImageRepForCachingDisplayInRect:", [](Invocation& i) {
        const auto part = i.argument<CGRect>(0);
        if (part.size.width <= 0 || part.size.height <= 0) return;
        i.answerObject(runtime().make("NSBitmapImageRep"));
    });
    view("cacheDisplayInRect:toBitmapImageRep:",
         [](Invocation& i) { setProperty(i.object(1), "shownAlpha", property<double>(i.receiver(), "alphaValue")); });
    const auto image = target.implementing("NSImage");
    image("addRepresentation:", [](Invocation& i) { setProperty(i.receiver(), "representation", i.object(0)); });
    view("beginDraggingSessionWithItems:event:source:", beginSession);
}

/// A view that is no destination does not hide the one it lies on.
NSView destinationAt(const NSView& view, CGPoint inWindow, const Texts& types) {
    const bool isInside = contains(view.bounds(), view.convertPointFrom(inWindow, NSView()));
    if (!isInside || property<bool>(view, "hidden")) return {};
    const auto children = view.subviews().elements<NSView>();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        if (const NSView found = destinationAt(*child, inWindow, types)) return found;
    }
    const bool wantsIt = std::ranges::any_of(list(view, "registeredDraggedTypes"), [&](const Id& registered) {
        return std::ranges::count(types, textOf(registered)) > 0;
    });
    return wantsIt ? view : NSView();
}

}  // namespace

void installDrags(Runtime& target) {
    installPasteboards(target);
    installRegistrations(target);
    installSessions(target);
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
    return tell<std::uint64_t>(over_, selector, info_);
}

std::uint64_t DragOver::goTo(const NSView& view) {
    if (over_) tell(over_, "draggingExited:", info_);
    over_ = view;
    if (over_ && std::ranges::count(visited_, over_) == 0) visited_.push_back(over_);
    return operation_ = ask("draggingEntered:");
}

std::uint64_t DragOver::moveTo(const NSView& contentView, CGPoint location) {
    const objc::AutoreleasePool pool;
    objc::Subclass<FakeDraggingInfo>::of(info_)->location = location;
    Texts types;
    for (const NSString& type : NSPasteboard(pasteboard_).types().elements<NSString>()) types.push_back(type.text());
    const NSView view = destinationAt(contentView, location, types);
    if (!(view == over_)) return goTo(view);
    return operation_ = ask("draggingUpdated:");
}

void DragOver::leave() {
    const objc::AutoreleasePool pool;
    goTo({});
}

void DragOver::tellEnd(const NSView& except) {
    for (const NSView& view : std::exchange(visited_, {}))
        if (!(view == except)) tell(view, "draggingEnded:", info_);
}

bool DragOver::drop() {
    const objc::AutoreleasePool pool;
    if (!over_ || operation_ == 0) {
        end();
        return false;
    }
    const NSView target = std::exchange(over_, {});
    const bool isTaken =
        tell<bool>(target, "prepareForDragOperation:", info_) && tell<bool>(target, "performDragOperation:", info_);
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
    return tell<std::uint64_t>(current().source,
                               "draggingSession:sourceOperationMaskForDraggingContext:", current().session, context);
}

void endOwnDrag(std::uint64_t operation) {
    const objc::AutoreleasePool pool;
    const OwnDrag drag = std::exchange(current(), {});
    tell(drag.source, "draggingSession:endedAtPoint:operation:", drag.session, CGPoint{}, operation);
}

}  // namespace morvel::mac::checked
