// The displays as AppKit and Core Graphics know them.
#pragma once

#include "Platform/Screens.h"

namespace morvel::mac {

class MacScreens : public Screens {
public:
    std::vector<Screen> screens() override;
    DisplayID mainDisplay() override;
    std::optional<std::string> uuidString(DisplayID display) override;
    double statusBarThickness() override;
    [[nodiscard]] Subscription observeChanges(std::function<void()> changed) override;
};

}  // namespace morvel::mac
