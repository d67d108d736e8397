// Libraries of the program's own that are brought into the process when they are first needed.
#pragma once

#include "Platform/Log.h"

namespace morvel::x11 {

/// Loads the module with this file name from the folder of the executable or, failing that, from where the program's
/// libraries are installed, and looks up its entry. Null, with a line in the log, when there is none. A module never
/// leaves the process again: what it registers with GLib cannot be taken back.
void* loadModule(const char* fileName, const char* entry, Log& log);

}  // namespace morvel::x11
