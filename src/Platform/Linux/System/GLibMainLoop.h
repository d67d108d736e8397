// The main loop of the Linux host: GLib's default main context, so that GIO, D-Bus and the dialogs' toolkit share it.
#pragma once

#include <glib.h>

#include <mutex>
#include <thread>
#include <vector>

#include "Platform/MainLoop.h"

namespace morvel::x11 {

/// Made, run and destroyed on the main thread. Sources of equal priority are served in the order of their making in
/// each turn, so whoever must be served before posted work (the X events) asks for a source before that work runs:
/// posted work runs one turn after its posting, when all that had arrived by then has been handled.
class GLibMainLoop : public MainLoop {
public:
    GLibMainLoop();
    ~GLibMainLoop() override;
    GLibMainLoop(const GLibMainLoop&) = delete;
    GLibMainLoop& operator=(const GLibMainLoop&) = delete;

    Instant now() const override;
    void post(std::function<void()> work) override;
    [[nodiscard]] Timer after(Duration delay, std::function<void()> fire) override;
    [[nodiscard]] Timer every(Duration first, Duration period, std::function<void()> fire) override;

    /// Calls `readable` in each turn in which the descriptor can be read or has failed, until the token dies. The
    /// caller keeps the descriptor and closes it after the token.
    [[nodiscard]] Subscription watchReadable(int fd, std::function<void()> readable);

    /// Calls `raised` in a turn of the loop after the process received the signal (one that GLib can watch).
    [[nodiscard]] Subscription watchSignal(int signal, std::function<void()> raised);

    /// Turns until `quit`; the answer is the exit code it was given.
    int run();
    /// Ends `run` after the current turn. The first call's code counts.
    void quit(int exitCode = 0);
    /// One turn; waits for something to happen if asked to. For tests and start-up.
    bool turn(bool mayBlock);

private:
    struct PostedSource;

    bool hasPosted();
    void runPosted();
    Timer arm(Duration first, Duration period, std::function<void()> fire);

    GMainLoop* loop_;
    GSource* postedSource_ = nullptr;
    const std::thread::id mainThread_;
    std::mutex mutex_;  // guards posted_
    std::vector<std::function<void()>> posted_;
    int exitCode_ = 0;
    bool hasQuit_ = false;
};

}  // namespace morvel::x11
