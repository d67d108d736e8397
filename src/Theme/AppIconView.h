// The icon of an application or a file, fetched from the icon cache when it is another one than before.
#pragma once

#include <optional>
#include <string>

#include "Theme/IconCache.h"
#include "UI/ImageView.h"

namespace morvel {

class AppIconView : public ui::ImageView {
public:
    /// The cache outlives the view.
    explicit AppIconView(IconCache& cache) : cache_(cache) {}

    /// Until the icon has arrived the former one stays, so that nothing flickers. Whether it had to be asked for.
    bool show(const std::optional<std::string>& bundleID, ProcessID pid);
    /// The icon of what lies at the absolute path; until it has arrived there is none.
    void showFile(const std::string& path);

private:
    struct Key {
        std::optional<std::string> bundleID;
        ProcessID pid;
    };

    IconCache& cache_;
    std::optional<Key> loadedIconKey_;
    std::string path_;      // of the file whose icon is shown
    Subscription request_;  // last member, so that nothing is delivered to a half-dead view
};

}  // namespace morvel
