// The record of the tour: per step a numbered picture, what it shows, and whether that was really observed.
#pragma once

#include <functional>

#include "ContactSheet.h"
#include "harness/VirtualDesktop.h"

namespace morvel::tour {

class Album {
public:
    /// Pictures go into `folder`, which is emptied first.
    Album(e2e::VirtualDesktop& world, std::filesystem::path folder);

    /// Waits until `seen` holds; if it never does, the step that is closed next counts as not observed.
    void expect(const std::string& what, const std::function<bool()>& seen);
    /// Waits until nothing moves any more, takes the picture and prints the line of this step.
    void close(const std::string& name, const std::string& caption);
    /// Writes the contact sheet. Whether every step was observed.
    bool finish();

private:
    void waitForStillness();

    e2e::VirtualDesktop& world_;  // outlives us
    std::filesystem::path folder_;
    ContactSheet sheet_;
    std::vector<std::string> missing_;  // of the step at hand
    int steps_ = 0;
    int failed_ = 0;
};

}  // namespace morvel::tour
