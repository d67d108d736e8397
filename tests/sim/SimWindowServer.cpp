#include "sim/SimWindowServer.h"

#include <algorithm>

namespace morvel::sim {

std::optional<std::vector<SpaceID>> SimWindowServer::spacesOf(WindowNumber window) {
    ++spaceQueries;
    if (!hasSpaceFunctions) return std::nullopt;
    const auto found = windowSpaces.find(window);
    if (found == windowSpaces.end()) return std::vector<SpaceID>{};
    return std::vector<SpaceID>(found->second.begin(), found->second.end());
}

void SimWindowServer::addToSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) {
    if (!hasSpaceFunctions) return;
    record("spaceAdd", window, spaces);
    windowSpaces[window].insert(spaces.begin(), spaces.end());
}

void SimWindowServer::removeFromSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) {
    if (!hasSpaceFunctions) return;
    record("spaceRemove", window, spaces);
    std::set<SpaceID> left = windowSpaces[window];
    for (const SpaceID space : spaces) left.erase(space);
    if (!left.empty() || !keepsLastSpace) windowSpaces[window] = std::move(left);
}

void SimWindowServer::moveToSpace(WindowNumber window, SpaceID space) {
    if (!hasSpaceFunctions) return;
    record("spaceMove", window, {space});
    windowSpaces[window] = {space};
}

Subscription SimWindowServer::observeSpaceEvents(std::function<void(uint32_t event)> changed) {
    if (!hasSpaceFunctions) return {};
    ++spaceObservers;
    return spaceEvents.subscribe(std::move(changed));
}

std::vector<ListedWindow> SimWindowServer::windowList(WindowListScope scope) {
    std::vector<ListedWindow> listed;
    for (const ListedWindow& window : windows)
        if (scope == WindowListScope::All || (!offScreen.contains(window.number) && isOnCurrentSpace(window.number)))
            listed.push_back(window);
    return listed;
}

std::optional<int> SimWindowServer::layerOf(WindowNumber window) {
    const ListedWindow* found = find(window);
    return found ? found->layer : std::nullopt;
}

void SimWindowServer::raise(WindowNumber window) {
    const auto at = std::ranges::find(windows, window, &ListedWindow::number);
    if (at != windows.end()) std::rotate(windows.begin(), at, at + 1);
}

void SimWindowServer::unlist(WindowNumber window) {
    std::erase_if(windows, [&](const ListedWindow& listed) { return listed.number == window; });
    windowSpaces.erase(window);
    offScreen.erase(window);
}

ListedWindow* SimWindowServer::find(WindowNumber window) {
    const auto at = std::ranges::find(windows, window, &ListedWindow::number);
    return at == windows.end() ? nullptr : &*at;
}

ManagedDisplay* SimWindowServer::display(const std::string& identifier) {
    const auto at = std::ranges::find(displays, identifier, &ManagedDisplay::identifier);
    return at == displays.end() ? nullptr : &*at;
}

void SimWindowServer::record(const char* what, WindowNumber window, const std::vector<SpaceID>& spaces) {
    std::string text = std::string(what) + " " + std::to_string(window.value) + " [";
    for (size_t i = 0; i < spaces.size(); ++i) text += (i ? "," : "") + std::to_string(spaces[i].value);
    journal_.add({text + "]", {}, {}});
}

bool SimWindowServer::isOnCurrentSpace(WindowNumber window) const {
    const auto found = windowSpaces.find(window);
    if (found == windowSpaces.end()) return true;
    return std::ranges::any_of(displays, [&](const ManagedDisplay& display) {
        return display.current && display.current->id64 && found->second.contains(*display.current->id64);
    });
}

}  // namespace morvel::sim
