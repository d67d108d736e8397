// Asks the update site which release is the latest.
#pragma once

#include <functional>
#include <string>

#include "Platform/HttpClient.h"
#include "Update/RemoteVersion.h"

namespace morvel {

class UpdateChecker {
public:
    /// The client outlives the checker. `address` is another than the update site's in tests alone.
    explicit UpdateChecker(HttpClient& client, std::string address = kAddress)
        : client_(client), address_(std::move(address)) {}

    /// Asks once and calls back in a later turn. Any failure is an error for the caller; nothing is tried again.
    void fetchLatest(std::function<void(RemoteVersionResult)> fetched) const;

    /// What an answer amounts to. An answer that is not HTTP's is read like a good one.
    static RemoteVersionResult read(const HttpAnswer& answer);

private:
    static const std::string kAddress;

    HttpClient& client_;
    std::string address_;
};

}  // namespace morvel
