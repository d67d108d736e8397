// Requests to web servers, played by the test: what is asked, and what becomes of each kind of answer.
#include "Platform/Mac/Web/MacHttp.h"

#include "Platform/Mac/MacHost.h"
#include "Platform/Mac/apple/Foundation/NSProcessInfo.h"
#include "Platform/Mac/apple/Foundation/NSURLSession.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

class HttpOfTheMac : public RuntimeTest {
protected:
    HttpOfTheMac() {
        // Unlike most delegates a session's is kept by it.
        runtime().script("NSURLSession", "+sessionWithConfiguration:delegate:delegateQueue:", [this](Invocation& i) {
            delegate = Id(i.object(1));
            i.answerObject(runtime().make("NSURLSession"));
        });
        runtime().script("NSURLSession", "dataTaskWithRequest:", [this](Invocation& i) {
            session = Id(i.receiver());
            request = Id(i.object(0));
            task = runtime().make("NSURLSessionDataTask");
            i.answerObject(task);
        });
    }
    ~HttpOfTheMac() override { delegate = session = request = task = {}; }

    void ask(const std::string& address = "https://example.org/version.json") {
        given.reset();
        http.get(address, 10s, [this](const HttpAnswer& answered) { given = answered; });
        EXPECT_FALSE(given) << "inside the call";
    }
    void receive(const std::string& piece) {
        const objc::AutoreleasePool pool;
        tell(delegate, "URLSession:dataTask:didReceiveData:", session, task,
             NSData::from(std::vector<std::uint8_t>(piece.begin(), piece.end())));
    }
    void complete(std::optional<NSInteger> status, const std::string& error = "") {
        const objc::AutoreleasePool pool;
        if (status) {
            const Id response = runtime().make("NSHTTPURLResponse");
            setProperty(response, "statusCode", *status);
            setProperty(task, "response", response);
        }
        Id failure;
        if (!error.empty()) {
            failure = runtime().make("NSError");
            setProperty(failure, "localizedDescription", makeString(error));
        }
        tell(delegate, "URLSession:task:didCompleteWithError:", session, task, failure);
    }
    /// Where the request goes on to after the redirection; nothing for nowhere.
    std::optional<std::string> redirect(const std::string& target) {
        const objc::AutoreleasePool pool;
        std::optional<std::string> followed;
        const Block<void(NSURLRequest)> goOn([&](const NSURLRequest& to) {
            if (to) followed = to.url().absoluteString().text();
        });
        const NSURLRequest next = NSURLRequest::from(NSURL::parse(target), 0, 1);
        setProperty(next, "URL", NSURL::parse(target));
        tell(delegate, "URLSession:task:willPerformHTTPRedirection:newRequest:completionHandler:", session, task,
             NSHTTPURLResponse(), next, goOn);
        return followed;
    }
    std::string outcome() {
        if (!given) return "none";
        if (const auto* failure = std::get_if<HttpFailure>(&*given)) return failure->text;
        const auto& response = std::get<HttpResponse>(*given);
        return (response.status ? std::to_string(*response.status) : "?") + " " + response.body;
    }

    MacMainLoop loop;
    MacHttp http{loop};
    Id delegate, session, request, task;
    std::optional<HttpAnswer> given;
};

TEST_F(HttpOfTheMac, AsksOnceWithoutCacheAndHandsOverTheAnswer) {
    ask();
    EXPECT_EQ(property<NSUInteger>(request, "cachePolicy"), 1U);
    EXPECT_EQ(property<double>(request, "timeoutInterval"), 10);
    EXPECT_EQ(callsOf("NSURLSessionDataTask resume"), 1);
    EXPECT_EQ(callsOf("NSURLSession finishTasksAndInvalidate"), 1) << "it would never let go";
    receive("{\"a\":");
    receive(std::string(" \0}", 3));
    complete(404);
    EXPECT_EQ(outcome(), std::string("404 {\"a\": \0}", 12));
    ask();
    complete(std::nullopt);
    EXPECT_EQ(outcome(), "? ");
    ask();
    complete(std::nullopt, "The network is down.");
    EXPECT_EQ(outcome(), "The network is down.");
    ask("no address");
    dispatch().runPending();
    EXPECT_EQ(outcome(), "This is no web address.");
}

TEST_F(HttpOfTheMac, RefusesWhatIsTooLargeOrLeadsToAnInsecureAddress) {
    ask();
    receive(std::string(HttpClient::kLargestBody, 'x'));
    EXPECT_EQ(callsOf("NSURLSessionDataTask cancel"), 0);
    receive("y");
    EXPECT_EQ(callsOf("NSURLSessionDataTask cancel"), 1);
    receive("z");
    complete(200, "cancelled");
    EXPECT_EQ(outcome(), "The answer is too large.");
    ask();
    EXPECT_EQ(redirect("https://example.org/there"), "https://example.org/there");
    EXPECT_EQ(redirect("http://example.org/there"), std::nullopt);
    complete(301);
    EXPECT_EQ(outcome(), "The server redirects to an address that is not secure.");
}

TEST_F(HttpOfTheMac, TheVersionsAreReadFromBundleAndSystem) {
    runtime().script("NSBundle", "objectForInfoDictionaryKey:", [](Invocation& i) {
        if (textOf(i.object(0)) == "CFBundleShortVersionString") i.answerObject(makeString("1.2.3"));
    });
    answer("NSProcessInfo", "operatingSystemVersion", NSOperatingSystemVersion{14, 2, 1});
    const objc::AutoreleasePool pool;
    {
        MacHost host;
        const Platform platform = host.platform();
        EXPECT_EQ(platform.programVersion, "1.2.3");
        EXPECT_EQ(platform.systemVersion, "14.2.1");
    }
    runtime().script("NSBundle",
                     "objectForInfoDictionaryKey:", [](Invocation& i) { i.answerObject(makeNumber(true)); });
    MacHost host;
    EXPECT_EQ(host.platform().programVersion, std::nullopt) << "no text";
}

}  // namespace
}  // namespace morvel::mac::checked
