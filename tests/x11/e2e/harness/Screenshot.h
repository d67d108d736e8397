// What is on the screen: a copy of its pixels that can be probed, compared and written to a file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "harness/Connection.h"

namespace morvel::e2e {

struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;
    bool operator==(const Rgb&) const = default;
    /// The largest difference of a channel, 0…255.
    int distance(const Rgb& other) const;
};

inline std::ostream& operator<<(std::ostream& out, const Rgb& c) {
    return out << "rgb(" << c.red << "," << c.green << "," << c.blue << ")";
}

class Screenshot {
public:
    /// Empty pixels of the size, black.
    Screenshot(int width, int height);
    /// The whole root window. Throws std::runtime_error when the server does not give it.
    static Screenshot ofRoot(Connection& connection);

    int width() const { return width_; }
    int height() const { return height_; }
    /// Outside the picture: black.
    Rgb at(Spot spot) const;
    Rgb average(const Box& box) const;
    /// The smallest box around every pixel of `within` that differs from `other` by more than `tolerance`; empty when
    /// none does.
    Box differenceTo(const Screenshot& other, const Box& within, int tolerance = 2) const;
    /// The number of different colours in the box: 1 is a plain area.
    int colorsIn(const Box& box) const;

    void writePng(const std::filesystem::path& file) const;
    /// Rows of 0x00RRGGBB, without padding.
    const std::vector<uint32_t>& pixels() const { return pixels_; }

private:
    Box clipped(const Box& box) const;

    int width_;
    int height_;
    std::vector<uint32_t> pixels_;
};

}  // namespace morvel::e2e
