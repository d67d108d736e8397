#include "Platform/Linux/Windows/XWindowServer.h"

#include <algorithm>

namespace morvel::x11 {

namespace {

constexpr uint32_t kSpaceSwitched = 1;
constexpr uint32_t kWindowChangedSpace = 2;

constexpr int kOrdinaryLayer = 0, kDockLayer = 20, kDesktopLayer = -20;
constexpr int64_t kUserSpace = 0;

/// A window manager that has not done it by then does not do it.
constexpr Duration kAnswerTime = std::chrono::seconds(1);

SpaceID spaceOf(uint32_t desktop) {
    return SpaceID(uint64_t{desktop} + 1);
}

std::optional<uint32_t> desktopOf(SpaceID space) {
    if (space.value == 0 || space.value > kAllDesktops) return std::nullopt;
    return static_cast<uint32_t>(space.value - 1);
}

int layer(const ClientWindow& client) {
    switch (client.type()) {
        case ClientType::Dock:
        case ClientType::Other:
            return kDockLayer;
        case ClientType::Desktop:
            return kDesktopLayer;
        default:
            return kOrdinaryLayer;
    }
}

}  // namespace

XWindowServer::XWindowServer(MainLoop& mainLoop, RootState& root, ClientWindows& clients, WindowRequests& requests,
                             XScreens& screens)
    : mainLoop_(mainLoop), root_(root), clients_(clients), requests_(requests), screens_(screens) {
    subscriptions_.push_back(root_.observeDesktops([this] { events_.emit(kSpaceSwitched); }));
    // Whoever shows the windows of a Space has to look again, as after a switch.
    subscriptions_.push_back(clients_.observe([this](const ClientWindow& client, ClientChange change) {
        if (change == ClientChange::Removed) asked_.erase(client.window);
        if (change != ClientChange::Desktop) return;
        desktopChanged(client);
        events_.emit(kWindowChangedSpace);
    }));
}

std::optional<SpaceID> XWindowServer::activeSpace() {
    return spaceOf(root_.currentDesktop());
}

std::vector<SpaceID> XWindowServer::allSpaces() const {
    std::vector<SpaceID> out;
    // The current one may be told before the number that includes it.
    const uint32_t count = std::max(root_.desktopCount(), root_.currentDesktop() + 1);
    for (uint32_t desktop = 0; desktop < count; ++desktop) out.push_back(spaceOf(desktop));
    return out;
}

std::optional<std::vector<ManagedDisplay>> XWindowServer::managedDisplaySpaces() {
    const auto managed = [](SpaceID space) { return ManagedSpace{kUserSpace, space, space}; };
    std::vector<ManagedSpace> spaces;
    for (const SpaceID space : allSpaces()) spaces.push_back(managed(space));
    std::vector<ManagedDisplay> out;
    for (const Screen& screen : screens_.screens()) {
        if (!screen.displayID) continue;
        out.push_back({screens_.uuidString(*screen.displayID), spaces, managed(spaceOf(root_.currentDesktop()))});
    }
    return out;
}

std::optional<std::vector<SpaceID>> XWindowServer::spacesOf(WindowNumber window) {
    const ClientWindow* client = clients_.find(window.value);
    if (!client) return std::nullopt;
    if (const Asked* asked = askedFor(*client)) return std::vector(asked->spaces.begin(), asked->spaces.end());
    // A window manager that does not say knows no workspaces, so the window is wherever the person is.
    if (!client->desktop || *client->desktop == kAllDesktops) return allSpaces();
    return std::vector{spaceOf(*client->desktop)};
}

void XWindowServer::addToSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) {
    const ClientWindow* client = clients_.find(window.value);
    if (!client || spaces.empty() || !client->desktop) return;
    const auto before = spacesOf(window).value_or(std::vector<SpaceID>{});
    std::set<SpaceID> after(before.begin(), before.end());
    after.insert(spaces.begin(), spaces.end());
    if (after.size() != before.size()) setSpaces(*client, std::move(after));
}

void XWindowServer::removeFromSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) {
    const ClientWindow* client = clients_.find(window.value);
    if (!client || !client->desktop) return;
    const auto before = spacesOf(window).value_or(std::vector<SpaceID>{});
    std::set<SpaceID> after(before.begin(), before.end());
    for (const SpaceID space : spaces) after.erase(space);
    if (after.empty() || after.size() == before.size()) return;
    // On all but some it cannot be, unless those were ours to begin with.
    if (!askedFor(*client)) after = {*after.begin()};
    setSpaces(*client, std::move(after));
}

void XWindowServer::moveToSpace(WindowNumber window, SpaceID space) {
    const ClientWindow* client = clients_.find(window.value);
    if (client && spacesOf(window) != std::vector{space}) setSpaces(*client, {space});
}

void XWindowServer::setSpaces(const ClientWindow& client, std::set<SpaceID> spaces) {
    const auto desktop = spaces.size() == 1 ? desktopOf(*spaces.begin()) : std::optional(kAllDesktops);
    if (!desktop) return;
    const Asked* before = askedFor(client);
    Asked after{std::move(spaces), *desktop, before ? before->requested : std::vector<uint32_t>{}, mainLoop_.now()};
    if (before ? before->desktop != *desktop : client.desktop != *desktop) {
        requests_.setDesktop(client, *desktop);
        after.requested.push_back(*desktop);
    }
    asked_[client.window] = std::move(after);
}

void XWindowServer::desktopChanged(const ClientWindow& client) {
    const auto found = asked_.find(client.window);
    if (found == asked_.end()) return;
    auto& [window, asked] = *found;
    const auto answered = std::find(asked.requested.begin(), asked.requested.end(), client.desktop);
    const bool isOurs = answered != asked.requested.end();
    if (isOurs) asked.requested.erase(asked.requested.begin(), answered + 1);
    const bool isTold = asked.requested.empty() && asked.desktop != kAllDesktops;
    if (!isOurs || isTold) asked_.erase(found);
}

const XWindowServer::Asked* XWindowServer::askedFor(const ClientWindow& client) {
    const auto found = asked_.find(client.window);
    if (found == asked_.end()) return nullptr;
    const bool isRefused =
        client.desktop != found->second.desktop && mainLoop_.now() - found->second.time > kAnswerTime;
    if (isRefused) asked_.erase(found);
    return isRefused ? nullptr : &found->second;
}

Subscription XWindowServer::observeSpaceEvents(std::function<void(uint32_t)> changed) {
    return events_.subscribe(std::move(changed));
}

std::vector<ListedWindow> XWindowServer::windowList(WindowListScope scope) {
    std::vector<ListedWindow> out;
    for (const ClientWindow* client : clients_.all()) {
        const bool isHere =
            client->desktop.value_or(kAllDesktops) == kAllDesktops || *client->desktop == root_.currentDesktop();
        if (scope == WindowListScope::OnScreen && (!isHere || clients_.isMinimized(*client))) continue;
        out.push_back({WindowNumber(client->window), client->pid, layer(*client),
                       screens_.mainFrame().toAX(client->frame()), client->className, client->title()});
    }
    return out;
}

std::optional<int> XWindowServer::layerOf(WindowNumber window) {
    const ClientWindow* client = clients_.find(window.value);
    return client ? std::optional(layer(*client)) : std::nullopt;
}

}  // namespace morvel::x11
