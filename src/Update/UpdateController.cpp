#include "Update/UpdateController.h"

#include <utility>

#include "Update/UpdateRules.h"

namespace morvel {

namespace {

/// The bars are up and have settled by then.
constexpr Duration kAfterStart = std::chrono::seconds(5);
/// Short enough to notice soon after a night's sleep that a day has passed.
constexpr Duration kTick = std::chrono::hours(1);

}  // namespace

UpdateController::UpdateController(SettingsStore& settings, Environment environment)
    : settings_(settings), environment_(std::move(environment)), status_(fromCache()) {}

UpdateController::Status UpdateController::fromCache() const {
    const auto& cached = settings_.updaterCachedRemote.value();
    if (!cached) return Idle{};
    const auto decoded = decodeRemoteVersion({reinterpret_cast<const char*>(cached->data()), cached->size()});
    const auto* remote = std::get_if<RemoteVersion>(&decoded);
    return remote && isUpgrade(*remote) ? Status(*remote) : Status(Idle{});
}

void UpdateController::start() {
    if (!firstCheck_) firstCheck_ = environment_.mainLoop.after(kAfterStart, [this] { checkIfDue(); });
    tickTimer_ = environment_.mainLoop.every(kTick, kTick, [this] { checkIfDue(); });
}

void UpdateController::checkIfDue() {
    if (isCheckDue(settingsAutoCheckEnabled(), lastCheckPublic(), environment_.now())) checkNow();
}

void UpdateController::checkNow() {
    const auto watch = lifetime_.watch();
    status_.set(Checking{});
    if (!watch.isAlive()) return;
    const Fetcher fetch = environment_.fetch;
    fetch(lifetime_.whileAlive([this](const RemoteVersionResult& result) { fetched(result); }));
}

void UpdateController::fetched(const RemoteVersionResult& result) {
    settings_.updaterLastCheckedAt.set(environment_.now());
    if (const auto* error = std::get_if<UpdateError>(&result)) return status_.set(Failed{error->text});
    const auto& remote = std::get<RemoteVersion>(result);
    const std::string document = encodeRemoteVersion(remote);
    settings_.updaterCachedRemote.set(Data(document.begin(), document.end()));
    status_.set(isUpgrade(remote) ? Status(remote) : Status(UpToDate{}));
}

bool UpdateController::isUpgrade(const RemoteVersion& remote) const {
    return morvel::isUpgrade(environment_.currentVersion, remote.version, remote.minimumOSVersion,
                             environment_.currentOS);
}

bool UpdateController::updateAvailable() const {
    const auto* available = std::get_if<RemoteVersion>(&status_.value());
    return available && settings_.updaterSkippedVersion.value() != available->version.description();
}

void UpdateController::skip(const SemanticVersion& version) {
    settings_.updaterSkippedVersion.set(version.description());
}

}  // namespace morvel
