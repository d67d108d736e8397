// How the fakes of the C functions see Core Foundation's references: as the runtime's objects.
#pragma once

#include <cstdint>
#include <string>

#include "Objects.h"
#include "Platform/Mac/apple/CF.h"

namespace morvel::mac::checked {

/// Which interface element of which process an AXUIElement object stands for; several objects may stand for one.
struct ElementIdentity {
    std::int32_t pid = 0;
    std::uint64_t serial = 0;
    friend bool operator==(const ElementIdentity&, const ElementIdentity&) = default;
};

struct RunLoopSource {
    bool isScheduled = false;  // the run loop keeps it then
};

RawObject objectOf(CFTypeRef reference);
inline CFTypeRef referenceTo(RawObject object) {
    return object;
}
/// A reference that the caller of a Create or Copy function owns.
inline CFTypeRef handOver(Id object) {
    return object.giveUp();
}

}  // namespace morvel::mac::checked
