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

std::string& current() {
    return runtime().known<Current>().name;
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

void installColors(Runtime& target) {
    const auto color = target.implementing("NSColor");
    for (const char* role : {"clearColor", "labelColor", "secondaryLabelColor", "separatorColor", "systemRedColor",
                             "whiteColor", "controlAccentColor", "windowBackgroundColor"}) {
        color("+" + std::string(role), [role](Invocation& i) { i.answerObject(makeColor(role)); });
    }
    color("+colorWithSRGBRed:green:blue:alpha:", [](Invocation& i) {
        std::ostringstream text;
        text << "sRGB";
        for (std::size_t k = 0; k < 4; ++k) text << ' ' << i.argument<double>(k);
        i.answerObject(makeColor(text.str()));
    });
    color("colorWithAlphaComponent:", [](Invocation& i) {
        std::ostringstream text;
        text << *payloadOf<std::string>(i.receiver()) << ' ' << i.argument<double>(0);
        i.answerObject(makeColor(text.str()));
    });
    color("CGColor", [](Invocation& i) {
        static std::set<std::string> resolved;  // so that a reference stays good
        const auto at = resolved.insert(*payloadOf<std::string>(i.receiver()) + " under " + current()).first;
        i.answer<CGColorRef>(reinterpret_cast<CGColorRef>(const_cast<std::string*>(&*at)));
    });
}

}  // namespace

void setAppearance(const NSView& content, const std::string& name) {
    setProperty(content, "effectiveAppearance", appearance(name));
    for (const NSView& child : content.subviews().elements<NSView>()) setAppearance(child, name);
    send(content, "viewDidChangeEffectiveAppearance"_sel);
}

std::string describe(CGColorRef color) {
    return color ? *reinterpret_cast<const std::string*>(color) : std::string();
}

void installAppearance(Runtime& target) {
    const auto appearances = target.implementing("NSAppearance");
    appearances("+appearanceNamed:", [](Invocation& i) { i.answerObject(appearance(textOf(i.object(0)))); });
    const auto view = target.implementing("NSView");
    view("effectiveAppearance", [](Invocation& i) {
        const RawObject own = property<RawObject>(i.receiver(), "effectiveAppearance");
        i.answerObject(own ? Id(own) : appearance(kDefault));
    });
    appearances("performAsCurrentDrawingAppearance:", [](Invocation& i) {
        const std::string before = current();
        current() = nameOf(i.receiver());
        Block<void()>(i.argument<objc::RawBlock>(0))();
        current() = before;
    });
    installColors(target);
    const auto string = target.implementing("NSString");
    string("sizeWithAttributes:", [](Invocation& i) {
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
