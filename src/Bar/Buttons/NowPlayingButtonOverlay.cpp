#include "Bar/Buttons/NowPlayingButtonOverlay.h"

namespace morvel {

namespace {

constexpr double kGlyphSize = 9;
constexpr double kGlyphPointSize = 8;
constexpr double kBorderWidth = 0.5;
constexpr double kBorderAlpha = 0.85;

}  // namespace

NowPlayingButtonOverlay::NowPlayingButtonOverlay(Icons& icons) : icons_(icons) {
    setHidden(true);
    setCornerRadius(kSize / 2);
    setBackground(ui::kControlAccentColor);
    setBorder(kBorderWidth, ui::kWhiteColor.withAlpha(kBorderAlpha));
    glyph_.setTint(ui::kWhiteColor);
    glyph_.setAccessibilityLabel("Now Playing");
    addSubview(glyph_);
}

void NowPlayingButtonOverlay::setVisible(bool visible) {
    // Fetched when first needed: most buttons never play anything.
    if (visible && !glyph_.image()) glyph_.setImage(icons_.symbol("waveform", kGlyphPointSize));
    setHidden(!visible);
}

void NowPlayingButtonOverlay::layout() {
    glyph_.setFrame({(frame().width - kGlyphSize) / 2, (frame().height - kGlyphSize) / 2, kGlyphSize, kGlyphSize});
}

}  // namespace morvel
