// The thread's event loop below the dispatch queues.
#pragma once

#include "Platform/Mac/apple/Object.h"

namespace morvel::mac {

class NSRunLoop : public NSObject {
public:
    static constexpr const char* kClass = "NSRunLoop";
    using NSObject::NSObject;

    static NSRunLoop main() { return send<NSRunLoop>(ClassOf<NSRunLoop>{}, "mainRunLoop"_sel); }
    /// In the loop's next pass, outside the main queue.
    void perform(Block<void()> work) const { send(*this, "performBlock:"_sel, work); }
};

}  // namespace morvel::mac
