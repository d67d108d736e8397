// Showing a file to the person in the file manager.
#pragma once

#include <string>

#include "Platform/Linux/Applications/ProgramLauncher.h"

namespace morvel::x11 {

/// Returns at once. Asks the running file manager to select the file; where none answers, its folder is opened with
/// the application for folders. `launcher` and `log` outlive the program's loop.
void revealFile(const std::string& path, ProgramLauncher& launcher, Log& log);

}  // namespace morvel::x11
