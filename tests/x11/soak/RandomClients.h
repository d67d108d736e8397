// Programs, windows, monitors and a hand on the mouse that do anything at all, in any order.
#pragma once

#include <list>

#include "App/Chance.h"
#include "harness/Bar.h"
#include "harness/VirtualDesktop.h"

namespace morvel::e2e {

class RandomClients {
public:
    /// All outlive it.
    RandomClients(VirtualDesktop& world, Bar& bar, Chance& chance)
        : world_(world), desktop_(world.desktop), bar_(bar), chance_(chance) {}

    void step();
    /// Nothing is frozen, the window manager runs, there is one monitor, the first workspace is shown, and no window
    /// has a title that cannot be compared.
    void calmDown();
    /// The titles that the bar has to show then, sorted: of the managed windows of this workspace that want to be
    /// listed. Asked of the server, not of what was done.
    std::vector<std::string> expectedTitles();
    /// All managed windows with what counts for whether and where they are listed.
    std::string description();
    /// Ends all programs and destroys all windows.
    void closeAll();

private:
    // --- Windows of a program of our own ---
    void open();
    void destroy();
    void unmapOrMap();
    void retitle();
    void lieAboutProcess();
    // --- Any managed window, as its person or its manager treats it ---
    void activate();
    void minimize();
    void maximize();
    void place();
    void sendToWorkspace();
    // --- Programs ---
    void start();
    void end();
    void freezeOrThaw();
    // --- The desktop ---
    void showWorkspace();
    void changeMonitors();
    void restartManager();
    // --- The hand ---
    void clickBar();
    void useMenu();
    void dragButton();
    void hover();
    void useLauncher();
    void wait();

    std::string newTitle();
    Box anyBox();
    /// The managed windows but for the bar's own.
    std::vector<xcb_window_t> managed();
    std::optional<xcb_window_t> anyManaged();
    /// The middle of any button of a window, on any panel.
    std::optional<Spot> anyButton();

    VirtualDesktop& world_;
    Desktop& desktop_;
    Bar& bar_;
    Chance& chance_;
    Client client_{world_.server, world_.desktop};
    std::vector<xcb_window_t> windows_;  // the client's
    std::list<Program> programs_;
    int lastTitle_ = 0;
};

}  // namespace morvel::e2e
