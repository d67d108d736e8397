// A small titled window with one text and one button, as plain data; a host shows it with native controls.
#pragma once

#include <functional>
#include <string>

#include "Util/Geometry.h"

namespace morvel::ui {

struct Prompt {
    std::string title;
    Size contentSize;
    std::string text;  ///< wraps in its frame and grows with the window's width
    Rect<ViewSpace> textFrame;
    std::string buttonTitle;
    Rect<ViewSpace> buttonFrame;    ///< keeps its distance from the right edge
    std::function<void()> pressed;  ///< the button, which Return presses too
};

/// The window; destroying it closes it. The person may close it before; the peer then stays without effect.
class PromptPeer {
public:
    virtual ~PromptPeer() = default;
};

}  // namespace morvel::ui
