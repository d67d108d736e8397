// What an application is called where the system gives it no name.
#pragma once

#include <optional>
#include <string>

#include "Platform/Workspace.h"

namespace morvel {

inline std::string applicationName(const std::optional<RunningApplication>& app) {
    return app && app->localizedName ? *app->localizedName : "Unknown";
}

}  // namespace morvel
