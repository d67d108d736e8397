// The block ABI's runtime half, as the system's library does it.
#include "Blocks.h"

#include <cstdlib>
#include <cstring>

#include "Platform/Mac/objc/Block.h"
#include "Runtime.h"

namespace morvel::mac::objc {
extern "C" {
void* _NSConcreteStackBlock[32];
void* _Block_copy(const void* block) {
    return checked::runtime().blocks().copy(block);
}
void _Block_release(const void* block) {
    checked::runtime().blocks().release(block);
}
}
}  // namespace morvel::mac::objc

namespace morvel::mac::checked {

void* Blocks::copy(const void* block) {
    if (!block) return nullptr;
    if (const auto known = references_.find(block); known != references_.end()) {
        ++known->second;
        return const_cast<void*>(block);
    }
    const auto* const original = static_cast<const objc::BlockHeader*>(block);
    if (original->isa != objc::_NSConcreteStackBlock) {
        faults_.add(FaultKind::BadCall, "copy of something that is no living block");
        return nullptr;
    }
    auto* const copied = static_cast<objc::BlockHeader*>(std::malloc(original->descriptor->size));
    std::memcpy(static_cast<void*>(copied), block, original->descriptor->size);
    copied->isa = nullptr;  // no longer on the stack
    references_[copied] = 1;
    if (original->flags & objc::kBlockHasCopyDispose) original->descriptor->copy(copied, block);
    return copied;
}

void Blocks::release(const void* block) {
    const auto known = references_.find(block);
    if (known == references_.end()) {
        faults_.add(FaultKind::OverRelease, "a block was released more often than retained");
        return;
    }
    if (--known->second > 0) return;
    references_.erase(known);
    const auto* const header = static_cast<const objc::BlockHeader*>(block);
    if (header->flags & objc::kBlockHasCopyDispose) header->descriptor->dispose(block);
    std::free(const_cast<void*>(block));
}

void Blocks::finish() {
    for (const auto& [block, count] : std::exchange(references_, {})) {
        faults_.add(FaultKind::Leak, "a block is still referenced");
        std::free(const_cast<void*>(block));
    }
}

}  // namespace morvel::mac::checked
