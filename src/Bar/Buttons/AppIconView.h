// An application's icon, fetched from the icon cache when it is another one than before.
#pragma once

#include <optional>
#include <string>

#include "Theme/IconCache.h"
#include "UI/ImageView.h"

namespace morvel {

/// Until a new icon has arrived the former one stays, so that nothing flickers.
class AppIconView : public ui::ImageView {
public:
    /// The cache outlives the view.
    explicit AppIconView(IconCache& cache) : cache_(cache) {}

    /// Returns whether the icon had to be asked for.
    bool show(const std::optional<std::string>& bundleID, ProcessID pid);

private:
    struct Key {
        std::optional<std::string> bundleID;
        ProcessID pid;
    };

    IconCache& cache_;
    std::optional<Key> loadedIconKey_;
    Subscription request_;  // last member, so that nothing is delivered to a half-dead view
};

}  // namespace morvel
