// The lines that were written to the system log.
#pragma once

#include <string>
#include <vector>

namespace morvel::mac::checked {

/// As they would be shown; cleared at the beginning of each test.
std::vector<std::string>& logLines();

}  // namespace morvel::mac::checked
