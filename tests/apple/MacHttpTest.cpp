// Requests to web servers, played by the test: what is asked, and what becomes of each kind of answer.
#include "Platform/Mac/Web/MacHttp.h"

#include "Platform/Mac/MacHost.h"
#include "Platform/Mac/apple/Foundation/NSProcessInfo.h"
#include "Platform/Mac/apple/Foundation/NSURLSession.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Properties.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

using namespace std::chrono_literals;

class HttpOfTheMac : public RuntimeTest {
protected:
    HttpOfTheMac() {
        // Unlike most delegates a session's is kept by it.
        runtime().script("NSURLSession", "+sessionWithConfiguration:delegate:delegateQueue:", [this](Invocation& i) {
            delegate = Id(i.object(1));
            i.answerObject(Id(objc::kAdopt, runtime().allocate(runtime().classNamed("NSURLSession"))));
        });
        runtime().script("NSURLSession", "dataTaskWithRequest:", [this](Invocation& i) {
            session = NSURLSession(Id(i.receiver()));
            request = NSURLRequest(Id(i.object(0)));
            task = NSURLSessionDataTask(
                Id(objc::kAdopt, runtime().allocate(runtime().classNamed("NSURLSessionDataTask"))));
            i.answerObject(task);
        });
    }
    ~HttpOfTheMac() override {
        delegate = {};
        session = {};
        request = {};
        task = {};
    }

    void ask(const std::string& address = "https://example.org/version.json") {
        answer.reset();
        http.get(address, 10s, [this](const HttpAnswer& given) { answer = given; });
        EXPECT_FALSE(answer) << "inside the call";
    }
    template <typename... Arguments>
    void tell(const char* message, const Arguments&... arguments) {
        const objc::AutoreleasePool pool;
        objc::sendRaw<void, Arguments...>(delegate.raw(), objc::sel_registerName(message), arguments...);
    }
    void receive(const std::string& piece) {
        tell("URLSession:dataTask:didReceiveData:", session, task,
             NSData::from(std::vector<std::uint8_t>(piece.begin(), piece.end())));
    }
    void complete(std::optional<NSInteger> status, const std::string& error = "") {
        if (status) {
            const Id response(objc::kAdopt, runtime().allocate(runtime().classNamed("NSHTTPURLResponse")));
            setProperty(response.raw(), "statusCode", *status);
            setProperty(task.raw(), "response", response.raw());
        }
        NSError failure;
        if (!error.empty()) {
            failure = NSError(Id(objc::kAdopt, runtime().allocate(runtime().classNamed("NSError"))));
            setProperty(failure.raw(), "localizedDescription", makeString(error).raw());
        }
        tell("URLSession:task:didCompleteWithError:", session, task, failure);
    }
    /// Where the request goes on to after the redirection; nothing for nowhere.
    std::optional<std::string> redirect(const std::string& target) {
        std::optional<std::string> followed;
        const Block<void(NSURLRequest)> goOn([&](const NSURLRequest& to) {
            if (to) followed = to.url().absoluteString().text();
        });
        const NSURLRequest next = NSURLRequest::from(NSURL::parse(target), 0, 1);
        setProperty(next.raw(), "URL", NSURL::parse(target).raw());
        tell("URLSession:task:willPerformHTTPRedirection:newRequest:completionHandler:", session, task,
             NSHTTPURLResponse(), next, goOn);
        return followed;
    }
    std::string outcome() {
        if (!answer) return "none";
        if (const auto* failure = std::get_if<HttpFailure>(&*answer)) return failure->text;
        const auto& response = std::get<HttpResponse>(*answer);
        return (response.status ? std::to_string(*response.status) : "?") + " " + response.body;
    }

    MacMainLoop loop;
    Id delegate;
    MacHttp http{loop};
    NSURLSession session;
    NSURLRequest request;
    NSURLSessionDataTask task;
    std::optional<HttpAnswer> answer;
};

TEST_F(HttpOfTheMac, AsksOnceWithoutCacheAndHandsOverTheAnswer) {
    ask();
    EXPECT_EQ(property<NSUInteger>(request.raw(), "cachePolicy"), 1U);
    EXPECT_EQ(property<double>(request.raw(), "timeoutInterval"), 10);
    const auto names = runtime().callNames();
    EXPECT_EQ(std::ranges::count(names, "NSURLSessionDataTask resume"), 1);
    EXPECT_EQ(std::ranges::count(names, "NSURLSession finishTasksAndInvalidate"), 1) << "it would never let go";
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
    EXPECT_FALSE(std::ranges::count(runtime().callNames(), "NSURLSessionDataTask cancel"));
    receive("y");
    EXPECT_TRUE(std::ranges::count(runtime().callNames(), "NSURLSessionDataTask cancel"));
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
    runtime().script("NSProcessInfo", "operatingSystemVersion", [](Invocation& i) {
        i.answer<NSOperatingSystemVersion>({14, 2, 1});
    });
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
