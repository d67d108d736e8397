// The variables a child process is started with.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace morvel::e2e {

using Environment = std::map<std::string, std::string>;

}  // namespace morvel::e2e
