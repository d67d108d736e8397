#include "RandomClients.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace morvel::e2e {
namespace {

// As many buttons as fit into the bar beside each other, so that all of them can be read.
constexpr size_t kMostWindows = 10, kMostPrograms = 3;
constexpr const char* kTitleStart = "Window ";

constexpr const char* kListedTypes[] = {"_NET_WM_WINDOW_TYPE_NORMAL", "_NET_WM_WINDOW_TYPE_DIALOG",
                                        "_NET_WM_WINDOW_TYPE_UTILITY"};

}  // namespace

void RandomClients::step() {
    using Self = RandomClients;
    static constexpr std::pair<int, void (Self::*)()> kSteps[] = {
        {12, &Self::open},           {9, &Self::destroy},
        {4, &Self::unmapOrMap},      {12, &Self::retitle},
        {2, &Self::lieAboutProcess}, {6, &Self::activate},
        {5, &Self::minimize},        {3, &Self::maximize},
        {8, &Self::place},           {3, &Self::sendToWorkspace},
        {3, &Self::start},           {2, &Self::end},
        {2, &Self::freezeOrThaw},    {3, &Self::showWorkspace},
        {2, &Self::changeMonitors},  {1, &Self::restartManager},
        {8, &Self::clickBar},        {4, &Self::useMenu},
        {3, &Self::dragButton},      {4, &Self::hover},
        {2, &Self::useLauncher},     {12, &Self::wait}};
    int total = 0;
    for (const auto& [weight, act] : kSteps) total += weight;
    int left = chance_.below(total);
    for (const auto& [weight, act] : kSteps)
        if ((left -= weight) < 0) return (this->*act)();
}

void RandomClients::calmDown() {
    for (Program& program : programs_) program.thaw();
    world_.pointer.key(kKeyEscape);
    world_.pointer.moveTo({640, 300});
    desktop_.setMonitors({});
    desktop_.showWorkspace(0);
    // A window belongs to the bar of the display that its middle is on; one that is beside all of them has no button.
    for (const xcb_window_t window : managed())
        if (!desktop_.box().inset(50).contains(desktop_.windowBox(window).center()))
            desktop_.place(window, {200, 150, 300, 200});
    for (const xcb_window_t window : windows_) client_.setTitle(window, newTitle());
}

std::vector<std::string> RandomClients::expectedTitles() {
    constexpr uint32_t kAllWorkspaces = 0xFFFFFFFF;
    Connection& connection = desktop_.connection();
    std::vector<std::string> titles;
    for (const xcb_window_t window : desktop_.clients()) {
        const auto types = connection.cardinals(window, "_NET_WM_WINDOW_TYPE");
        const auto isListed = [&](const char* type) { return types.empty() || types[0] == connection.atom(type); };
        if (std::ranges::none_of(kListedTypes, isListed)) continue;
        const auto states = desktop_.states(window);
        if (states.contains("_NET_WM_STATE_SKIP_TASKBAR") || states.contains("_NET_WM_STATE_FULLSCREEN")) continue;
        const uint32_t workspace = desktop_.workspaceOf(window);
        if (workspace == desktop_.currentWorkspace() || workspace == kAllWorkspaces)
            titles.push_back(desktop_.title(window));
    }
    std::ranges::sort(titles);
    return titles;
}

std::string RandomClients::description() {
    std::ostringstream text;
    for (const xcb_window_t window : desktop_.clients()) {
        text << "\n  [" << desktop_.title(window) << "] " << desktop_.windowBox(window) << " on workspace "
             << desktop_.workspaceOf(window);
        for (const xcb_atom_t type : desktop_.connection().cardinals(window, "_NET_WM_WINDOW_TYPE"))
            text << " " << desktop_.connection().atomName(type);
        for (const std::string& state : desktop_.states(window)) text << " " << state;
    }
    return text.str();
}

void RandomClients::closeAll() {
    programs_.clear();
    for (const xcb_window_t window : std::exchange(windows_, {})) client_.destroy(window);
}

void RandomClients::open() {
    if (windows_.size() >= kMostWindows) return;
    ClientWindow window{.title = newTitle(), .box = anyBox(), .pid = {}};
    window.className = "Soak" + std::to_string(chance_.below(4));
    window.fixedPlace = chance_.oneIn(2);
    if (chance_.oneIn(3)) window.iconColor = 0x102030U * static_cast<uint32_t>(1 + chance_.below(5));
    if (chance_.oneIn(8)) window.type = "_NET_WM_WINDOW_TYPE_UTILITY";
    if (chance_.oneIn(12)) window.type = "_NET_WM_WINDOW_TYPE_SPLASH";
    if (chance_.oneIn(8)) window.type = "_NET_WM_WINDOW_TYPE_DIALOG";
    if (chance_.oneIn(8)) window.states = {"_NET_WM_STATE_SKIP_TASKBAR"};
    if (chance_.oneIn(12)) window.states = {"_NET_WM_STATE_FULLSCREEN"};
    windows_.push_back(client_.open(window));
    if (chance_.oneIn(8)) destroy();
}

void RandomClients::destroy() {
    const auto window = chance_.any(windows_);
    if (!window) return;
    client_.destroy(*window);
    std::erase(windows_, *window);
}

void RandomClients::unmapOrMap() {
    const auto window = chance_.any(windows_);
    if (!window) return;
    if (desktop_.connection().isViewable(*window)) return client_.unmap(*window);
    xcb_map_window(client_.connection(), *window);
    client_.connection().flush();
}

void RandomClients::retitle() {
    const auto window = chance_.any(windows_);
    if (!window) return;
    static const std::vector<std::string> kOdd = {"", "\xFF\xFE", "a\nb", std::string(5000, 'x'), "日本語 — Résumé"};
    for (int i = chance_.oneIn(6) ? 50 : 1; i > 0; --i)
        client_.setTitle(*window, chance_.oneIn(3) ? *chance_.any(kOdd) : newTitle());
}

void RandomClients::lieAboutProcess() {
    const auto window = chance_.any(windows_);
    // Not our own: what is ended by its button would be this program.
    if (window) client_.setPid(*window, *chance_.any(std::vector<uint32_t>{0, 0x7FFFFFFF, 0xFFFFFFFF}));
}

void RandomClients::activate() {
    if (const auto window = anyManaged()) desktop_.activate(*window);
}
void RandomClients::minimize() {
    if (const auto window = anyManaged()) desktop_.minimize(*window);
}
void RandomClients::maximize() {
    if (const auto window = anyManaged()) desktop_.setMaximized(*window, chance_.oneIn(2));
}
void RandomClients::place() {
    const auto window = anyManaged();
    for (int i = chance_.oneIn(6) ? 40 : 1; window && i > 0; --i) desktop_.place(*window, anyBox());
}
void RandomClients::sendToWorkspace() {
    const auto window = anyManaged();
    if (window) desktop_.sendToWorkspace(*window, chance_.oneIn(4) ? 0xFFFFFFFF : uint32_t(chance_.below(2)));
}

void RandomClients::start() {
    if (programs_.size() >= kMostPrograms) return;
    if (chance_.oneIn(4)) {
        programs_.push_back(world_.run({"xterm", "-T", newTitle(), "-e", "sleep", "1000"}));
    } else {
        std::vector<std::string> words{MORVEL_PUPPET, "Puppet" + std::to_string(chance_.below(3))};
        for (int i = chance_.below(3); i >= 0; --i) words.push_back(newTitle());
        programs_.push_back(world_.run(words));
    }
}

void RandomClients::end() {
    if (programs_.empty()) return;
    const auto program = std::next(programs_.begin(), chance_.below(static_cast<int>(programs_.size())));
    chance_.oneIn(2) ? program->kill() : program->terminate();
    programs_.erase(program);
}

void RandomClients::freezeOrThaw() {
    for (Program& program : programs_)
        if (chance_.oneIn(3)) chance_.oneIn(2) ? program.freeze() : program.thaw();
}

void RandomClients::showWorkspace() {
    desktop_.showWorkspace(static_cast<uint32_t>(chance_.below(2)));
}

void RandomClients::changeMonitors() {
    static const std::vector<std::vector<Monitor>> kArrangements = {
        {},
        {{"left", {0, 0, 640, 800}, true}, {"right", {640, 0, 640, 800}}},
        {{"left", {0, 0, 900, 800}, true}, {"right", {900, 0, 380, 800}}},
        {{"top", {0, 0, 1280, 400}}, {"bottom", {0, 400, 1280, 400}, true}},
        {{"one", {0, 0, 1280, 800}, true}, {"same", {0, 0, 1280, 800}}}};
    desktop_.setMonitors(*chance_.anyOf(kArrangements));
}

void RandomClients::restartManager() {
    world_.manager.stop();
    desktop_.runFor(std::chrono::milliseconds(chance_.below(400)));
    world_.manager.start();
}

void RandomClients::clickBar() {
    if (const auto spot = anyButton()) world_.pointer.click(*spot);
}

void RandomClients::useMenu() {
    const auto spot = anyButton();
    if (!spot) return;
    world_.pointer.rightClick(*spot);
    desktop_.runFor(50ms);
    // What it says is harmless: nothing that ends this program or the bar.
    const auto wanted = chance_.any(std::vector<std::string>{"Minimize", "Restore", "Close Window"});
    const auto item = bar_.popupItem(*wanted);
    item && !chance_.oneIn(4) ? world_.pointer.click(item->frame.center()) : world_.pointer.key(kKeyEscape);
}

void RandomClients::dragButton() {
    const auto from = anyButton(), to = anyButton();
    if (from && to) world_.pointer.drag(*from, chance_.oneIn(5) ? Spot{640, 300} : *to);
}

void RandomClients::hover() {
    if (const auto spot = anyButton()) world_.pointer.moveTo(*spot);
    desktop_.runFor(std::chrono::milliseconds(chance_.below(800)));
}

void RandomClients::useLauncher() {
    const auto panels = bar_.panels();
    if (panels.empty()) return;
    world_.pointer.click({panels[0].box.x + 20, panels[0].box.center().y});
    desktop_.runFor(100ms);
    if (!bar_.popups().empty()) world_.pointer.type("xt");
    world_.pointer.key(kKeyEscape);
}

void RandomClients::wait() {
    desktop_.runFor(std::chrono::milliseconds(chance_.below(120)));
}

std::string RandomClients::newTitle() {
    return kTitleStart + std::to_string(++lastTitle_);
}

Box RandomClients::anyBox() {
    if (chance_.oneIn(20)) return {-20000, 30000, 1, 1};
    return {chance_.below(1200) - 60, chance_.below(700) - 60, 1 + chance_.below(700), 1 + chance_.below(500)};
}

std::vector<xcb_window_t> RandomClients::managed() {
    std::vector<xcb_window_t> windows = desktop_.clients();
    for (const BarWindow& panel : bar_.panels()) std::erase(windows, panel.id);
    return windows;
}

std::optional<xcb_window_t> RandomClients::anyManaged() {
    return chance_.any(managed());
}

std::optional<Spot> RandomClients::anyButton() {
    std::vector<Spot> spots;
    for (const BarWindow& panel : bar_.panels())
        for (const BarView& view : panel.views)
            if (!view.hidden && view.tooltip.find(kTitleStart) != std::string::npos)
                spots.push_back(view.frame.center());
    return chance_.any(spots);
}

}  // namespace morvel::e2e
