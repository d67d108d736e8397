// Roles to AppKit's named colours, fonts to the system font.
#include "Platform/Mac/UI/Resolving.h"

namespace morvel::mac {

namespace {

NSColor roleColor(const ui::Color& color) {
    switch (color.role) {
        case ui::ColorRole::Clear:
            return NSColor::clear();
        case ui::ColorRole::Label:
            return NSColor::label();
        case ui::ColorRole::SecondaryLabel:
            return NSColor::secondaryLabel();
        case ui::ColorRole::ControlAccent:
            return NSColor::controlAccent();
        case ui::ColorRole::WindowBackground:
            return NSColor::windowBackground();
        case ui::ColorRole::Separator:
            return NSColor::separator();
        case ui::ColorRole::SystemRed:
            return NSColor::systemRed();
        case ui::ColorRole::White:
            return NSColor::white();
        case ui::ColorRole::Custom:
            break;
    }
    return NSColor::sRGB(color.rgba.red, color.rgba.green, color.rgba.blue, color.rgba.alpha * color.alpha);
}

}  // namespace

NSColor nsColor(const ui::Color& color) {
    const NSColor whole = roleColor(color);
    const bool isBlended = color.alpha < 1 && color.role != ui::ColorRole::Clear && color.role != ui::ColorRole::Custom;
    return isBlended ? whole.withAlpha(color.alpha) : whole;
}

NSFont nsFont(const ui::Font& font) {
    return NSFont::system(font.size,
                          font.weight == ui::FontWeight::Semibold ? NSFontWeightSemibold : NSFontWeightRegular);
}

}  // namespace morvel::mac
