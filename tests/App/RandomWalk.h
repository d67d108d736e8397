// The whole program on a desktop where everything happens in any order, faults included; now and then the desktop comes
// to rest, and then the bars must show exactly what is there.
#pragma once

#include "App/BarUser.h"
#include "App/DesktopCheck.h"

namespace morvel {

class RandomWalk {
public:
    explicit RandomWalk(unsigned seed) : chance_(seed) {
        desktop_.platform().terminate = [] {};
        for (int i = 0; i < 3; ++i) life_.launch();
        for (int i = 0; i < 4; ++i) life_.installOrRemove();
        desktop_.startMorvel();
        watchPins();
        life_.afterRun = [this] { watchPins(); };
    }

    BarDesktop& desktop() { return desktop_; }

    void step();
    /// Everything heals and settles, and is compared.
    void rest();
    /// The program ends without any of what belongs to a proper end, and starts again on the same desktop.
    void crash();
    /// What the program holds of the heap, in bytes: after the time that it has run, and after a new start on the
    /// same desktop.
    struct Held {
        size_t old = 0, fresh = 0;
    };
    /// The program ends properly and starts again on the same desktop. Only while the desktop rests.
    Held relaunch();
    void end();

private:
    void watchPins();
    void pinsAreBalanced();

    Chance chance_;
    BarDesktop desktop_{sim::twoDisplays()};
    DesktopLife life_{desktop_, chance_};
    BarUser user_{desktop_, life_, chance_};
};

}  // namespace morvel
