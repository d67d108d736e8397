// All messages that the wrappers' code contains, sent or not: noted while the program starts.
#pragma once

#include <vector>

#include "Platform/Mac/objc/Runtime.h"

namespace morvel::mac::checked {

std::vector<objc::WrittenMessage>& writtenMessages();

}  // namespace morvel::mac::checked
