#include "Platform/Linux/UI/TextLayouts.h"

#include <pango/pangocairo.h>

#include <cmath>

namespace morvel::x11 {

namespace {

constexpr const char* kFamily = "Sans";
// Enough for the titles of any desktop; beyond it everything is measured anew once.
constexpr size_t kMaxKnownSizes = 1024;

enum class LineBreaks { Replace, Keep };

bool isReplaced(gunichar c, LineBreaks breaks) {
    if (c == '\n' && breaks == LineBreaks::Keep) return false;
    return g_unichar_iscntrl(c) || c == 0x2028 || c == 0x2029;
}

std::string shown(std::string_view text, LineBreaks breaks) {
    // Cut before anything else looks at it. A character that the cut splits lies behind the last one shown.
    text = text.substr(0, kMaxShownBytes);
    const GText valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    std::string out;
    out.reserve(text.size());
    size_t count = 0;
    for (const char* at = valid.get(); *at && count < kMaxShownCharacters; at = g_utf8_next_char(at), ++count) {
        if (isReplaced(g_utf8_get_char(at), breaks))
            out += ' ';
        else
            out.append(at, static_cast<size_t>(g_utf8_next_char(at) - at));
    }
    return out;
}

}  // namespace

std::string shownText(std::string_view text) {
    return shown(text, LineBreaks::Replace);
}

void startReadingFonts() {
    pango_cairo_font_map_get_default();
}

Size sizeOf(PangoLayout* layout) {
    int width = 0, height = 0;
    pango_layout_get_size(layout, &width, &height);
    return {static_cast<double>(width) / PANGO_SCALE, static_cast<double>(height) / PANGO_SCALE};
}

TextLayouts::TextLayouts() : context_(pango_font_map_create_context(pango_cairo_font_map_get_default())) {
    cairo_font_options_t* options = cairo_font_options_create();
    // Grey rather than subpixel smoothing: what is behind translucent windows is not known here.
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_ON);
    pango_cairo_context_set_font_options(context_.get(), options);
    cairo_font_options_destroy(options);
}

LayoutPtr TextLayouts::make(const std::string& text, const ui::Font& font) {
    LayoutPtr layout(pango_layout_new(context_.get()));
    PangoFontDescription* description = pango_font_description_new();
    pango_font_description_set_family_static(description, kFamily);
    pango_font_description_set_weight(
        description, font.weight == ui::FontWeight::Semibold ? PANGO_WEIGHT_SEMIBOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_absolute_size(description, font.size * PANGO_SCALE);
    pango_layout_set_font_description(layout.get(), description);
    pango_font_description_free(description);
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    return layout;
}

LayoutPtr TextLayouts::line(std::string_view text, const ui::Font& font, double width) {
    LayoutPtr layout = make(shownText(text), font);
    if (width >= 0) {
        pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
        // A unit more, so that a text in exactly its own width is not cut for a rounding error.
        pango_layout_set_width(layout.get(), static_cast<int>(std::ceil(std::min(width, 32767.0) * PANGO_SCALE)) + 1);
    }
    return layout;
}

LayoutPtr TextLayouts::paragraph(std::string_view text, const ui::Font& font, double width) {
    LayoutPtr layout = make(shown(text, LineBreaks::Keep), font);
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    pango_layout_set_width(layout.get(), static_cast<int>(width * PANGO_SCALE));
    return layout;
}

Size TextLayouts::lineSize(std::string_view text, const ui::Font& font) {
    const std::string shown = shownText(text);
    const char weight = font.weight == ui::FontWeight::Semibold ? 's' : 'r';
    const auto [known, isNew] = sizes_.try_emplace(std::to_string(font.size) + weight + shown);
    if (!isNew) return known->second;
    const Size size = sizeOf(make(shown, font).get());
    known->second = size;
    if (sizes_.size() > kMaxKnownSizes) sizes_.clear();
    return size;
}

}  // namespace morvel::x11
