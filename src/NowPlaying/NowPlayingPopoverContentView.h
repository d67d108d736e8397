// What is playing, with its picture and three buttons to control it.
#pragma once

#include <string>

#include "NowPlaying/NowPlayingStore.h"
#include "Theme/ButtonServices.h"
#include "UI/ImageButton.h"
#include "UI/Label.h"

namespace morvel {

class NowPlayingPopoverContentView : public ui::View {
public:
    static constexpr Size kSize{220, 84};  ///< in points

    /// The services and the store outlive the view.
    NowPlayingPopoverContentView(ButtonServices services, NowPlayingStore& store, const NowPlayingState& state);

    void update(const NowPlayingState& state);

    const ui::ImageView& artworkView() const { return artworkView_; }
    const ui::Label& titleLabel() const { return titleLabel_; }
    const ui::Label& artistLabel() const { return artistLabel_; }
    ui::ImageButton& prevButton() { return prevButton_; }
    ui::ImageButton& toggleButton() { return toggleButton_; }
    ui::ImageButton& nextButton() { return nextButton_; }

protected:
    void layout() override;

private:
    void showArtwork(const ui::ImageRef& picture);

    /// A symbol in the middle of a larger area that takes presses.
    class TransportButton : public ui::ImageButton {
    public:
        void show(Icons& icons, const std::string& symbol, const std::string& meaning);

    protected:
        void layout() override;
    };

    ButtonServices services_;
    ui::ImageView artworkView_{ui::ImageScaling::None};
    ui::Label titleLabel_;
    ui::Label artistLabel_;
    TransportButton prevButton_;
    TransportButton toggleButton_;
    TransportButton nextButton_;
    // Replaced by each update, so that the icon of an earlier state never comes after that of a later one. Last, so
    // that nothing is delivered to a half-dead view.
    Subscription iconRequest_;
};

}  // namespace morvel
