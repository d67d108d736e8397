// Asking a web server for one small document.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "Platform/MainLoop.h"

namespace morvel {

/// What a server answered, whatever it thinks of the question.
struct HttpResponse {
    std::optional<int> status;  ///< absent where the answer did not come over HTTP
    std::string body;
};

/// Why there is no answer, in words for people.
struct HttpFailure {
    std::string text;
};

using HttpAnswer = std::variant<HttpResponse, HttpFailure>;

/// Main thread only. No caches, cookies or further headers. A redirection is followed only to an https address.
class HttpClient {
public:
    /// A longer answer is a failure.
    static constexpr size_t kLargestBody = 1 << 20;

    virtual ~HttpClient() = default;

    /// Calls `answered` once, in a later turn, at the latest soon after `timeout`; never again once the client is gone.
    virtual void get(const std::string& address, Duration timeout, std::function<void(HttpAnswer)> answered) = 0;
};

}  // namespace morvel
