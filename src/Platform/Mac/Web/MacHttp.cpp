#include "Platform/Mac/Web/MacHttp.h"

#include <utility>

#include "Platform/Mac/apple/AppKit/Selectors.h"
#include "Platform/Mac/apple/Foundation/NSURLSession.h"
#include "Platform/Mac/objc/Subclass.h"

namespace morvel::mac {

namespace {

/// Gathers one answer. The session calls it on the main thread, the end once.
struct HttpDelegate {
    static constexpr const char* kClassName = "MorvelHttpDelegate";

    std::function<void(HttpAnswer)> answered;
    std::string body;
    std::string refusal;  // why we wanted no more of it

    void redirected(NSURLSession, NSURLSessionTask, NSHTTPURLResponse, NSURLRequest target,
                    Block<void(NSURLRequest)> goOn) {
        if (target.url().scheme().text() == "https") return goOn(target);
        refusal = "The server redirects to an address that is not secure.";
        goOn(NSURLRequest());
    }

    void received(NSURLSession, NSURLSessionDataTask task, NSData piece) {
        if (!refusal.empty()) return;
        if (piece.length() > HttpClient::kLargestBody - body.size()) {
            refusal = "The answer is too large.";
            return task.cancel();
        }
        const auto bytes = piece.bytes();
        body.append(bytes.begin(), bytes.end());
    }

    void completed(NSURLSession, NSURLSessionTask task, NSError error) {
        const auto call = std::exchange(answered, nullptr);
        if (!call) return;
        if (!refusal.empty()) return call(HttpFailure{refusal});
        if (error) return call(HttpFailure{error.localizedDescription().text()});
        HttpResponse response{std::nullopt, std::move(body)};
        if (const auto http = objc::as<NSHTTPURLResponse>(task.response()))
            response.status = static_cast<int>(http.statusCode());
        call(std::move(response));
    }

    static NSObject make(std::function<void(HttpAnswer)> answered) {
        using Class = objc::Subclass<HttpDelegate>;
        [[maybe_unused]] static const objc::RawClass registered =
            Class("NSObject")
                .adopts("NSURLSessionDataDelegate")
                .overrides<&HttpDelegate::redirected>(selectors::willPerformHTTPRedirection)
                .overrides<&HttpDelegate::received>(selectors::didReceiveData)
                .overrides<&HttpDelegate::completed>(selectors::didCompleteWithError)
                .registered();
        auto delegate = std::make_unique<HttpDelegate>();
        delegate->answered = std::move(answered);
        return Class::create<NSObject>(std::move(delegate), selectors::init);
    }
};

}  // namespace

void MacHttp::get(const std::string& address, Duration timeout, std::function<void(HttpAnswer)> answered) {
    const auto alive = lifetime_.whileAlive(std::move(answered));
    const NSURL url = NSURL::parse(address);
    if (!url) return mainLoop_.post([alive] { alive(HttpFailure{"This is no web address."}); });
    const double seconds = std::chrono::duration<double>(timeout).count();
    const auto configuration = NSURLSessionConfiguration::ephemeral();
    configuration.setTimeoutIntervalForResource(seconds);
    const NSURLSession session =
        NSURLSession::from(configuration, HttpDelegate::make(alive), NSOperationQueue::mainQueue());
    session.dataTask(NSURLRequest::from(url, NSURLRequestReloadIgnoringLocalCacheData, seconds)).resume();
    session.finishTasksAndInvalidate();
}

}  // namespace morvel::mac
