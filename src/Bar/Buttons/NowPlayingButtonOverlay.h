// The small badge on the icon of the application that plays music.
#pragma once

#include "Platform/Icons.h"
#include "UI/ImageView.h"

namespace morvel {

/// Hidden at first. It never takes presses; they go to the button beneath.
class NowPlayingButtonOverlay : public ui::View {
public:
    static constexpr double kSize = 12;  ///< in points, both ways

    /// `icons` outlives the overlay.
    explicit NowPlayingButtonOverlay(Icons& icons);

    void setVisible(bool visible);

protected:
    void layout() override;

private:
    Icons& icons_;
    ui::ImageView glyph_{ui::ImageScaling::None};
};

}  // namespace morvel
