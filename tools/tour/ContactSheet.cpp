#include "ContactSheet.h"

#include <pango/pangocairo.h>

#include <memory>
#include <stdexcept>

namespace morvel::tour {
namespace {

constexpr int kColumns = 3;
constexpr int kPictureWidth = 520;
constexpr int kCaptionHeight = 44;
constexpr int kGap = 16;

template <auto destroy>
struct Destroy {
    void operator()(auto* object) const { destroy(object); }
};
using Surface = std::unique_ptr<cairo_surface_t, Destroy<cairo_surface_destroy>>;
using Context = std::unique_ptr<cairo_t, Destroy<cairo_destroy>>;
using Layout = std::unique_ptr<PangoLayout, Destroy<g_object_unref>>;

int pictureHeight(const e2e::Screenshot& picture) {
    return kPictureWidth * picture.height() / picture.width();
}

void drawPicture(cairo_t* context, const e2e::Screenshot& picture, int x, int y) {
    std::vector<uint32_t> pixels = picture.pixels();  // Cairo wants to be able to write to them
    const Surface source(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data()),
                                                             CAIRO_FORMAT_RGB24, picture.width(), picture.height(),
                                                             picture.width() * 4));
    cairo_save(context);
    cairo_translate(context, x, y);
    const double scale = static_cast<double>(kPictureWidth) / picture.width();
    cairo_scale(context, scale, scale);
    cairo_set_source_surface(context, source.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_BEST);
    cairo_paint(context);
    cairo_restore(context);
}

void drawCaption(cairo_t* context, const std::string& caption, bool observed, int x, int y) {
    const Layout layout(pango_cairo_create_layout(context));
    pango_layout_set_width(layout.get(), kPictureWidth * PANGO_SCALE);
    pango_layout_set_height(layout.get(), -2);  // two lines at most
    pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
    pango_layout_set_text(layout.get(), caption.c_str(), -1);
    PangoFontDescription* font = pango_font_description_from_string("Sans 10");
    pango_layout_set_font_description(layout.get(), font);
    pango_font_description_free(font);
    if (observed)
        cairo_set_source_rgb(context, 0.15, 0.15, 0.18);
    else
        cairo_set_source_rgb(context, 0.8, 0.1, 0.1);
    cairo_move_to(context, x, y);
    pango_cairo_show_layout(context, layout.get());
}

}  // namespace

void ContactSheet::add(const e2e::Screenshot& picture, const std::string& caption, bool observed) {
    entries_.push_back({picture, caption, observed});
}

void ContactSheet::writePng(const std::filesystem::path& file) const {
    if (entries_.empty()) return;
    const int rowHeight = pictureHeight(entries_[0].picture) + kCaptionHeight + kGap;
    const int rows = (static_cast<int>(entries_.size()) + kColumns - 1) / kColumns;
    const Surface sheet(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kColumns * (kPictureWidth + kGap) + kGap,
                                                   rows * rowHeight + kGap));
    const Context context(cairo_create(sheet.get()));
    cairo_set_source_rgb(context.get(), 0.96, 0.96, 0.97);
    cairo_paint(context.get());
    for (int i = 0; i < static_cast<int>(entries_.size()); ++i) {
        const auto& entry = entries_[static_cast<size_t>(i)];
        const int x = kGap + i % kColumns * (kPictureWidth + kGap);
        const int y = kGap + i / kColumns * rowHeight;
        drawPicture(context.get(), entry.picture, x, y);
        drawCaption(context.get(), entry.caption, entry.observed, x, y + pictureHeight(entry.picture) + 4);
    }
    if (cairo_surface_write_to_png(sheet.get(), file.c_str()) != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error("cannot write " + file.string());
}

}  // namespace morvel::tour
