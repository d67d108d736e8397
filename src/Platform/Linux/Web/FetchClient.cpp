#include "Platform/Linux/Web/FetchClient.h"

#include <gio/gio.h>

#include <charconv>
#include <string_view>
#include <utility>

#include "Util/Lifetime.h"

namespace morvel::x11 {

namespace {

/// What the program writes: "status 200" or "failure" and a line break, and then the body or the reason.
HttpAnswer answerFrom(std::string_view output) {
    constexpr std::string_view kStatus = "status ", kFailure = "failure";
    const size_t lineEnd = output.find('\n');
    if (lineEnd == std::string_view::npos) return HttpFailure{"The request has failed."};
    const std::string_view line = output.substr(0, lineEnd);
    const std::string rest(output.substr(lineEnd + 1));
    if (line == kFailure) return HttpFailure{rest};
    int status = 0;
    if (line.starts_with(kStatus)) std::from_chars(line.data() + kStatus.size(), line.data() + line.size(), status);
    return HttpResponse{status, rest};
}

}  // namespace

/// One run of the program. Calls back in a later turn, at most once, and not after its destruction.
class FetchClient::Request {
public:
    using Ended = std::function<void(Request&, const HttpAnswer&)>;

    Request(MainLoop& mainLoop, Duration timeout, std::function<void(HttpAnswer)> answered, Ended ended)
        : answered_(std::move(answered)), ended_(std::move(ended)) {
        timeout_ = mainLoop.after(timeout, [this] { end(HttpFailure{"The request timed out."}); });
    }
    ~Request() {
        if (!process_) return;
        g_subprocess_force_exit(process_);
        g_object_unref(process_);
    }
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;

    const std::function<void(HttpAnswer)>& answered() const { return answered_; }

    void start(MainLoop& mainLoop, const std::string& program, const std::string& address) {
        constexpr auto kFlags =
            static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_SILENCE);
        const char* const arguments[] = {program.c_str(), address.c_str(), nullptr};
        process_ = g_subprocess_newv(arguments, kFlags, nullptr);
        if (!process_) {
            timeout_ = mainLoop.after(Duration{}, [this] { end(HttpFailure{"The request could not be sent."}); });
            return;
        }
        g_subprocess_communicate_async(
            process_, nullptr, nullptr,
            [](GObject* source, GAsyncResult* result, gpointer data) {
                const std::unique_ptr<Handle> handle(static_cast<Handle*>(data));
                GBytes* output = nullptr;
                g_subprocess_communicate_finish(G_SUBPROCESS(source), result, &output, nullptr, nullptr);
                if (handle->watch.isAlive()) handle->request->read(output);
                if (output) g_bytes_unref(output);
            },
            new Handle{lifetime_.watch(), this});
    }

private:
    struct Handle {
        Lifetime::Watch watch;
        Request* request;
    };

    void read(GBytes* output) {
        gsize size = 0;
        const void* const data = output ? g_bytes_get_data(output, &size) : nullptr;
        end(answerFrom({static_cast<const char*>(data), data ? size : 0}));
    }

    void end(const HttpAnswer& answer) {
        const auto ended = ended_;  // destroys this
        ended(*this, answer);
    }

    std::function<void(HttpAnswer)> answered_;
    Ended ended_;
    GSubprocess* process_ = nullptr;
    Timer timeout_;
    Lifetime lifetime_;
};

FetchClient::FetchClient(MainLoop& mainLoop, std::filesystem::path program)
    : mainLoop_(mainLoop), program_(std::move(program)) {}

FetchClient::~FetchClient() = default;

void FetchClient::get(const std::string& address, Duration timeout, std::function<void(HttpAnswer)> answered) {
    const auto& request = requests_.emplace_back(
        std::make_unique<Request>(mainLoop_, timeout, std::move(answered),
                                  [this](Request& ended, const HttpAnswer& answer) { finish(ended, answer); }));
    request->start(mainLoop_, program_.string(), address);
}

void FetchClient::finish(Request& request, const HttpAnswer& answer) {
    const auto answered = request.answered();
    requests_.remove_if([&](const auto& one) { return one.get() == &request; });
    answered(answer);
}

}  // namespace morvel::x11
