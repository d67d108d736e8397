// Attribute values and errors as the system passes them, and as the core knows them.
#pragma once

#include <optional>

#include "Platform/Accessibility.h"
#include "Platform/Mac/apple/Accessibility.h"

namespace morvel::mac {

/// Nothing for null and for types that the core does not know; so too for points and sizes that are not finite. An
/// array keeps its elements and leaves out what is none.
std::optional<AXValue> axValueFrom(CFTypeRef value);

/// Empty only when the value has no form there (text that is not UTF-8).
CFRef<CFTypeRef> cfValueFrom(const AXValue& value);

morvel::AXError axErrorFrom(AXError error);

}  // namespace morvel::mac
