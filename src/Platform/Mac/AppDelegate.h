// The application's delegate: turns what AppKit tells it into two callbacks.
#pragma once

#include <functional>

#include "Platform/Mac/apple/Foundation/NSNotificationCenter.h"

namespace morvel::mac {

class AppDelegate {
public:
    static constexpr const char* kClassName = "MorvelAppDelegate";

    struct Callbacks {
        std::function<void()> launched;
        std::function<void()> quitting;
        std::function<void()> reopened = {};  ///< the person opened the application that runs already
    };

    /// The delegate object; the application does not retain it, so the caller keeps it as long as the application runs.
    static NSObject make(Callbacks callbacks);

    explicit AppDelegate(Callbacks callbacks) : callbacks_(std::move(callbacks)) {}

    void applicationDidFinishLaunching(NSNotification notification);
    void applicationWillTerminate(NSNotification notification);
    bool applicationShouldHandleReopen(NSObject application, bool hasVisibleWindows);

private:
    Callbacks callbacks_;
};

}  // namespace morvel::mac
