// Drags over our windows and of our own views, as AppKit tells them; and the wheel.
#include "Bar/Drag/RunningWindowDrag.h"
#include "Drags.h"
#include "Platform/Mac/UI/MacDragPasteboard.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "ToolkitFixture.h"
#include "UI/ImageView.h"

namespace morvel::mac::checked {
namespace {

/// A view that notes what it is told of drags and the wheel, and can be dragged itself.
struct Zone : ui::View {
    Zone(Texts& shared, std::string itsName, std::string itsType)
        : notes(shared), name(std::move(itsName)), type(std::move(itsType)) {}

    bool acceptsMouse() const override { return true; }
    void mouseDragged(const ui::MouseEvent&) override {
        if (onDrag) onDrag();
    }
    bool scrollWheel(const ui::WheelEvent& event) override {
        turned += event.notches;
        return true;
    }
    bool acceptsDrag(const ui::DragPasteboard& dragged) const override { return dragged.hasType(type); }
    ui::DragOperation draggingEntered(const ui::DragInfo& info) override {
        note("entered " + textOf(info.location));
        if (onEntered) onEntered();
        return answer;
    }
    ui::DragOperation draggingUpdated(const ui::DragInfo&) override { return answer; }
    void draggingExited() override { note("exited"); }
    void draggingEnded() override { note("ended"); }
    bool performDragOperation(const ui::DragInfo& info) override {
        note("got " + info.pasteboard.string(type).value_or("nothing"));
        return takesDrops;
    }
    void note(const std::string& what) { notes.push_back(name + " " + what); }

    Texts& notes;
    std::string name, type;
    ui::DragOperation answer = ui::DragOperation::Move;
    bool takesDrops = true;
    double turned = 0;
    std::function<void()> onDrag, onEntered;
};

/// A root that notes what a window's root is told.
struct Window : ui::View {
    explicit Window(Texts& shared, std::string itsName) : notes(shared), name(std::move(itsName)) {}
    void windowDragEntered(const ui::DragInfo&) override { notes.push_back(name + " entered"); }
    void windowDragExited() override { notes.push_back(name + " exited"); }
    void windowDragEnded() override { notes.push_back(name + " ended"); }

    Texts& notes;
    std::string name;
};

class Drags : public ToolkitFixture {
protected:
    Drags() {
        root.addSubview(files);
        files.setFrame({0, 0, 100, 32});
        files.addSubview(inner);
        inner.setFrame({40, 0, 20, 32});
        root.addSubview(texts);
        texts.setFrame({100, 0, 100, 32});
        texts.addSubview(picture);
        picture.setFrame({0, 0, 100, 32});
    }
    Texts told() { return std::exchange(notes, {}); }
    static Id text(const std::string& content) {
        return makePasteboard({.objects = {{"public.utf8-plain-text", makeString(content)}}, .urls = {}});
    }
    /// Presses the files' zone or what is at this place, and moves with the button held.
    void pull(double x = 10) {
        sendMouse(native(root), "mouseDown:", mouseEvent(NSEventTypeLeftMouseDown, {x, 10}));
        sendMouse(native(root), "mouseDragged:", mouseEvent(NSEventTypeLeftMouseDragged, {x + 10, 10}));
    }
    void endDrag(std::uint64_t operation) {
        endOwnDrag(operation);
        EXPECT_TRUE(ends.empty()) << "in a later turn";
        dispatch().runPending();
    }
    void dragWhenPulled() {
        files.onDrag = [this] {
            toolkit.beginDrag(files, {"app.morvel.Morvel.running-window", "a window"},
                              [this](ui::DragOperation done) { ends.push_back(done); });
            EXPECT_TRUE(ends.empty()) << "never inside";
        };
    }

    Texts notes;
    std::vector<ui::DragOperation> ends;
    Window root{notes, "window"};
    ui::Panel panel{toolkit, {.frame = {0, 0, 400, 32}}, root};
    Zone files{notes, "files", "public.file-url"};
    ui::View inner;
    Zone texts{notes, "texts", "public.utf8-plain-text"};
    ui::ImageView picture;
};

TEST_F(Drags, ReachTheDeepestViewThatAcceptsThem) {
    files.answer = ui::DragOperation::Copy;
    DragOver drag(makeFiles({"/tmp/a b"}));
    EXPECT_EQ(drag.moveTo(native(root), {10, 5}), 1U);
    EXPECT_EQ(told(), (Texts{"window entered", "files entered 10,27"})) << "downwards from the top";
    EXPECT_EQ(drag.moveTo(native(root), {50, 5}), 1U);
    EXPECT_EQ(told(), Texts{}) << "a part of it is still it";
    EXPECT_EQ(drag.moveTo(native(root), {150, 5}), 0U);
    EXPECT_EQ(told(), Texts{"files exited"}) << "its window is not left, nor does the image take the file";
    files.setHidden(true);
    EXPECT_EQ(drag.moveTo(native(root), {10, 5}), 0U);
    drag.leave();
    EXPECT_EQ(told(), Texts{"window exited"});
    drag.end();
    EXPECT_EQ(told(), (Texts{"files ended", "window ended"}));

    DragOver other(text("hello"));
    EXPECT_EQ(other.moveTo(native(root), {150, 5}), 16U) << "through its image";
    EXPECT_TRUE(other.drop());
    EXPECT_EQ(told(), (Texts{"window entered", "texts entered 150,27", "texts got hello", "window exited",
                             "texts ended", "window ended"}));
}

TEST_F(Drags, EndOnceForEachWindowTheyWereOver) {
    Window second(notes, "second");
    ui::Panel bar(toolkit, {.frame = {400, 0, 100, 32}}, second);
    DragOver drag(text("hello"));
    drag.moveTo(native(root), {150, 5});
    drag.moveTo(native(second), {10, 5});
    EXPECT_EQ(told(),
              (Texts{"window entered", "texts entered 150,27", "texts exited", "window exited", "second entered"}));
    EXPECT_FALSE(drag.drop()) << "nobody there wants it";
    EXPECT_EQ(told(), (Texts{"second exited", "texts ended", "window ended", "second ended"}));

    texts.takesDrops = false;
    DragOver refused(text("hello"));
    refused.moveTo(native(second), {10, 5});
    refused.moveTo(native(root), {150, 5});
    told();
    EXPECT_FALSE(refused.drop());
    EXPECT_EQ(told(), (Texts{"texts got hello", "window exited", "texts ended", "window ended", "second ended"}));
}

TEST_F(Drags, ViewsMayGoWhileTheyAreOverThem) {
    auto visitor = std::make_unique<Zone>(notes, "visitor", "public.utf8-plain-text");
    root.addSubview(*visitor);
    visitor->setFrame({200, 0, 50, 32});
    visitor->onEntered = [&] { visitor->removeFromParent(); };
    DragOver drag(text("hello"));
    EXPECT_EQ(drag.moveTo(native(root), {210, 5}), 16U);
    EXPECT_EQ(drag.moveTo(native(root), {210, 5}), 0U);
    EXPECT_FALSE(drag.drop());
    EXPECT_EQ(told(), (Texts{"window entered", "visitor entered 210,27", "window exited", "window ended"}));

    auto guest = std::make_unique<Window>(notes, "guest");
    auto bar = std::make_unique<ui::Panel>(toolkit, ui::PanelOptions{.frame = {400, 0, 100, 32}}, *guest);
    const NSView content = native(*guest);
    DragOver unplugged(text("hello"));
    unplugged.moveTo(content, {10, 5});
    bar.reset();
    guest.reset();
    EXPECT_EQ(unplugged.moveTo(content, {12, 5}), 0U) << "its display is gone";
    EXPECT_FALSE(unplugged.drop());
    EXPECT_EQ(told(), Texts{"guest entered"});
}

TEST_F(Drags, OfEveryKindAreHeardOf) {
    Texts registered;
    for (const Id& type : list(native(root), "registeredDraggedTypes")) registered.push_back(checked::textOf(type));
    for (const std::string& needed :
         {std::string(ui::kFileURLType), std::string(ui::kLegacyFilenamesType), RunningWindowDrag::type(),
          std::string("app.morvel.Morvel.pinned-app"), std::string("public.url"), std::string("public.tiff")})
        EXPECT_EQ(std::ranges::count(registered, needed), 1) << needed;
}

TEST_F(Drags, ContentsAreNotBelieved) {
    const objc::AutoreleasePool pool;
    const std::string own = RunningWindowDrag::type();
    const std::string old = "NSFilenamesPboardType";
    struct Row {
        const char* why;
        PasteboardContents contents;
        bool hasURLs, hasOld;
        Texts paths;
    };
    const Id remote = NSURL::parse("https://example.com/a");
    const Id names = makeArray({makeString("/a"), makeNumber(std::int64_t{3}), makeString("b"), makeString("")});
    const auto urls = [](Elements listed) { return PasteboardContents{.objects = {}, .urls = std::move(listed)}; };
    const auto oldNames = [&](const Id& object) { return PasteboardContents{.objects = {{old, object}}, .urls = {}}; };
    for (const Row& row : {
             Row{"files", urls({NSURL::file("/tmp/é"), NSURL::file("/b c")}), true, false, {"/tmp/é", "/b c"}},
             Row{"nothing at all", {}, false, false, {}},
             Row{"a link is no file", urls({remote}), false, false, {}},
             Row{"files among links", urls({remote, NSURL::file("/a")}), true, false, {"/a"}},
             Row{"a relative path", urls({NSURL::file("a/b")}), true, false, {}},
             Row{"old names, some of them none", oldNames(names), false, true, {"/a"}},
             Row{"an old name that is no list", oldNames(makeString("/a")), false, true, {}},
             Row{"an old type without contents", oldNames(Id()), false, false, {}},
         }) {
        const MacDragPasteboard pasteboard{NSPasteboard(makePasteboard(row.contents))};
        EXPECT_EQ(pasteboard.hasFileURLs(), row.hasURLs) << row.why;
        EXPECT_EQ(pasteboard.hasType(ui::kLegacyFilenamesType), row.hasOld) << row.why;
        EXPECT_EQ(pasteboard.filePaths(), row.paths) << row.why;
    }
    const MacDragPasteboard lying{NSPasteboard(
        makePasteboard({.objects = {{own, makeNumber(true)}, {"public.url", makeString("no window")}}, .urls = {}}))};
    EXPECT_TRUE(RunningWindowDrag::isIn(lying));
    EXPECT_EQ(lying.string(own), std::nullopt) << "not a text";
    EXPECT_EQ(lying.string("public.url"), "no window");
    EXPECT_EQ(lying.string("public.rtf"), std::nullopt);
    EXPECT_FALSE(lying.hasType("public.ur"));
    // A system that returns more than it was asked for.
    runtime().script("NSPasteboard", "readObjectsForClasses:options:", [&](Invocation& i) {
        i.answerObject(makeArray({remote, makeString("/x"), NSURL::file("/a")}));
    });
    EXPECT_EQ(lying.filePaths(), Texts{"/a"});
}

TEST_F(Drags, OfAViewShowItAsItIsAndEndOnce) {
    files.setAlpha(0.6);
    dragWhenPulled();
    pull();
    ASSERT_TRUE(ownDrag());
    const RawObject item = ownDrag()->items.at(0).raw();
    EXPECT_EQ(property<CGRect>(item, "draggingFrame"), (CGRect{{0, 0}, {100, 32}}));
    const RawObject image = property<RawObject>(item, "contents");
    EXPECT_EQ(property<CGSize>(image, "size"), (CGSize{100, 32}));
    EXPECT_EQ(property<double>(property<RawObject>(image, "representation"), "shownAlpha"), 0.6);
    EXPECT_EQ(operationsOfOwnDrag(NSDraggingContextWithinApplication), 16U) << "moved, never copied";
    EXPECT_EQ(operationsOfOwnDrag(0), 16U);
    const MacDragPasteboard carried{NSPasteboard(pasteboardOfOwnDrag())};
    EXPECT_TRUE(RunningWindowDrag::isIn(carried));
    EXPECT_EQ(carried.string(RunningWindowDrag::type()), "a window");
    files.removeFromParent();
    endDrag(NSDragOperationMove);
    EXPECT_EQ(std::exchange(ends, {}), std::vector{ui::DragOperation::Move}) << "also when the view is gone";

    root.addSubview(files);
    for (const auto& [answered, meant] : {std::pair{NSDragOperationCopy, ui::DragOperation::Copy},
                                          std::pair{NSDragOperationNone, ui::DragOperation::None}}) {
        pull();
        endDrag(answered);
        EXPECT_EQ(std::exchange(ends, {}), std::vector{meant});
    }
    pull();
    owned.reset();
    endDrag(NSDragOperationMove);
    EXPECT_TRUE(ends.empty()) << "the program has ended";
}

TEST_F(Drags, ThatCannotStartEndAtOnce) {
    const auto endsAtOnce = [&](const char* why) {
        EXPECT_FALSE(ownDrag()) << why;
        dispatch().runPending();
        EXPECT_EQ(std::exchange(ends, {}), std::vector{ui::DragOperation::None}) << why;
    };
    dragWhenPulled();
    files.onDrag();
    endsAtOnce("nothing is pressed");
    const Id middle = mouseEvent(NSEventTypeOtherMouseDown, {10, 10});
    setProperty(middle, "buttonNumber", NSInteger{2});
    sendMouse(native(root), "otherMouseDown:", middle);
    sendMouse(native(root), "otherMouseDragged:", mouseEvent(27, {20, 10}));
    endsAtOnce("the middle button");
    texts.onDrag = files.onDrag;
    files.removeFromParent();
    pull(110);
    endsAtOnce("the view is not shown");
    root.addSubview(files);
    answer("NSPasteboardItem", "setString:forType:", false);
    pull();
    endsAtOnce("the pasteboard refuses the item");
}

TEST_F(Drags, TheWheelTurnsByNotches) {
    struct Row {
        const char* why;
        double x, y;
        bool isPrecise;
        NSUInteger momentum;
        double notches;
    };
    for (const Row& row : {Row{"a slow notch of a wheel", 0, -0.1, false, 0, 1}, Row{"a fast one", 0, -7, false, 0, 1},
                           Row{"away from the person", 0, 1, false, 0, -1}, Row{"a finger's way", 0, -15, true, 0, 0.5},
                           Row{"a flick that runs on", 0, -90, true, 4, 0}, Row{"mostly sideways", 40, -15, true, 0, 0},
                           Row{"no turn", 0, 0, true, 0, 0}}) {
        const Id event = mouseEvent(NSEventTypeScrollWheel, {10, 10});
        setProperty(event, "scrollingDeltaX", row.x);
        setProperty(event, "scrollingDeltaY", row.y);
        setProperty(event, "hasPreciseScrollingDeltas", row.isPrecise);
        setProperty(event, "momentumPhase", row.momentum);
        sendMouse(native(root), "scrollWheel:", event);
        EXPECT_DOUBLE_EQ(std::exchange(files.turned, 0), row.notches) << row.why;
    }
    EXPECT_EQ(texts.turned, 0);
}

}  // namespace
}  // namespace morvel::mac::checked
