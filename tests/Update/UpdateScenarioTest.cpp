// The whole program looks for a new release by itself, once a day, and tells what it found.
#include "App/BarDesktop.h"
#include "Update/UpdateChecker.h"

namespace morvel {
namespace {

TEST(Updates, AreLookedForAfterTheStartAndOncePerDay) {
    BarDesktop desktop;
    desktop.web().answer = sim::release("2.0.0");
    desktop.startMorvel();
    desktop.run(4999ms);
    EXPECT_TRUE(desktop.web().requests.empty()) << "the bars come first";
    desktop.run(1ms);
    ASSERT_EQ(desktop.web().requests.size(), 1U);
    EXPECT_TRUE(desktop.web().requests[0].starts_with("https://")) << desktop.web().requests[0];
    EXPECT_TRUE(desktop.web().requests[0].ends_with("/version.json")) << desktop.web().requests[0];
    EXPECT_TRUE(desktop.delegate().updateController()->updateAvailable());
    desktop.run(24h);
    EXPECT_EQ(desktop.web().requests.size(), 1U);
    desktop.run(1h);
    EXPECT_EQ(desktop.web().requests.size(), 2U);

    desktop.quitMorvel();
    desktop.web().answer = HttpFailure{"The network is down."};
    desktop.startMorvel();
    EXPECT_TRUE(desktop.delegate().updateController()->updateAvailable()) << "known from the former run";
    desktop.delegate().updateController()->checkNow();
    desktop.settle();
    const auto failed = UpdateController::Status(UpdateController::Failed{"The network is down."});
    EXPECT_EQ(desktop.delegate().updateController()->status().value(), failed);
}

TEST(Updates, TwoChecksAtATimeEachHaveTheirOutcome) {
    BarDesktop desktop;
    desktop.defaults().set("updaterAutoCheckEnabled", {false});
    desktop.web().answer = sim::release("0.9.0");
    desktop.startMorvel();
    desktop.run(10s);
    UpdateController& controller = *desktop.delegate().updateController();
    EXPECT_TRUE(desktop.web().requests.empty()) << "switched off";
    int outcomes = 0;
    const auto count = [&](const UpdateController::Status& status) {
        outcomes += status == UpdateController::Status(UpdateController::UpToDate{});
    };
    const Subscription listening = controller.status().subscribe(count);
    controller.checkNow();
    controller.checkNow();
    desktop.settle();
    EXPECT_EQ(outcomes, 2);

    controller.checkNow();
    desktop.web().isSilent = true;
    controller.checkNow();
    desktop.quitMorvel();  // with one answer on its way and another that never comes
    desktop.settle();
    EXPECT_EQ(outcomes, 2);
}

TEST(Updates, AFurtherStartReplacesTheTickAndArmsNoFurtherFirstCheck) {
    BarDesktop desktop;
    desktop.defaults().set("updaterSkippedVersion", {std::string("02.0.0")});
    desktop.web().answer = sim::release("2.0.0");
    desktop.startMorvel();
    UpdateController& controller = *desktop.delegate().updateController();
    desktop.run(3s);
    controller.start();
    const auto& requests = desktop.web().requests;
    desktop.run(2s);
    EXPECT_EQ(requests.size(), 1U) << "five seconds after the first start";
    EXPECT_TRUE(controller.updateAvailable()) << "skipped is what has the same text";
    desktop.settings().updaterLastCheckedAt.set(std::nullopt);  // it is due
    desktop.run(10s);
    controller.start();
    desktop.run(1h - 1ms);
    EXPECT_EQ(requests.size(), 1U);
    desktop.run(1ms);
    EXPECT_EQ(requests.size(), 2U);
}

TEST(Updates, HostileDocumentsAreErrors) {
    const std::string good = sim::release("2.0.0").body;
    const auto read = [](const std::string& body) { return UpdateChecker::read(HttpResponse{200, body}); };
    const auto replaced = [&](const std::string& what, const std::string& by) {
        return std::string(good).replace(good.find(what), what.size(), by);
    };
    for (const std::string& bad :
         {std::string(1 << 20, '['), std::string("\xff\xfe{}"), good.substr(0, good.size() / 2),
          replaced("2.0.0", "2.0.\xc3"), replaced("https://example.com/d.zip", ""),
          replaced("https://example.com/d.zip", "https://example.com/\\n"), replaced("2024-05-01T12", "2024-02-30T12"),
          replaced("12:00:00Z", "12:00:60Z"), replaced("12:00:00Z", "12:00:00+24:00")})
        EXPECT_TRUE(std::holds_alternative<UpdateError>(read(bad))) << bad.substr(0, 200);
}

}  // namespace
}  // namespace morvel
