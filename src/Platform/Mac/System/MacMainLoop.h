// The main loop of the macOS host: the dispatch main queue, which the application object's run loop serves.
#pragma once

#include <memory>

#include "Platform/MainLoop.h"

namespace morvel::mac {

/// Made and destroyed on the main thread. Work that is posted and not yet run when it is destroyed is dropped. Nothing
/// wakes the process while no timer is armed and nothing is posted.
class MacMainLoop : public MainLoop {
public:
    MacMainLoop();
    ~MacMainLoop() override;
    MacMainLoop(const MacMainLoop&) = delete;
    MacMainLoop& operator=(const MacMainLoop&) = delete;

    /// On the clock of the timers, which stands still while the machine sleeps.
    Instant now() const override;
    void post(std::function<void()> work) override;
    [[nodiscard]] Timer after(Duration delay, std::function<void()> fire) override;
    [[nodiscard]] Timer every(Duration first, Duration period, std::function<void()> fire) override;

private:
    class Posted;

    std::shared_ptr<Posted> posted_;
};

}  // namespace morvel::mac
