// A pool that releases, at the end of its scope, what the system handed out inside it. Every entry into our code from a
// queue or thread of its own needs one; the main loop's callbacks already run inside the system's.
#pragma once

#include "Platform/Mac/objc/Runtime.h"

namespace morvel::mac::objc {

class AutoreleasePool {
public:
    AutoreleasePool() : pool_(objc_autoreleasePoolPush()) {}
    AutoreleasePool(const AutoreleasePool&) = delete;
    AutoreleasePool& operator=(const AutoreleasePool&) = delete;
    ~AutoreleasePool() { objc_autoreleasePoolPop(pool_); }

private:
    void* pool_;
};

}  // namespace morvel::mac::objc
