#include "Update/UpdateChecker.h"

namespace morvel {

namespace {

constexpr Duration kTimeout = std::chrono::seconds(10);

}  // namespace

const std::string UpdateChecker::kAddress = "https://" MORVEL_UPDATE_HOST "/version.json";

void UpdateChecker::fetchLatest(std::function<void(RemoteVersionResult)> fetched) const {
    client_.get(address_, kTimeout,
                [fetched = std::move(fetched)](const HttpAnswer& answer) { fetched(read(answer)); });
}

RemoteVersionResult UpdateChecker::read(const HttpAnswer& answer) {
    if (const auto* failure = std::get_if<HttpFailure>(&answer))
        return UpdateError{UpdateError::Kind::Transport, failure->text};
    const auto& response = std::get<HttpResponse>(answer);
    if (response.status && (*response.status < 200 || *response.status > 299)) {
        return UpdateError{UpdateError::Kind::Status,
                           "The update server answered with status " + std::to_string(*response.status) + ".",
                           *response.status};
    }
    return decodeRemoteVersion(response.body);
}

}  // namespace morvel
