// The recorded answers of versions, documents and the controller.
#include "Update/UpdateChecker.h"
#include "Update/UpdateController.h"
#include "Update/UpdateRules.h"
#include "Vectors.h"
#include "sim/FakeDefaults.h"
#include "sim/FakeMainLoop.h"

namespace morvel {
namespace {

using vectors::Json;

std::optional<SemanticVersion> version(const Json& text) {
    return text.is_null() ? std::nullopt : SemanticVersion::parse(text.get<std::string>());
}

Json seconds(const std::optional<Date>& date) {
    return date ? Json(date->time_since_epoch().count()) : Json();
}

TEST(UpdateVectors, Versions) {
    vectors::walk("version_parse", [](const Json& input) -> Json {
        const auto parsed = version(input);
        return parsed ? Json(parsed->description()) : Json();
    });
    vectors::walk("version_compare", [](const Json& input) -> Json {
        const auto order = *version(input[0]) <=> *version(input[1]);
        return order < 0 ? -1 : order > 0 ? 1 : 0;
    });
}

Json toJson(const RemoteVersion& remote) {
    return {{"version", remote.version.description()},   {"build", remote.build},
            {"published", seconds(remote.publishedAt)},  {"downloadURL", remote.downloadURL},
            {"releaseNotesURL", remote.releaseNotesURL}, {"minimumOSVersion", remote.minimumOSVersion}};
}

TEST(UpdateVectors, Documents) {
    vectors::walk("version_document", [](const Json& input) -> Json {
        const HttpResponse response{vectors::optional<int>(input["status"]), input["body"]};
        const auto result = UpdateChecker::read(response);
        if (const auto* error = std::get_if<UpdateError>(&result)) {
            if (error->kind == UpdateError::Kind::Status) return {{"error", "status"}, {"status", error->status}};
            if (error->kind == UpdateError::Kind::InvalidVersion)
                return {{"error", "semver"}, {"description", error->text}};
            return {{"error", "decode"}};
        }
        const auto& remote = std::get<RemoteVersion>(result);
        EXPECT_EQ(decodeRemoteVersion(encodeRemoteVersion(remote)), result) << "kept as it came";
        return {{"ok", toJson(remote)}};
    });
}

TEST(UpdateVectors, Rules) {
    vectors::walk("update_rules", [](const Json& input) -> Json {
        const auto date = [&](const char* name) {
            const auto count = vectors::optional<double>(input[name]);
            return count ? std::optional(Date(std::chrono::duration<double>(*count))) : std::nullopt;
        };
        if (input["fn"] == "os")
            return osMeetsRequirement(input["current"].get<std::string>(), input["required"].get<std::string>());
        if (input["fn"] == "due") return isCheckDue(input["auto"], date("lastChecked"), *date("now"));
        return isUpgrade(version(input["local"]), *version(input["remote"]), input["minimum"].get<std::string>(),
                         input["currentOS"].get<std::string>());
    });
}

/// A controller in its surroundings, as a recorded trace describes and drives them.
class UpdateWorld {
public:
    explicit UpdateWorld(const Json& start) {
        settings_.updaterAutoCheckEnabled.set(start["auto"]);
        if (!start["lastChecked"].is_null()) settings_.updaterLastCheckedAt.set(at(start["lastChecked"]));
        settings_.updaterSkippedVersion.set(vectors::optional<std::string>(start["skipped"]));
        if (const Json& cached = start["cached"]; !cached.is_null()) {
            const std::string text =
                cached.is_array() ? encodeRemoteVersion(record(cached)) : cached.get<std::string>();
            settings_.updaterCachedRemote.set(Data(text.begin(), text.end()));
        }
        controller_.emplace(settings_, UpdateController::Environment{
                                           loop_, [this] { return at(0) + loop_.now().time_since_epoch(); },
                                           version(start["currentVersion"]), start["currentOS"].get<std::string>(),
                                           [this](auto fetched) { fetch(fetched); }});
    }

    Json status() const { return toJson(controller_->status().value()); }

    /// What the event brought about, in the form of the recorded answers.
    Json handle(const Json& event) {
        fetches_ = 0;
        Json published = Json::array();
        const Subscription listening = controller_->status().subscribe(
            [&](const UpdateController::Status& status) { published.push_back(toJson(status)); }, Current::Skip);
        const std::string what = event[0];
        if (what == "start") controller_->start();
        if (what == "reply") reply_ = event[1];
        if (what == "check") controller_->checkNow();
        if (what == "due") controller_->checkIfDue();
        if (what == "auto") controller_->setAutoCheckEnabled(event[1]);
        if (what == "skip") controller_->skip(*version(event[1]));
        if (what == "adv") loop_.advance(std::chrono::seconds(event[1].get<int>()));
        Json last = seconds(controller_->lastCheckPublic());
        if (!last.is_null()) last = last.get<double>() - kEpoch;
        return {published, fetches_, controller_->updateAvailable(), last, cachedVersion()};
    }

private:
    static constexpr double kEpoch = 1700000000;

    static Date at(double time) { return Date(std::chrono::duration<double>(kEpoch + time)); }
    static RemoteVersion record(const Json& entry) {
        return {
            *version(entry[0]),          "7",     Date(std::chrono::seconds(1714564800)), "https://example.com/d.zip",
            "https://example.com/notes", entry[1]};
    }
    static Json toJson(const UpdateController::Status& status) {
        if (const auto* remote = std::get_if<RemoteVersion>(&status))
            return {"available", remote->version.description()};
        if (const auto* failed = std::get_if<UpdateController::Failed>(&status)) return {"failed", failed->text};
        if (std::holds_alternative<UpdateController::Checking>(status)) return {"checking"};
        return {std::holds_alternative<UpdateController::UpToDate>(status) ? "upToDate" : "idle"};
    }

    void fetch(const std::function<void(RemoteVersionResult)>& fetched) {
        ++fetches_;
        if (reply_.is_string()) return fetched(UpdateError{UpdateError::Kind::Transport, reply_});
        fetched(record(reply_));
    }
    Json cachedVersion() const {
        const auto& cached = settings_.updaterCachedRemote.value();
        if (!cached) return nullptr;
        const auto decoded = decodeRemoteVersion(std::string(cached->begin(), cached->end()));
        const auto* remote = std::get_if<RemoteVersion>(&decoded);
        return remote ? Json(remote->version.description()) : Json();
    }

    sim::FakeMainLoop loop_;
    sim::FakeDefaults defaults_;
    SettingsStore settings_{defaults_};
    Json reply_;
    int fetches_ = 0;
    std::optional<UpdateController> controller_;
};

TEST(UpdateVectors, Controller) {
    vectors::walk("update_traces", [](const Json& input) -> Json {
        UpdateWorld world(input["start"]);
        Json answer = {{"initial", world.status()}, {"steps", Json::array()}};
        for (const Json& event : input["events"]) answer["steps"].push_back(world.handle(event));
        return answer;
    });
}

}  // namespace
}  // namespace morvel
