// Objects that live as long as another object: associated with it under a key of ours.
#pragma once

#include "Platform/Mac/objc/Id.h"
#include "Platform/Mac/objc/Runtime.h"

namespace morvel::mac::objc {

/// A key; its address is what counts, so define one `static constexpr AssociationKey` per purpose.
struct AssociationKey {
    char unused = 0;
};

/// `owner` keeps `value` until it dies or the key is set anew. An empty value removes.
inline void setAssociated(const Id& owner, const AssociationKey& key, const Id& value) {
    constexpr std::uintptr_t kRetainNonatomic = 1;
    if (owner) objc_setAssociatedObject(owner.raw(), &key, value.raw(), kRetainNonatomic);
}

template <ObjectWrapper T = Id>
T associated(const Id& owner, const AssociationKey& key) {
    return owner ? T(objc_getAssociatedObject(owner.raw(), &key)) : T();
}

}  // namespace morvel::mac::objc
