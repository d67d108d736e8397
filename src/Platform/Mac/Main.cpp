// The entry point on macOS.
#include "Platform/Mac/MacHost.h"
#include "Platform/Mac/objc/AutoreleasePool.h"

int main() {
    const morvel::mac::objc::AutoreleasePool pool;
    morvel::mac::MacHost host;
    host.run();
    return 0;
}
