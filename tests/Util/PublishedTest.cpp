#include "Util/Published.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace morvel {

TEST(Signal, SurvivesWhatItsListenersDo) {
    auto signal = std::make_unique<Signal<int>>();
    std::string log;
    Subscriptions tokens(4);
    Subscription late;
    tokens[0] = signal->subscribe([&](int n) {
        log += "a" + std::to_string(n);
        tokens[2].reset();  // one that is still to be called
        if (!late) late = signal->subscribe([&](int m) { log += "+" + std::to_string(m); });
    });
    tokens[1] = signal->subscribe([&, owned = std::string("long enough to live on the heap")](int) {
        tokens[1].reset();  // itself
        log += owned.front();
    });
    tokens[2] = signal->subscribe([&](int) { log += "never"; });
    tokens[3] = signal->subscribe([&](int n) {
        log += "d";
        if (n == 1) signal->emit(2);
    });
    signal->emit(1);
    EXPECT_EQ(log, "a1lda2d+2") << "the new listener hears the emission that began after it came, and no earlier one";

    log.clear();
    tokens[3] = signal->subscribe([&](int) { signal.reset(); });
    late = signal->subscribe([&](int) { log += "after the end"; });
    signal->emit(3);
    EXPECT_EQ(log, "a3after the end") << "destroying the signal does not end the round that runs";
    tokens.clear();  // tokens of a signal that is gone
}

TEST(Published, SubscribersGetTheValueOfTheirRound) {
    Published<int> value(1);
    std::vector<int> first, second;
    const Subscription a = value.subscribe([&](int v) {
        first.push_back(v);
        EXPECT_EQ(value.value(), v) << "stored before it is told";
        if (v == 2) value.set(3);
    });
    const Subscription b = value.subscribe([&](int v) { second.push_back(v); }, Current::Skip);
    value.set(2);
    value.set(3);
    EXPECT_EQ(first, (std::vector{1, 2, 3, 3})) << "equal values are told too";
    EXPECT_EQ(second, (std::vector{3, 2, 3})) << "the later value first, then this round goes on";
}

TEST(Published, MayBeDestroyedByASubscriber) {
    auto value = std::make_unique<Published<std::string>>("a");
    std::string seen;
    const Subscription a = value->subscribe([&](const std::string&) { value.reset(); }, Current::Skip);
    const Subscription b = value->subscribe([&](const std::string& text) { seen = text; }, Current::Skip);
    value->set("a text long enough to live on the heap");
    EXPECT_EQ(seen, "a text long enough to live on the heap");
}

TEST(Signal, KnowsWithinAnEmissionThatItsLastListenerHasGone) {
    Signal<> signal;
    Subscription only;
    bool isHeard = true;
    only = signal.subscribe([&] {
        only.reset();
        isHeard = signal.hasListeners();  // on which whoever keeps a signal per window forgets it
    });
    EXPECT_TRUE(signal.hasListeners());
    signal.emit();
    EXPECT_FALSE(isHeard);
}

}  // namespace morvel
