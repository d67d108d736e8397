// A web server that answers as a test says.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Platform/HttpClient.h"
#include "sim/FakeMainLoop.h"

namespace morvel::sim {

/// What the update site answers while this is the newest release.
inline HttpResponse release(const std::string& version, const std::string& notes = "https://example.com/notes") {
    return {200, R"({"version": ")" + version + R"(", "build": "7", "published_at": "2024-05-01T12:00:00Z",
        "download_url": "https://example.com/d.zip", "release_notes_url": ")" +
                     notes + R"(", "minimum_os_version": "13.0"})"};
}

class SimWeb : public HttpClient {
public:
    explicit SimWeb(FakeMainLoop& mainLoop) : mainLoop_(mainLoop) {}

    void get(const std::string& address, Duration, std::function<void(HttpAnswer)> answered) override {
        requests.push_back(address);
        if (isSilent) return;
        mainLoop_.post([answered = std::move(answered), answer = answer] { answered(answer); });
    }

    HttpAnswer answer = HttpFailure{"The network is down."};
    bool isSilent = false;              ///< nothing ever comes
    std::vector<std::string> requests;  ///< the addresses that were asked for

private:
    FakeMainLoop& mainLoop_;
};

}  // namespace morvel::sim
