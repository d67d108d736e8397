// Stored values through the system's objects and back, with their types, and what other programs may have stored.
#include "Platform/Mac/System/MacDefaults.h"

#include "Platform/Mac/System/DefaultsObjects.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

class DefaultsOfTheMac : public RuntimeTest {
protected:
    /// Stores an object as another program would, and reads it.
    std::optional<DefaultsValue> read(const Id& object) {
        NSUserDefaults::standard().set(NSString::from("key"), object);
        return defaults_.object("key");
    }

    MacDefaults defaults_;
};

TEST_F(DefaultsOfTheMac, ValuesComeBackWithTheirTypes) {
    const std::vector<DefaultsValue> values = {
        {true},
        {false},
        {std::int64_t{1}},
        {std::int64_t{-9'007'199'254'740'993}},  // no double holds it
        {1.0},
        {0.25},
        {std::string("Fenêtre")},
        {std::string()},
        {Date(std::chrono::duration<double>(1'700'000'000.5))},
        {Data{0, 255, 7}},
        {Data{}},
        {DefaultsArray{{std::int64_t{1}}, {true}, {DefaultsArray{}}}},
        {DefaultsDictionary{{"name", {std::string("Notes")}}, {"inner", {DefaultsDictionary{{"on", {true}}}}}}},
    };
    for (std::size_t i = 0; i < values.size(); ++i) {
        defaults_.set("key", values[i]);
        const auto back = defaults_.object("key");
        ASSERT_TRUE(back) << "value " << i;
        EXPECT_EQ(back->value.index(), values[i].value.index()) << "value " << i;
        EXPECT_EQ(*back, values[i]) << "value " << i;
    }
    defaults_.remove("key");
    EXPECT_EQ(defaults_.object("key"), std::nullopt);
    EXPECT_EQ(defaults_.object("never written"), std::nullopt);
}

TEST_F(DefaultsOfTheMac, WhatIsWrittenIsWhatOtherProgramsRead) {
    for (const auto& [value, stored] :
         {std::pair{DefaultsValue{44.0}, Number(44.0)}, {DefaultsValue{true}, Number(true)}}) {  // not the number 1
        defaults_.set("key", value);
        EXPECT_EQ(held<Number>(NSUserDefaults::standard().at(NSString::from("key"))), stored);
    }
}

TEST_F(DefaultsOfTheMac, StrangeObjectsAreLeftOut) {
    const Id strange = runtime().make("NSObject");
    EXPECT_EQ(read(strange), std::nullopt);
    EXPECT_EQ(read(makeArray({strange, makeNumber(true)})), (DefaultsValue{DefaultsArray{{true}}}));
    EXPECT_EQ(read(makeDictionary({{makeString("a"), strange}, {makeNumber(std::int64_t{1}), makeNumber(true)}})),
              (DefaultsValue{DefaultsDictionary{}}))
        << "neither the strange value nor the one under a number";
}

TEST_F(DefaultsOfTheMac, TextThatIsNotUTF8ReplacesNothing) {
    // The system refuses to make such a string.
    runtime().script("NSString", "initWithBytes:length:encoding:", [](Invocation& i) {
        const auto* const bytes = static_cast<const char*>(i.argument<const void*>(0));
        const std::string text(bytes, i.argument<std::uint64_t>(1));
        if (text.find('\xFF') != std::string::npos) return runtime().release(i.receiver());
        setPayload(i.receiver(), text);
        i.answer<RawObject>(i.receiver());
    });
    defaults_.set("key", {std::string("old")});
    defaults_.set("key", {std::string("\xFF")});
    EXPECT_EQ(defaults_.object("key"), (DefaultsValue{std::string("old")}));
    defaults_.set("\xFF", {true});
    EXPECT_EQ(defaults_.object("\xFF"), std::nullopt);
    defaults_.remove("\xFF");
    defaults_.set("key", {DefaultsArray{{std::string("\xFF")}, {true}}});
    EXPECT_EQ(defaults_.object("key"), (DefaultsValue{DefaultsArray{{true}}}));
}

}  // namespace
}  // namespace morvel::mac::checked
