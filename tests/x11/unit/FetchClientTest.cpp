// The asking of web servers, against one on this machine that behaves as badly as the network's can.
#include "Platform/Linux/Web/FetchClient.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <thread>

#include "Platform/Linux/System/GLibMainLoop.h"
#include "x11/Loopback.h"

namespace morvel::x11 {
namespace {

using namespace std::chrono_literals;

/// What follows the answer. Silence: the connection stays open. Drops: a byte every now and then. Flood: bytes until
/// 100 MB have been sent.
enum class Then { Close, Silence, Drops, Flood };

/// Serves one connection at a time, each with the same bytes, until it is destroyed.
class LoopbackServer {
public:
    explicit LoopbackServer(std::string answer, Then then = Then::Close) : answer_(std::move(answer)), then_(then) {
        thread_ = std::thread([this] { serve(); });
    }
    ~LoopbackServer() {
        ::shutdown(socket_, SHUT_RDWR);
        thread_.join();
        ::close(socket_);
    }
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    std::string address() const { return "http://127.0.0.1:" + std::to_string(port_) + "/version.json"; }
    const std::string& request() const { return request_; }  ///< the last one, once it has been answered
    size_t taken() const { return taken_; }                  ///< bytes of floods that the network took

private:
    void serve() {
        for (int client = 0; (client = ::accept(socket_, nullptr, nullptr)) >= 0; ::close(client)) {
            char buffer[4096];
            const ssize_t count = ::recv(client, buffer, sizeof buffer, 0);
            request_.assign(buffer, static_cast<size_t>(std::max<ssize_t>(count, 0)));
            ::send(client, answer_.data(), answer_.size(), MSG_NOSIGNAL);
            if (then_ == Then::Silence) ::recv(client, buffer, sizeof buffer, 0);  // until the other side gives up
            while (then_ == Then::Drops && ::send(client, "x", 1, MSG_NOSIGNAL) == 1) ::usleep(20'000);
            if (then_ == Then::Flood) flood(client);
        }
    }
    void flood(int client) {
        const std::string piece(1 << 16, 'x');
        ssize_t sent = 0;
        while (taken_ < kFlood && (sent = ::send(client, piece.data(), piece.size(), MSG_NOSIGNAL)) > 0)
            taken_ += static_cast<size_t>(sent);
    }

    static constexpr size_t kFlood = 100 << 20;

    const std::string answer_;
    const Then then_;
    std::atomic<size_t> taken_ = 0;
    const int socket_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int port_ = listenOnLoopback(socket_);
    std::string request_;
    std::thread thread_;
};

std::string http(const std::string& status, const std::string& body, const std::string& headers = "") {
    return "HTTP/1.1 " + status + "\r\nConnection: close\r\n" + headers +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

class FetchClientTest : public testing::Test {
protected:
    /// "200 body", or the reason.
    std::string ask(const std::string& address, Duration timeout = 10s, const char* program = MORVEL_FETCH) {
        FetchClient client(loop, program);
        std::optional<HttpAnswer> answer;
        client.get(address, timeout, [&](const HttpAnswer& given) { answer = given; });
        EXPECT_FALSE(answer) << "inside the call";
        const Timer patience = loop.after(20s, [&] { answer = HttpFailure{"no answer at all"}; });
        while (!answer) loop.turn(true);
        if (const auto* failure = std::get_if<HttpFailure>(&*answer)) return failure->text;
        const auto& response = std::get<HttpResponse>(*answer);
        return std::to_string(response.status.value_or(-1)) + " " + response.body;
    }

    GLibMainLoop loop;
};

TEST_F(FetchClientTest, BringsWhateverTheServerAnswers) {
    for (const auto& [status, body] :
         {std::pair("200 OK", std::string("{\"a\": 1}\n\0x", 11)), std::pair("404 Not Found", std::string("none")),
          std::pair("500 Oh", std::string("status 200\n")), std::pair("301 Moved", std::string("nowhere"))}) {
        const LoopbackServer server(http(status, body));
        EXPECT_EQ(ask(server.address()), std::string(status).substr(0, 3) + " " + body);
        EXPECT_TRUE(server.request().starts_with("GET /version.json HTTP/1.1\r\n")) << server.request();
        EXPECT_EQ(server.request().find("Cookie"), std::string::npos);
    }
    const LoopbackServer empty("HTTP/1.1 204 No Content\r\nConnection: close\r\n\r\n");
    EXPECT_EQ(ask(empty.address()), "204 ");
}

TEST_F(FetchClientTest, RefusesWhatIsTooLongTooLateOrLeadsElsewhere) {
    const std::string largest(HttpClient::kLargestBody, 'x');
    EXPECT_EQ(ask(LoopbackServer(http("200 OK", largest)).address()), "200 " + largest);
    EXPECT_EQ(ask(LoopbackServer(http("200 OK", largest + "x")).address()), "The answer is too large.");
    const std::string head = "HTTP/1.1 200 OK\r\nContent-Length: 104857600\r\n\r\n";
    for (const Then slow : {Then::Silence, Then::Drops})
        EXPECT_EQ(ask(LoopbackServer(head + "{", slow).address(), 300ms), "The request timed out.");
    const LoopbackServer huge(head, Then::Flood);
    EXPECT_EQ(ask(huge.address()), "The answer is too large.");
    EXPECT_LT(huge.taken(), 16U << 20) << "what lies on the way counts too";
    for (const char* target : {"http://127.0.0.1/", "file:///etc/passwd", "/there", "javascript:x"}) {
        const LoopbackServer server(http("302 Found", "", std::string("Location: ") + target + "\r\n"));
        EXPECT_EQ(ask(server.address()), "The server redirects to an address that is not secure.") << target;
    }
    const LoopbackServer toNobody(http("302 Found", "", "Location: https://127.0.0.1:1/\r\n"));
    EXPECT_NE(ask(toNobody.address()).find("onnect"), std::string::npos) << "a secure address is followed";
    for (const char* junk : {"", "junk\r\n\r\n", "HTTP/9.9 hello\r\n\r\n"}) {
        const std::string reason = ask(LoopbackServer(junk).address());
        EXPECT_FALSE(reason.empty()) << junk;
        EXPECT_FALSE(reason.starts_with("2")) << junk;
    }
    for (const char* address : {"", "nonsense", "ftp://127.0.0.1/", "http://"}) EXPECT_FALSE(ask(address).empty());
    EXPECT_EQ(ask("http://127.0.0.1/", 10s, "/nowhere/morvel-fetch"), "The request could not be sent.");
}

TEST_F(FetchClientTest, ForgetsItsRequestsWhenItGoes) {
    const LoopbackServer server("", Then::Silence);
    auto client = std::make_unique<FetchClient>(loop, MORVEL_FETCH);
    client->get(server.address(), 10s, [](const HttpAnswer&) { FAIL() << "nobody is there to hear it"; });
    while (loop.turn(false)) continue;
    client.reset();
    bool isOver = false;
    const Timer later = loop.after(200ms, [&] { isOver = true; });
    while (!isOver) loop.turn(true);
}

}  // namespace
}  // namespace morvel::x11
