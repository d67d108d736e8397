// Equality and hash are the system's own.
#include "Platform/Mac/Windows/MacElement.h"

namespace morvel::mac {

MacElement::MacElement(CFRef<AXUIElementRef> reference) : reference_(std::move(reference)) {
    if (reference_) AXUIElementGetPid(reference_.get(), &pid_.value);
}

bool MacElement::equals(const AXElementImpl& other) const {
    const AXUIElementRef mine = reference();
    const AXUIElementRef theirs = static_cast<const MacElement&>(other).reference();
    return mine == theirs || (mine && theirs && CFEqual(mine, theirs));
}

size_t MacElement::hash() const {
    return reference_ ? CFHash(reference_.get()) : 0;
}

}  // namespace morvel::mac
