// The runtime of blocks: copies to the heap, counts, and disposal. Reports blocks released too often or never.
#pragma once

#include <map>

#include "Faults.h"

namespace morvel::mac::checked {

class Blocks {
public:
    explicit Blocks(Faults& faults) : faults_(faults) {}

    void* copy(const void* block);
    void release(const void* block);
    /// Ends a test: reports what is left, without running its disposal.
    void finish();

private:
    Faults& faults_;
    std::map<const void*, long> references_;  // of heap blocks
};

}  // namespace morvel::mac::checked
