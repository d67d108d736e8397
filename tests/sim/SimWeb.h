// A web server that answers as a test says.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Platform/HttpClient.h"
#include "sim/FakeMainLoop.h"

namespace morvel::sim {

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
