// The program's icon in the menu bar.
#pragma once

#include "Platform/Mac/apple/AppKit/NSStatusItem.h"
#include "UI/StatusItem.h"

namespace morvel::mac {

class MacStatusItem : public ui::StatusItemPeer {
public:
    explicit MacStatusItem(const ui::Menu& menu);
    ~MacStatusItem() override;
    MacStatusItem(const MacStatusItem&) = delete;
    MacStatusItem& operator=(const MacStatusItem&) = delete;

    void setMenu(ui::Menu menu) override;

private:
    NSStatusItem item_;
};

}  // namespace morvel::mac
