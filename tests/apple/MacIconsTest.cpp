// Icons and symbols, and the order in which an image is drawn into another.
#include "Platform/Mac/Icons/MacIcons.h"

#include "Platform/Mac/Icons/MacImage.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

class IconsOfTheMac : public RuntimeTest {
protected:
    IconsOfTheMac() {
        runtime().script("NSWorkspace", "iconForFile:", [](Invocation& i) {
            i.answerObject(named("icon of " + textOf(i.object(0))));
        });
        runtime().script("NSWorkspace", "URLForApplicationWithBundleIdentifier:", [](Invocation& i) {
            if (textOf(i.object(0)) == "app.notes") i.answerObject(NSURL::file("/Applications/Notes.app"));
        });
        runtime().script("NSImage", "+imageWithSystemSymbolName:accessibilityDescription:", [](Invocation& i) {
            if (textOf(i.object(0)) == "pin.fill") i.answerObject(named("symbol"));
        });
        runtime().script("NSImage", "imageWithSymbolConfiguration:", [](Invocation& i) {
            const auto size = static_cast<int>(property<double>(i.object(0), "pointSize"));
            i.answerObject(named(nameOf(NSImage(i.receiver())) + " at " + std::to_string(size)));
        });
    }

    static Id named(const std::string& name) {
        Id image = runtime().make("NSImage");
        setProperty(image, "name", makeString(name));
        return image;
    }
    static std::string nameOf(const NSImage& image) { return textProperty(image, "name"); }
    static std::string nameOf(const ui::ImageRef& image) { return nameOf(MacImage::imageOf(image)); }

    MacIcons icons_;
};

TEST_F(IconsOfTheMac, ImagesComeFromTheSystem) {
    EXPECT_EQ(nameOf(icons_.applicationIcon("app.notes")), "icon of /Applications/Notes.app");
    EXPECT_EQ(icons_.applicationIcon("app.unknown"), nullptr);
    EXPECT_EQ(nameOf(icons_.fileIcon("/tmp/a.txt")), "icon of /tmp/a.txt");
    EXPECT_EQ(nameOf(icons_.symbol("pin.fill", 14)), "symbol at 14");
    EXPECT_EQ(icons_.symbol("no.such.symbol", 14), nullptr);
    EXPECT_EQ(icons_.empty({16, 16})->size(), (Size{16, 16}));

    EXPECT_EQ(icons_.processIcon(ProcessID(42)), nullptr) << "no such process";
    const auto application = workspace().launch({.pid = 42, .bundleIdentifier = "", .name = "Notes"});
    EXPECT_EQ(icons_.processIcon(ProcessID(42)), nullptr) << "it shows none";
    setProperty(application, "icon", named("shown"));
    EXPECT_EQ(nameOf(icons_.processIcon(ProcessID(42))), "shown");
}

TEST_F(IconsOfTheMac, BakingDrawsOnceUnderTheCurrentAppearance) {
    EXPECT_EQ(icons_.baked(nullptr, {64, 64}), nullptr);
    const auto icon = icons_.fileIcon("/tmp/a.txt");
    EXPECT_EQ(icons_.baked(icon, {64, 0}), nullptr);
    runtime().forgetCalls();
    const auto baked = icons_.baked(icon, {64, 64});
    ASSERT_TRUE(baked);
    EXPECT_EQ(baked->size(), (Size{64, 64}));
    EXPECT_FALSE(MacImage::imageOf(baked) == MacImage::imageOf(icon));

    Texts drawing;
    for (const Call& call : runtime().calls()) {
        const bool isTarget = call.receiver == MacImage::imageOf(baked).raw();
        if (call.selector == "performAsCurrentDrawingAppearance:") drawing.push_back("appearance");
        if (isTarget && call.selector.find("ockFocus") != std::string::npos) drawing.push_back(call.selector);
        if (call.selector == "lockFocusFlipped:") {
            EXPECT_EQ(call.arguments[0], valueOf(true));
        }
        if (call.selector != "drawInRect:") continue;
        EXPECT_EQ(call.receiver, MacImage::imageOf(icon).raw());
        EXPECT_EQ(call.arguments[0], valueOf(CGRect{{0, 0}, {64, 64}}));
        drawing.push_back("draw");
    }
    EXPECT_EQ(drawing, (Texts{"appearance", "lockFocusFlipped:", "draw", "unlockFocus"}));
    const auto symbol = icons_.symbol("pin.fill", 14);
    EXPECT_FALSE(MacImage::imageOf(icons_.baked(symbol, {64, 64})).isTemplate());
    MacImage::imageOf(symbol).setTemplate(true);
    EXPECT_TRUE(MacImage::imageOf(icons_.baked(symbol, {64, 64})).isTemplate()) << "a baked template stays one";
}

}  // namespace
}  // namespace morvel::mac::checked
