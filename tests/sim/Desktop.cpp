#include "sim/Desktop.h"

#include <algorithm>
#include <cctype>

#include "Platform/AXNames.h"

namespace morvel::sim {

Desktop::Desktop(const std::vector<DisplaySpec>& displays)
    : platform_{.mainLoop = mainLoop_,
                .log = log_,
                .accessibility = accessibility_,
                .windowServer = windowServer_,
                .workspace = workspace_,
                .screens = screens_,
                .defaults = defaults_,
                .icons = icons_,
                .toolkit = toolkit_,
                .terminate = [this] { ++terminations_; },
                .makeWorkQueue = [this](const std::string& label) { return workQueues_.make(label); },
                .installedApplications = installedApplications_,
                .wallClock = [this] { return now(); },
                .httpClient = web_,
                .programVersion = "1.0.0",
                .systemVersion = "14.1.0",
                .scriptRunner = players_,
                .features = {.hasMenuBar = true, .hasDock = true, .switchesSpaces = true},
                .loginItem = &loginItem_} {
    for (const DisplaySpec& display : displays) {
        screens_.list.push_back(SimScreens::screenOf(display));
        addDisplaySpaces(display.id);
    }
    if (!displays.empty()) screens_.main = displays.front().id;
    if (!displays.empty()) windowServer_.active = currentSpace(displays.front().id);
    accessibility_.onSet = [this](ElementID id, std::string_view name, const AXValue& value) {
        return written(id, name, value);
    };
    accessibility_.onAction = [this](ElementID id, std::string_view action) { return performed(id, action); };
    workspace_.onActivate = [this](ProcessID pid) {
        if (SimApp* running = app(pid)) running->activate();
    };
    workspace_.onTerminate = [this](ProcessID pid) {
        if (SimApp* running = app(pid); running && !running->ignoresQuit) running->quit();
    };
    workspace_.onForceTerminate = [this](ProcessID pid) {
        if (SimApp* running = app(pid)) running->quit();
    };
    workspace_.onOpenApplication = [this](const std::string& path, const OpenApplication& how) { opened(path, how); };
    workspace_.onOpenFile = [this](const std::string& path) { openedInFinder(path); };
}

Desktop::~Desktop() = default;

SimApp& Desktop::launch(const std::string& name, const LaunchOptions& options) {
    std::string bundle = "com.example.";
    for (const char c : name) bundle += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    RunningApplication record{.pid = options.pid.value_or(ProcessID{lastPID_ + 1}),
                              .instance = ++lastInstance_,
                              .bundleID = {},
                              .localizedName = name,
                              .policy = options.policy};
    if (options.hasBundle) record.bundleID = options.bundleID.value_or(bundle);
    lastPID_ = std::max(lastPID_, record.pid.value);
    workspace_.running.push_back(record);
    if (record.bundleID) workspace_.installed.try_emplace(*record.bundleID, "/Applications/" + name + ".app");
    SimApp& started = *apps_.emplace_back(std::make_unique<SimApp>(*this, record));
    mainLoop_.post([this, record] { workspace_.launched.emit(record); });
    return started;
}

void Desktop::opened(const std::string& path, const OpenApplication& how) {
    const auto bundle =
        std::ranges::find(workspace_.installed, path, &std::pair<const std::string, std::string>::second);
    if (bundle == workspace_.installed.end()) return;
    const std::string bundleID = bundle->first;
    const std::string name = path.substr(path.rfind('/') + 1, path.size() - path.rfind('/') - 1 - 4);
    const auto running = std::ranges::find(workspace_.running, std::optional(bundleID), &RunningApplication::bundleID);
    const bool isNew = how.createsNewInstance || running == workspace_.running.end();
    SimApp& opened = isNew ? launch(name, {.bundleID = bundleID}) : *app(running->pid);
    if (isNew) opened.open({.title = name});
    if (how.activates) opened.activate();
}

void Desktop::openedInFinder(const std::string& path) {
    const std::string finder = workspace_.fileManager();
    const auto running = std::ranges::find(workspace_.running, std::optional(finder), &RunningApplication::bundleID);
    SimApp& app =
        running == workspace_.running.end() ? launch("Finder", {.bundleID = finder}) : *this->app(running->pid);
    app.activate();
    app.open({.title = path});
}

SimApp* Desktop::app(ProcessID pid) {
    const auto found = std::find_if(apps_.rbegin(), apps_.rend(),
                                    [pid](const auto& each) { return each->pid() == pid && each->isRunning(); });
    return found == apps_.rend() ? nullptr : found->get();
}

void Desktop::plug(const DisplaySpec& display) {
    screens_.list.push_back(SimScreens::screenOf(display));
    addDisplaySpaces(display.id);
    mainLoop_.post([this] { screens_.changes.emit(); });
}

void Desktop::unplug(DisplayID display) {
    std::erase_if(screens_.list, [display](const Screen& screen) { return screen.displayID == display; });
    std::erase_if(windowServer_.displays, [display](const ManagedDisplay& managed) {
        return managed.identifier == SimScreens::uuidOf(display);
    });
    if (screens_.main == display && !screens_.list.empty())
        screens_.main = screens_.list.front().displayID.value_or(display);
    rescueWindows();
    mainLoop_.post([this] { screens_.changes.emit(); });
}

void Desktop::rearrange(const std::vector<DisplaySpec>& displays) {
    screens_.list.clear();
    for (const DisplaySpec& display : displays) {
        screens_.list.push_back(SimScreens::screenOf(display));
        addDisplaySpaces(display.id);
    }
    if (!displays.empty()) screens_.main = displays.front().id;
    rescueWindows();
    mainLoop_.post([this] { screens_.changes.emit(); });
}

SpaceID Desktop::addSpace(DisplayID display, int64_t type) {
    const SpaceID space{++lastSpace_};
    if (ManagedDisplay* managed = windowServer_.display(SimScreens::uuidOf(display)))
        managed->spaces.push_back({type, space, space});
    return space;
}

void Desktop::switchSpace(DisplayID display, SpaceID space) {
    ManagedDisplay* managed = windowServer_.display(SimScreens::uuidOf(display));
    if (!managed) return;
    managed->current = ManagedSpace{{}, space, space};
    windowServer_.active = space;
    for (const uint32_t event : SimWindowServer::kSpaceEvents)
        mainLoop_.post([this, event] { windowServer_.spaceEvents.emit(event); });
    mainLoop_.post([this] { workspace_.activeSpaceChanged.emit(); });
}

std::optional<SpaceID> Desktop::currentSpace(DisplayID display) {
    const ManagedDisplay* managed = windowServer_.display(SimScreens::uuidOf(display));
    return managed && managed->current ? managed->current->id64 : std::nullopt;
}

void Desktop::click(ui::View& view) {
    settle();
    toolkit_.click(view);
    settle();
}

void Desktop::rightClick(ui::View& view) {
    settle();
    toolkit_.rightClick(view);
    settle();
}

void Desktop::choose(const std::vector<std::string>& path) {
    toolkit_.choose(path);
    settle();
}

AXError Desktop::written(ElementID id, std::string_view name, const AXValue& value) {
    SimWindow* window = windowOf(id);
    if (!window) return AXError::Unsupported;
    const bool* flag = std::get_if<bool>(&value);
    if (name == ax::kMinimized && flag) {
        *flag ? window->minimize() : window->restore();
    } else if ((name == ax::kMain || name == ax::kFocused) && flag) {
        if (*flag && !window->isMinimized()) window->app().setFocused(window);
    } else if (const auto* position = std::get_if<Point<AXSpace>>(&value); position && name == ax::kPosition) {
        window->writeFrame({position->x, position->y, window->width(), window->height()});
    } else if (const auto* size = std::get_if<Size>(&value); size && name == ax::kSize) {
        window->writeFrame({window->frame().x, window->frame().y, size->width, size->height});
    } else {
        return AXError::Unsupported;
    }
    return AXError::Success;
}

AXError Desktop::performed(ElementID id, std::string_view action) {
    if (const auto button = closeButtons_.find(id); button != closeButtons_.end() && action == ax::kPress) {
        if (!button->second->asksBeforeClosing) button->second->close();
        return AXError::Success;
    }
    if (const auto item = menuItems_.find(id); item != menuItems_.end() && action == ax::kPress) return item->second();
    SimWindow* window = windowOf(id);
    if (!window || action != ax::kRaise) return AXError::Unsupported;
    window->raise();
    return AXError::Success;
}

SimWindow* Desktop::windowOf(ElementID id) {
    const auto found = windows_.find(id);
    return found == windows_.end() ? nullptr : found->second;
}

std::optional<DisplayID> Desktop::displayAt(Point<AXSpace> point) const {
    const Point<ScreenSpace> onScreen = toScreen(point, screens_.firstHeight());
    for (const Screen& screen : screens_.list)
        if (screen.frame.contains(onScreen)) return screen.displayID;
    return std::nullopt;
}

void Desktop::rescueWindows() {
    if (screens_.list.empty()) return;  // asleep: nothing moves until a display is back
    for (const auto& [id, window] : windows_) {
        if (!window->isOpen() || displayAt(window->frame().center())) continue;
        const Rect<AXSpace> first = toAX(screens_.list.front().visibleFrame, screens_.firstHeight());
        window->setFrame({first.x, first.y, window->width(), window->height()});
    }
}

void Desktop::addDisplaySpaces(DisplayID display) {
    if (windowServer_.display(SimScreens::uuidOf(display))) return;  // not unplugged, only gone for a moment
    const SpaceID first{++lastSpace_};
    const ManagedSpace space{0, first, first};
    windowServer_.displays.push_back({SimScreens::uuidOf(display), {space}, space});
}

}  // namespace morvel::sim
