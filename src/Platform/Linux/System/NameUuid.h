// Identifiers made from names, where something asks for an identifier and there is only a name.
#pragma once

#include <string>

namespace morvel::x11 {

/// A UUID's text (upper case) that is always the same for the same name, on every machine. Not for secrets.
std::string nameUuid(const std::string& name);

}  // namespace morvel::x11
