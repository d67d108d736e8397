// The icon of a pinned item: an application's from the icon cache, a folder's as its file has it.
#pragma once

#include "Bar/Buttons/AppIconView.h"
#include "Bar/Buttons/ButtonServices.h"
#include "Pinned/PinnedItem.h"

namespace morvel {

class PinnedIconView : public AppIconView {
public:
    /// `process` is one that runs the application, for an icon that only a process shows.
    PinnedIconView(ButtonServices services, const PinnedItem& item, ProcessID process)
        : AppIconView(services.iconCache) {
        if (item.kind == PinnedItem::Kind::App) {
            show(item.identifier, process);
        } else {
            setImage(services.icons.fileIcon(item.identifier));
        }
    }
};

}  // namespace morvel
