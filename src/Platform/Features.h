// What of the surroundings a system has, where systems differ.
#pragma once

namespace morvel {

/// A setting that is about something that is absent is not offered.
struct Features {
    bool hasMenuBar = false;      ///< a bar along the top of the screen with the menus and status items of applications
    bool hasDock = false;         ///< a dock of the system's, which can be kept out of the way
    bool switchesSpaces = false;  ///< the system rearranges and switches Spaces by itself, which can be turned off
};

}  // namespace morvel
