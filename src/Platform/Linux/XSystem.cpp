#include "Platform/Linux/XSystem.h"

namespace morvel::x11 {

XSystem::Tracking::Tracking(XConnection& connection, MainLoop& mainLoop, XScreens& screens)
    : root(connection), clients(connection, mainLoop, root) {
    const auto passStruts = [this, &screens] {
        std::vector<Strut> told;
        for (const ClientWindow* client : clients.all())
            if (client->strut) told.push_back(*client->strut);
        screens.setStruts(std::move(told));
    };
    connection.settleReplies();
    passStruts();
    struts = clients.observe([passStruts](const ClientWindow& client, ClientChange change) {
        const bool hasComeOrGone = change == ClientChange::Added || change == ClientChange::Removed;
        if (change == ClientChange::Strut || (hasComeOrGone && client.strut)) passStruts();
    });
}

XSystem::XSystem(GLibMainLoop& mainLoop, Log& log, XConnection& connection, std::string defaultsPath)
    : defaults_(std::move(defaultsPath), mainLoop, log),
      screens_(connection, mainLoop),
      tracking_(connection, mainLoop, screens_),
      requests_(connection, mainLoop, tracking_.root),
      workspace_({mainLoop, log, tracking_.root, tracking_.clients, requests_, entries_}),
      accessibility_(tracking_.clients, requests_, screens_, workspace_),
      windowServer_(mainLoop, tracking_.root, tracking_.clients, requests_, screens_),
      icons_(connection, tracking_.clients, entries_) {}

}  // namespace morvel::x11
