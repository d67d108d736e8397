#include "NowPlaying/NowPlayingPopoverContentView.h"

#include <algorithm>

namespace morvel {

namespace {

constexpr double kInset = 10;
constexpr double kArtworkSize = 32;
constexpr double kArtworkRadius = 4;
constexpr double kArtworkToTexts = 8;
constexpr double kTitleToArtist = 2;
constexpr double kTitleFontSize = 12;
constexpr double kArtistFontSize = 11;
constexpr double kButtonHeight = 24;
constexpr double kSkipWidth = 28;
constexpr double kToggleWidth = 36;
/// From the sides to the two outer buttons.
constexpr double kSkipInset = 30;
constexpr double kSymbolSize = 14;
/// An icon that comes without its identifier would be this process's; players always have one.
constexpr ProcessID kNoProcess{0};

}  // namespace

void NowPlayingPopoverContentView::TransportButton::show(Icons& icons, const std::string& symbol,
                                                         const std::string& meaning) {
    imageView().setImage(icons.symbol(symbol, kSymbolSize));
    setAccessibilityLabel(meaning);
    setNeedsLayout();
}

void NowPlayingPopoverContentView::TransportButton::layout() {
    const Size size = imageView().image() ? imageView().image()->size() : Size{};
    imageView().setFrame(
        {(frame().width - size.width) / 2, (frame().height - size.height) / 2, size.width, size.height});
}

NowPlayingPopoverContentView::NowPlayingPopoverContentView(ButtonServices services, NowPlayingStore& store,
                                                           const NowPlayingState& state)
    : services_(services),
      titleLabel_(services.toolkit, {.size = kTitleFontSize, .weight = ui::FontWeight::Semibold}),
      artistLabel_(services.toolkit, {.size = kArtistFontSize}) {
    artworkView_.setCornerRadius(kArtworkRadius);
    artworkView_.setClipsToBounds(true);
    artistLabel_.setColor(ui::kSecondaryLabelColor);
    prevButton_.show(services_.icons, "backward.fill", "Previous");
    nextButton_.show(services_.icons, "forward.fill", "Next");
    prevButton_.onClick = [&store] { store.send(TransportCommand::Previous); };
    toggleButton_.onClick = [&store] { store.send(TransportCommand::TogglePlayPause); };
    nextButton_.onClick = [&store] { store.send(TransportCommand::Next); };
    for (ui::View* part : std::initializer_list<ui::View*>{&artworkView_, &titleLabel_, &artistLabel_, &prevButton_,
                                                           &toggleButton_, &nextButton_})
        addSubview(*part);
    update(state);
}

void NowPlayingPopoverContentView::update(const NowPlayingState& state) {
    titleLabel_.setText(state.title.empty() ? state.bundleID : state.title);
    artistLabel_.setText(state.artist);
    iconRequest_.reset();
    if (state.artwork) {
        showArtwork(state.artwork);
    } else {
        iconRequest_ = services_.iconCache.icon(state.bundleID, kNoProcess,
                                                [this](const ui::ImageRef& icon) { showArtwork(icon); });
    }
    toggleButton_.show(services_.icons, state.isPlaying ? "pause.fill" : "play.fill",
                       state.isPlaying ? "Pause" : "Play");
}

// The view shows pictures as large as they are; so they come to it as large as it is, with their proportions.
void NowPlayingPopoverContentView::showArtwork(const ui::ImageRef& picture) {
    const Size size = picture->size();
    const double longest = std::max({size.width, size.height, 1.0});
    const ui::ImageRef fitting =
        services_.icons.baked(picture, {size.width * kArtworkSize / longest, size.height * kArtworkSize / longest});
    artworkView_.setImage(fitting ? fitting : picture);
}

void NowPlayingPopoverContentView::layout() {
    const double width = frame().width;
    artworkView_.setFrame({kInset, kInset, kArtworkSize, kArtworkSize});
    const double textX = artworkView_.frame().maxX() + kArtworkToTexts;
    const double textWidth = std::max(0.0, width - kInset - textX);
    titleLabel_.setFrame({textX, kInset, textWidth, titleLabel_.intrinsicSize().height});
    artistLabel_.setFrame(
        {textX, titleLabel_.frame().maxY() + kTitleToArtist, textWidth, artistLabel_.intrinsicSize().height});
    const double buttonY = frame().height - kInset - kButtonHeight;
    prevButton_.setFrame({kSkipInset, buttonY, kSkipWidth, kButtonHeight});
    toggleButton_.setFrame({(width - kToggleWidth) / 2, buttonY, kToggleWidth, kButtonHeight});
    nextButton_.setFrame({width - kSkipInset - kSkipWidth, buttonY, kSkipWidth, kButtonHeight});
}

}  // namespace morvel
