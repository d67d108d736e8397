// Asks a web server for one document and writes the answer to the standard output: "status 200" or "failure" and a line
// break, then the body or the reason. Its caller ends it when it takes too long.
#include <libsoup/soup.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include "Platform/HttpClient.h"

namespace morvel::x11 {
namespace {

/// In seconds: when whoever asked has forgotten it.
constexpr unsigned kLongestLife = 60;
constexpr int kMostRedirections = 5;

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class T>
using Owned = std::unique_ptr<T, Unref>;

/// Why it failed; never empty.
class Reason {
public:
    ~Reason() { g_clear_error(&error_); }
    GError** out() { return &error_; }
    std::string text() const { return error_ ? error_->message : "The request has failed."; }

private:
    GError* error_ = nullptr;
};

int fail(const std::string& reason) {
    std::printf("failure\n%s", reason.c_str());
    return EXIT_SUCCESS;
}

int writeAnswer(unsigned status, GInputStream* stream) {
    std::string body(HttpClient::kLargestBody + 1, '\0');
    gsize length = 0;
    Reason reason;
    if (!g_input_stream_read_all(stream, body.data(), body.size(), &length, nullptr, reason.out()))
        return fail(reason.text());
    if (length > HttpClient::kLargestBody) return fail("The answer is too large.");
    std::printf("status %u\n", status);
    std::fwrite(body.data(), 1, length, stdout);
    return EXIT_SUCCESS;
}

/// Where the answer sends us; nothing when it is an answer of its own. An empty text: nowhere we would go.
std::optional<std::string> redirection(SoupMessage* message) {
    const char* const location = soup_message_headers_get_one(soup_message_get_response_headers(message), "Location");
    if (!SOUP_STATUS_IS_REDIRECTION(soup_message_get_status(message)) || !location) return std::nullopt;
    GUri* const target =
        g_uri_parse_relative(soup_message_get_uri(message), location, GUriFlags(SOUP_HTTP_URI_FLAGS), nullptr);
    if (!target) return "";
    char* const text = g_uri_to_string(target);
    const std::string address = std::string(g_uri_get_scheme(target)) == "https" ? text : "";
    g_free(text);
    g_uri_unref(target);
    return address;
}

int fetch(std::string address) {
    const Owned<SoupSession> session(soup_session_new());
    for (int i = 0; i <= kMostRedirections; ++i) {
        const Owned<SoupMessage> message(soup_message_new(SOUP_METHOD_GET, address.c_str()));
        if (!message) return fail("This is no web address.");
        soup_message_add_flags(message.get(), SOUP_MESSAGE_NO_REDIRECT);
        Reason reason;
        const Owned<GInputStream> stream(soup_session_send(session.get(), message.get(), nullptr, reason.out()));
        if (!stream) return fail(reason.text());
        const auto target = redirection(message.get());
        if (!target) return writeAnswer(soup_message_get_status(message.get()), stream.get());
        if (target->empty()) return fail("The server redirects to an address that is not secure.");
        address = *target;
    }
    return fail("The server redirects too often.");
}

}  // namespace
}  // namespace morvel::x11

int main(int count, char** arguments) {
    alarm(morvel::x11::kLongestLife);
    return count == 2 ? morvel::x11::fetch(arguments[1]) : EXIT_FAILURE;
}
