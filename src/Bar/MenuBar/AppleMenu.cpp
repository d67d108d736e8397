#include "Bar/MenuBar/AppleMenu.h"

#include "Platform/AXNames.h"
#include "WindowSource/AXReader.h"

namespace morvel {

void openAppleMenu(Accessibility& accessibility, ProcessID owner) {
    AXReader reader(accessibility);
    const auto menuBar = reader.readElement(accessibility.applicationElement(owner), ax::kMenuBar);
    if (!menuBar) return;
    const auto titles = reader.readElements(*menuBar, ax::kChildren);
    if (!titles || titles->empty()) return;
    // The application answers only once its menu has closed again.
    accessibility.startAction(titles->front(), ax::kPress);
}

}  // namespace morvel
