// The system font at a size and weight.
#pragma once

namespace morvel::ui {

enum class FontWeight { Regular, Semibold };

struct Font {
    double size = 12;  ///< in points
    FontWeight weight = FontWeight::Regular;
    bool operator==(const Font&) const = default;
};

}  // namespace morvel::ui
