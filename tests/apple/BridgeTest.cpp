// The bridge: references, subclasses with C++ methods and owned objects, blocks of both kinds, encodings.
#include "Events.h"
#include "Platform/Mac/apple/AppKit/NSEvent.h"
#include "Platform/Mac/apple/AppKit/NSWindow.h"
#include "Platform/Mac/apple/Foundation/NSNotificationCenter.h"
#include "Platform/Mac/apple/Foundation/NSNumber.h"
#include "Platform/Mac/objc/Associated.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Platform/Mac/objc/Subclass.h"
#include "Platform/Mac/objc/TypeCheck.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

class Bridge : public RuntimeTest {};

/// A view as a host makes one: replaces its tracking area, notes what AppKit tells it, counts its own life.
struct Probe {
    static constexpr const char* kClassName = "MorvelProbe";
    struct Notes {
        Texts calls;
        int alive = 0;
    };

    explicit Probe(Notes& shared) : notes(shared) { ++notes.alive; }
    Probe(const Probe&) = delete;
    ~Probe() { --notes.alive; }

    void mouseDown(NSEvent event) { notes.calls.push_back("down " + std::to_string(event.clickCount())); }
    void updateTrackingAreas(objc::Self self) {
        self.super("updateTrackingAreas"_sel);
        const NSView view(self.object);
        if (area) view.removeTrackingArea(area);
        area = NSTrackingArea::make(view.bounds(), 641, view);
        view.addTrackingArea(area);
        notes.calls.push_back("areas " + std::to_string(view.trackingAreas().count()));
    }
    NSString accessibilityLabel() { return NSString::from("probe"); }
    void rightMouseDown(objc::Self self, NSEvent) { NSView(self.object).removeFromSuperview(); }

    static NSView make(Notes& notes, CGRect frame) {
        using Class = objc::Subclass<Probe>;
        static const objc::RawClass registered = Class("NSView")
                                                     .overrides<&Probe::mouseDown>("mouseDown:"_sel)
                                                     .overrides<&Probe::rightMouseDown>("rightMouseDown:"_sel)
                                                     .overrides<&Probe::updateTrackingAreas>("updateTrackingAreas"_sel)
                                                     .overrides<&Probe::accessibilityLabel>("accessibilityLabel"_sel)
                                                     .registered();
        (void)registered;
        return Class::create<NSView>(std::make_unique<Probe>(notes), "initWithFrame:"_sel, frame);
    }

    Notes& notes;
    NSTrackingArea area;
};

TEST_F(Bridge, SubclassesAreCalledAsAppKitCalls) {
    Probe::Notes notes;
    NSView view = Probe::make(notes, {{10, 0}, {36, 32}});
    EXPECT_EQ(view.frame(), (CGRect{{10, 0}, {36, 32}})) << "struct results and the inherited initialiser";
    const NSPanel panel(NSWindow::make({{0, 0}, {300, 32}}, NSWindowStyleMaskNonactivatingPanel));
    panel.setReleasedWhenClosed(false);
    panel.setContentView(NSView::make({{0, 0}, {300, 32}}));
    panel.contentView().addSubview(view);
    send(view, "updateTrackingAreas"_sel);
    const NSEvent event(mouseEvent(NSEventTypeLeftMouseDown, {15, 5}, 2));
    sendMouse(panel.contentView(), "mouseDown:", event);
    sendMouse(panel.contentView(), "mouseDown:", mouseEvent(NSEventTypeLeftMouseDown, {900, 5}));
    EXPECT_EQ(notes.calls, (Texts{"areas 1", "areas 1", "down 2"})) << "replaced, never piled up";
    EXPECT_EQ(send<NSString>(view, "accessibilityLabel"_sel).text(), "probe");
    EXPECT_EQ(view.convertPointFrom({15, 5}, NSView()), (CGPoint{5, 5}));

    const RawObject raw = view.raw();
    view = NSView();
    EXPECT_EQ(notes.alive, 1) << "its superview keeps it";
    send(raw, "rightMouseDown:"_sel, event);  // removes itself while its own method runs
    EXPECT_EQ(notes.alive, 0);
    panel.close();
}

TEST_F(Bridge, ReferencesEndWithTheirHolders) {
    Probe::Notes notes;
    {
        const NSView view = Probe::make(notes, {});
        NSView copy = view;
        copy = std::move(copy);
        EXPECT_EQ(copy, view);
        EXPECT_EQ(objc::as<NSView>(copy), view);
        EXPECT_FALSE(objc::as<NSWindow>(copy)) << "another class";
        static constexpr objc::AssociationKey kKey;
        objc::setAssociated(NSObject(view), kKey, Probe::make(notes, {}));
        EXPECT_TRUE(objc::associated<NSView>(view, kKey));
        EXPECT_EQ(notes.alive, 2);
    }
    EXPECT_EQ(notes.alive, 0) << "and what was associated";
    {
        const objc::AutoreleasePool pool;
        objc::objc_autorelease(Probe::make(notes, {}).giveUp());
        EXPECT_EQ(notes.alive, 1);
    }
    EXPECT_EQ(notes.alive, 0) << "and what a pool held";
    NSView nil;
    EXPECT_EQ(nil.frame(), CGRect{}) << "nil answers zero";
    EXPECT_EQ(NSString().text(), "");
}

TEST_F(Bridge, BlocksCopyAndDisposeTheirCallable) {
    auto witness = std::make_shared<int>(0);
    Block<NSInteger(NSNumber)> kept;
    {
        const objc::StackBlock<NSInteger(NSNumber)> block([witness](NSNumber number) {
            ++*witness;
            return number.integerValue() + 1;
        });
        kept = Block<NSInteger(NSNumber)>(block.raw());  // as a callee that keeps it
        EXPECT_EQ(witness.use_count(), 3);
    }
    EXPECT_EQ(witness.use_count(), 2) << "the stack's copy is gone";
    EXPECT_EQ(kept(NSNumber::from(NSInteger{41})), 42);
    auto second = kept;
    kept = {};
    EXPECT_EQ(second(NSNumber::from(NSInteger{1})), 2) << "one of two references ended";
    EXPECT_STREQ(second.raw()->descriptor->signature, "q@?@");
    second = {};
    EXPECT_EQ(witness.use_count(), 1);
    EXPECT_EQ(*witness, 2);
    EXPECT_EQ(kept(NSNumber()), 0) << "an empty block";
    // An exception ends at the block's border.
    const Block<bool()> thrower(std::function<bool()>([]() -> bool { throw std::runtime_error("on purpose"); }));
    EXPECT_FALSE(thrower());
    EXPECT_EQ(takenKinds(), std::vector<FaultKind>{FaultKind::EscapedException});
}

TEST_F(Bridge, ObserversEndWithTheirTokens) {
    Texts seen;
    const auto center = NSNotificationCenter::defaultCenter();
    const NSString name(NSApplicationDidChangeScreenParametersNotification);
    Subscription token = center.observe(name, [&](const NSNotification& note) {
        seen.push_back(note.name().text());
        token.reset();  // from inside its own notification
    });
    post(Center::Workspace, name.raw(), Id());
    EXPECT_TRUE(seen.empty()) << "another centre";
    post(Center::Default, name.raw(), Id());
    post(Center::Default, name.raw(), Id());
    EXPECT_EQ(seen, Texts{"NSApplicationDidChangeScreenParametersNotification"});
}

TEST(Encodings, OfRunningSystemsComparePlainly) {
    struct Row {
        const char *why, *recorded, *plain;
    };
    for (const Row& row :
         {Row{"offsets", "v24@0:8@16", "v@:@"}, Row{"qualifiers", "r*16@0:8", "*@:"},
          Row{"structs", "{CGRect={CGPoint=dd}{CGSize=dd}}16@0:8", "{CGRect={CGPoint=dd}{CGSize=dd}}@:"},
          Row{"blocks", "v32@0:8@16@?24", "v@:@@?"}, Row{"names", "@\"NSString\"16@0:8", "@@:"},
          Row{"arrays", "[8S]16@0:8", "[8S]@:"}}) {
        EXPECT_EQ(objc::plainEncoding(row.recorded), row.plain) << row.why;
    }
}

}  // namespace
}  // namespace morvel::mac::checked
