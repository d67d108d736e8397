// Colours as texts that say what they are and under which appearance they were resolved; fonts with a fixed advance.
#include "Appearance.h"

#include <set>
#include <sstream>

#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Properties.h"

namespace morvel::mac::checked {

namespace {

constexpr const char* kDefault = "NSAppearanceNameAqua";

/// The name of the appearance that performAsCurrentDrawingAppearance: has made the current one.
struct Current {
    std::string name = kDefault;
};

Current& current() {
    const Id holder = runtime().shared("NSObject", "NSAppearance current");
    if (!payloadOf<Current>(holder.raw())) setPayload(holder.raw(), Current{});
    return *payloadOf<Current>(holder.raw());
}

Id appearance(const std::string& name) {
    return runtime().shared("NSAppearance", "NSAppearance " + name);
}

/// An appearance's name, from the object that stands for it.
std::string nameOf(RawObject wanted) {
    for (const char* name : {kDefault, "NSAppearanceNameDarkAqua"}) {
        if (appearance(name).raw() == wanted) return name;
    }
    return "unknown";
}

Id makeColor(const std::string& text) {
    return runtime().make("NSColor", text);
}

void installColors(Runtime& runtime) {
    for (const char* role : {"clearColor", "labelColor", "secondaryLabelColor", "separatorColor", "systemRedColor",
                             "whiteColor", "controlAccentColor", "windowBackgroundColor"}) {
        runtime.implement("NSColor", "+" + std::string(role),
                          [role](Invocation& i) { i.answerObject(makeColor(role)); });
    }
    runtime.implement("NSColor", "+colorWithSRGBRed:green:blue:alpha:", [](Invocation& i) {
        std::ostringstream text;
        text << "sRGB";
        for (std::size_t k = 0; k < 4; ++k) text << ' ' << i.argument<double>(k);
        i.answerObject(makeColor(text.str()));
    });
    runtime.implement("NSColor", "colorWithAlphaComponent:", [](Invocation& i) {
        std::ostringstream text;
        text << *payloadOf<std::string>(i.receiver()) << ' ' << i.argument<double>(0);
        i.answerObject(makeColor(text.str()));
    });
    runtime.implement("NSColor", "CGColor", [](Invocation& i) {
        static std::set<std::string> resolved;  // so that a reference stays good
        const auto at = resolved.insert(*payloadOf<std::string>(i.receiver()) + " under " + current().name).first;
        i.answer<CGColorRef>(reinterpret_cast<CGColorRef>(const_cast<std::string*>(&*at)));
    });
}

}  // namespace

void setAppearance(const NSView& content, const std::string& name) {
    setProperty(content.raw(), "effectiveAppearance", appearance(name).raw());
    for (const NSView& child : content.subviews().elements<NSView>()) setAppearance(child, name);
    send(content, "viewDidChangeEffectiveAppearance"_sel);
}

std::string describe(CGColorRef color) {
    return color ? *reinterpret_cast<const std::string*>(color) : std::string();
}

void installAppearance(Runtime& runtime) {
    runtime.implement("NSAppearance",
                      "+appearanceNamed:", [](Invocation& i) { i.answerObject(appearance(textOf(i.object(0)))); });
    runtime.implement("NSView", "effectiveAppearance", [](Invocation& i) {
        const RawObject own = property<RawObject>(i.receiver(), "effectiveAppearance");
        i.answerObject(own ? Id(own) : appearance(kDefault));
    });
    runtime.implement("NSAppearance", "performAsCurrentDrawingAppearance:", [](Invocation& i) {
        const std::string before = current().name;
        current().name = nameOf(i.receiver());
        Block<void()>(i.argument<objc::RawBlock>(0))();
        current().name = before;
    });
    installColors(runtime);
    runtime.implement("NSString", "sizeWithAttributes:", [](Invocation& i) {
        // A fixed advance per byte, with a fraction to be rounded.
        constexpr double kAdvance = 6.5;
        constexpr double kLine = 14.5;
        i.answer<CGSize>({kAdvance * static_cast<double>(textOf(i.receiver()).size()), kLine});
    });
}

}  // namespace morvel::mac::checked

namespace morvel::mac {

extern "C" {
extern const double NSFontWeightRegular = 0;
extern const double NSFontWeightSemibold = 0.3;
}

}  // namespace morvel::mac
