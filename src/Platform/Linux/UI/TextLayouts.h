// Text as Pango shapes it: the same font, hinting and cutting for measuring and for painting.
#pragma once

#include <pango/pango.h>

#include <string>
#include <string_view>
#include <unordered_map>

#include "Platform/Linux/System/GLibPointers.h"
#include "UI/Font.h"
#include "Util/Geometry.h"

namespace morvel::x11 {

using LayoutPtr = GPtr<PangoLayout>;

/// At most so many characters are shaped; no label is wide enough to show more, and titles can be megabytes long.
inline constexpr size_t kMaxShownCharacters = 512;
/// What lies behind so many bytes has no influence on what is shown.
inline constexpr size_t kMaxShownBytes = 4 * kMaxShownCharacters;

/// `text` as it is shown: what is not UTF-8 becomes replacement characters, line breaks, tabs and other control
/// characters become spaces, and it ends after `kMaxShownCharacters`.
std::string shownText(std::string_view text);

/// Pango reads the system's font settings, some 150 files, on a thread of its own from the moment its font map exists.
/// Started before anything waits for the X server, it is done when the first text is shaped.
void startReadingFonts();

/// Main thread only. Sizes are absolute: one point is one pixel, whatever resolution the server claims to have.
class TextLayouts {
public:
    TextLayouts();

    /// One line, cut at its tail with an ellipsis where it is wider than `width` points; negative: never cut.
    LayoutPtr line(std::string_view text, const ui::Font& font, double width);
    /// As many lines as it takes to keep within `width` points; line breaks in the text are kept.
    LayoutPtr paragraph(std::string_view text, const ui::Font& font, double width);

    /// The logical size of the whole text on one line.
    Size lineSize(std::string_view text, const ui::Font& font);

private:
    LayoutPtr make(const std::string& shown, const ui::Font& font);

    const GPtr<PangoContext> context_;
    std::unordered_map<std::string, Size> sizes_;  // by font and shown text; bounded
};

/// The logical size, in points.
Size sizeOf(PangoLayout* layout);

}  // namespace morvel::x11
