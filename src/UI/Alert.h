// A question that is put to the person in front of everything else, as plain data.
#pragma once

#include <string>
#include <vector>

namespace morvel::ui {

struct Alert {
    std::string message;
    std::string informativeText;       ///< smaller, below the message; may have several lines
    std::vector<std::string> buttons;  ///< the answers; Return gives the first
};

}  // namespace morvel::ui
