#include "Display/SpaceQuery.h"

#include <algorithm>

namespace morvel {

namespace {

constexpr int64_t kFullScreenSpaceType = 4;

std::optional<SpaceID> idOf(const ManagedSpace& space) {
    return space.id64 ? space.id64 : space.managedSpaceID;
}

DisplaySpaces spacesOf(const ManagedDisplay& display) {
    DisplaySpaces result;
    for (const ManagedSpace& space : display.spaces) {
        const auto id = idOf(space);
        if (!id || space.type == kFullScreenSpaceType || std::ranges::count(result.spaces, *id)) continue;
        result.spaces.push_back(*id);
    }
    if (display.current) result.current = idOf(*display.current);
    return result;
}

std::vector<SpaceID> listOf(const std::set<SpaceID>& spaces) {
    return {spaces.begin(), spaces.end()};
}

}  // namespace

std::optional<SpaceID> SpaceQuery::activeSpace() const {
    return server_.activeSpace();
}

std::map<DisplayID, DisplaySpaces> SpaceQuery::snapshotByDisplay() const {
    std::map<DisplayID, DisplaySpaces> snapshot;
    for (const ManagedDisplay& display : server_.managedDisplaySpaces().value_or(std::vector<ManagedDisplay>{}))
        if (const auto id = resolveDisplayID(display.identifier)) snapshot[*id] = spacesOf(display);
    return snapshot;
}

std::optional<DisplayID> SpaceQuery::resolveDisplayID(const std::optional<std::string>& identifier) const {
    if (!identifier) return std::nullopt;
    if (*identifier == "Main") return screens_.mainDisplay();
    for (const Screen& screen : screens_.screens())
        if (screen.displayID && screens_.uuidString(*screen.displayID) == identifier) return screen.displayID;
    return std::nullopt;
}

std::set<SpaceID> SpaceQuery::spaces(WindowNumber window) const {
    const auto spaces = server_.spacesOf(window).value_or(std::vector<SpaceID>{});
    return {spaces.begin(), spaces.end()};
}

void SpaceQuery::add(WindowNumber window, const std::set<SpaceID>& spaces) {
    if (spaces.empty()) return;
    server_.addToSpaces(window, listOf(spaces));
    moved_.emit();
}

void SpaceQuery::remove(WindowNumber window, const std::set<SpaceID>& spaces) {
    if (spaces.empty()) return;
    server_.removeFromSpaces(window, listOf(spaces));
    moved_.emit();
}

void SpaceQuery::move(WindowNumber window, SpaceID space) {
    server_.moveToSpace(window, space);
    moved_.emit();
}

}  // namespace morvel
