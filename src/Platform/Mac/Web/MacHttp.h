// Web servers through the system's URL sessions.
#pragma once

#include "Platform/HttpClient.h"
#include "Util/Lifetime.h"

namespace morvel::mac {

/// A session of its own for each request: only a session's delegate sees the answer piece by piece, and can stop one
/// that is too long.
class MacHttp : public HttpClient {
public:
    explicit MacHttp(MainLoop& mainLoop) : mainLoop_(mainLoop) {}

    void get(const std::string& address, Duration timeout, std::function<void(HttpAnswer)> answered) override;

private:
    MainLoop& mainLoop_;
    Lifetime lifetime_;
};

}  // namespace morvel::mac
