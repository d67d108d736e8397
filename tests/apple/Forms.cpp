// Controls of forms: what they keep, and how much room they want.
#include "Forms.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>

#include "Platform/Mac/apple/AppKit/NSFormControls.h"
#include "Platform/Mac/objc/Block.h"
#include "Properties.h"

namespace morvel::mac::checked {

namespace {

/// The views below that are of the class, in the order in which they were added.
void collect(const NSView& view, const std::string& className, std::vector<NSView>& found) {
    if (inherits(classOf(view.raw()), className)) found.push_back(view);
    for (const NSView& child : view.subviews().elements<NSView>()) collect(child, className, found);
}

/// Of a colour that was made of sRGB components; others raise an exception when they are asked.
double component(RawObject color, std::size_t index) {
    const auto* const text = payloadOf<std::string>(color);
    double values[4]{};
    if (!text ||
        std::sscanf(text->c_str(), "sRGB %lf %lf %lf %lf", &values[0], &values[1], &values[2], &values[3]) != 4)
        runtime().faults().add(FaultKind::BadCall, "a colour without components is asked for one");
    return values[index];
}

bool isReachable(const NSView& view) {
    for (NSView at = view; at; at = at.superview())
        if (property<bool>(at, "hidden")) return false;
    return true;
}

}  // namespace

std::vector<NSView> viewsOfClass(const NSView& root, const std::string& className) {
    std::vector<NSView> found;
    collect(root, className, found);
    std::erase_if(found, [](const NSView& view) { return !isReachable(view); });
    return found;
}

void answerPanels(const std::string& path) {
    for (const char* panel : {"NSOpenPanel", "NSSavePanel"}) {
        runtime().script(panel, "beginSheetModalForWindow:completionHandler:", [path](Invocation& i) {
            const Id url = path.empty() ? Id() : NSURL::file(path);
            setProperty(i.receiver(), "URL", url);
            const objc::Block<void(std::int64_t)> answered(i.argument<objc::RawBlock>(1));
            answered(path.empty() ? 0 : NSModalResponseOK);
        });
    }
}

void installForms(Runtime& target) {
    const auto popUpButton = target.implementing("NSPopUpButton");
    popUpButton("addItemWithTitle:", [](Invocation& i) { list(i.receiver(), "itemTitles").emplace_back(i.object(0)); });
    popUpButton("selectItemAtIndex:", [](Invocation& i) {
        const auto count = static_cast<std::int64_t>(list(i.receiver(), "itemTitles").size());
        const auto index = i.argument<std::int64_t>(0);
        if (index < -1 || index >= count) {
            runtime().faults().add(FaultKind::BadCall, "a pop-up button has no item of this index");
            return;
        }
        setProperty(i.receiver(), "indexOfSelectedItem", index);
    });
    const auto make = [](Invocation& i) {
        i.answerObject(Id(objc::kAdopt, runtime().allocate(classOf(i.receiver()))));
    };
    target.implementing("NSOpenPanel")("+openPanel", make);
    target.implementing("NSSavePanel")("+savePanel", make);
    const auto control = target.implementing("NSControl");
    control("sizeThatFits:", [](Invocation& i) {
        // As wide as a letter of the system's font on average.
        constexpr double kAdvance = 6;
        constexpr double kLine = 15;
        const double width = i.argument<CGSize>(0).width;
        const auto letters = static_cast<double>(textProperty(i.receiver(), "stringValue").size());
        i.answer<CGSize>(
            {std::min(width, letters * kAdvance), kLine * std::max(1.0, std::ceil(letters * kAdvance / width))});
    });
    const auto color = target.implementing("NSColor");
    color("colorUsingColorSpace:", [](Invocation& i) { i.answerObject(Id(i.receiver())); });
    constexpr const char* kComponents[] = {"redComponent", "greenComponent", "blueComponent", "alphaComponent"};
    for (std::size_t index = 0; index < std::size(kComponents); ++index) {
        color(kComponents[index], [index](Invocation& i) { i.answer<double>(component(i.receiver(), index)); });
    }
}

}  // namespace morvel::mac::checked
