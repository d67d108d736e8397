// This machine's name, by which a process or a file of ours is told from another machine's.
#pragma once

#include <unistd.h>

#include <array>
#include <string>

namespace morvel::x11 {

/// Empty where it cannot be told.
inline std::string hostName() {
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

}  // namespace morvel::x11
