#include "Platform/Mac/UI/MacStatusItem.h"

#include "Platform/Mac/UI/MacMenu.h"
#include "Platform/Mac/apple/AppKit/NSApplication.h"

namespace morvel::mac {

namespace {

constexpr CGSize kIconSize{18, 18};

}  // namespace

MacStatusItem::MacStatusItem(const ui::Menu& menu)
    : item_(NSStatusBar::system().statusItem(NSVariableStatusItemLength)) {
    // A copy: the application's own icon is shown in other places, at other sizes.
    const NSImage icon = NSApplication::shared().applicationIconImage().copy();
    icon.setSize(kIconSize);
    const NSButton button = item_.button();
    button.setImage(icon);
    button.setImagePosition(NSImageOnly);
    setMenu(menu);
}

MacStatusItem::~MacStatusItem() {
    NSStatusBar::system().remove(item_);
}

void MacStatusItem::setMenu(ui::Menu menu) {
    item_.setMenu(makeMenu(menu));
}

}  // namespace morvel::mac
