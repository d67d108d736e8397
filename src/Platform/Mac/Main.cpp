// The entry point on macOS: hands the host to the application and runs it.
#include "App/AppDelegate.h"
#include "Platform/Mac/Applications/SingleInstance.h"
#include "Platform/Mac/MacHost.h"
#include "Platform/Mac/objc/AutoreleasePool.h"

int main() {
    const morvel::mac::objc::AutoreleasePool pool;
    morvel::mac::MacHost host;
    if (morvel::mac::handOverToRunningInstance()) return 0;
    morvel::AppDelegate application(host.platform());
    host.run({.launched = [&] { application.applicationDidFinishLaunching(); },
              .quitting = [&] { application.applicationWillTerminate(); },
              .reopened = [&] { application.openSettings(); }});
    return 0;
}
