// Decides when to look for a new release, and keeps what came of it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "Platform/MainLoop.h"
#include "Platform/WallClock.h"
#include "Settings/SettingsStore.h"
#include "Update/RemoteVersion.h"
#include "Util/Lifetime.h"
#include "Util/Published.h"

namespace morvel {

/// Main thread only. Never downloads or installs a release: it only knows where one is.
class UpdateController {
public:
    /// Nothing checked yet in this run and nothing known from an earlier one.
    struct Idle {
        bool operator==(const Idle&) const = default;
    };
    struct Checking {
        bool operator==(const Checking&) const = default;
    };
    struct UpToDate {
        bool operator==(const UpToDate&) const = default;
    };
    /// The last check failed.
    struct Failed {
        std::string text;
        bool operator==(const Failed&) const = default;
    };
    /// Available: a newer release that this computer can run.
    using Status = std::variant<Idle, Checking, UpToDate, RemoteVersion, Failed>;

    using Fetcher = std::function<void(std::function<void(RemoteVersionResult)>)>;

    struct Environment {
        MainLoop& mainLoop;
        WallClock now;
        std::optional<SemanticVersion> currentVersion;  ///< of this program; absent where it cannot be read
        std::optional<std::string> currentOS;           ///< as `isUpgrade` takes it
        Fetcher fetch;  ///< calls back once, on the main thread, at once or later; it may outlive the controller
    };

    /// The settings and the main loop outlive the controller.
    UpdateController(SettingsStore& settings, Environment environment);

    /// Checks, if a check is due, a little after the start and then at every full hour of the run.
    void start();

    /// Whatever the settings say. While another check runs, each publishes its own outcome.
    void checkNow();
    void checkIfDue();

    /// The release is known but no longer counts as an available update.
    void skip(const SemanticVersion& version);

    const Published<Status>& status() const { return status_; }
    bool updateAvailable() const;
    /// The moment of the last check of any run, whether it succeeded or not.
    std::optional<Date> lastCheckPublic() const { return settings_.updaterLastCheckedAt.value(); }

    bool settingsAutoCheckEnabled() const { return settings_.updaterAutoCheckEnabled.value(); }
    void setAutoCheckEnabled(bool enabled) { settings_.updaterAutoCheckEnabled.set(enabled); }

private:
    void fetched(const RemoteVersionResult& result);
    bool isUpgrade(const RemoteVersion& remote) const;
    Status fromCache() const;

    SettingsStore& settings_;
    Environment environment_;
    Published<Status> status_;
    Timer firstCheck_;
    Timer tickTimer_;
    Lifetime lifetime_;
};

}  // namespace morvel
