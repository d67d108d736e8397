#include "Platform/Linux/System/JsonDefaults.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "sim/FakeMainLoop.h"
#include "sim/SimLog.h"
#include "x11/TemporaryFolder.h"

namespace morvel::x11 {
namespace {

class JsonDefaultsTest : public testing::Test {
protected:
    std::unique_ptr<JsonDefaults> open() { return std::make_unique<JsonDefaults>(path, loop, log); }
    void writeFile(const std::string& content) { folder.write("morvel/defaults.json", content); }
    nlohmann::json fileAsJson() { return nlohmann::json::parse(folder.read("morvel/defaults.json")); }
    void endTurn() { loop.advance({}); }

    TemporaryFolder folder;
    const std::string path = folder.at("morvel/defaults.json");
    sim::FakeMainLoop loop;
    sim::SimLog log;
};

TEST_F(JsonDefaultsTest, EveryKindOfValueComesBackAsItWasStored) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const DefaultsDictionary values{
        {"truth", {true}},
        {"whole", {int64_t{44}}},
        {"largest", {std::numeric_limits<int64_t>::max()}},
        {"least", {std::numeric_limits<int64_t>::min()}},
        {"a real that looks whole", {44.0}},
        {"fraction", {0.1 + 0.2}},
        {"infinite", {-kInfinity}},
        {"text", {std::string("\xC3\xBC \"quoted\"\n")}},
        {"date", {Date(std::chrono::duration<double>(1234567890.123456))}},
        {"data", {Data{0, 255, 10, 13}}},
        {"no data", {Data{}}},
        {"array", {DefaultsArray{{int64_t{1}}, {1.5}, {std::string("x")}}}},
        {"dictionary", {DefaultsDictionary{{"inner", {false}}}}},
        {"looks like a date", {DefaultsDictionary{{"$date", {int64_t{5}}}}}},
        {"looks wrapped", {DefaultsDictionary{{"$dictionary", {DefaultsDictionary{{"$date", {int64_t{5}}}}}}}}},
    };
    {
        const auto defaults = open();
        for (const auto& [key, value] : values) defaults->set(key, value);
        defaults->set("nan", {std::nan("")});
    }
    const auto defaults = open();
    for (const auto& [key, value] : values) EXPECT_EQ(defaults->object(key), value) << key;
    const auto nan = defaults->object("nan");
    ASSERT_TRUE(nan && std::holds_alternative<double>(nan->value));
    EXPECT_TRUE(std::isnan(std::get<double>(nan->value)));
    EXPECT_EQ(defaults->object("absent"), std::nullopt);
    EXPECT_TRUE(log.errors.empty());
}

TEST_F(JsonDefaultsTest, ATurnsChangesAreWrittenTogetherAtItsEnd) {
    const auto defaults = open();
    defaults->set("a", {int64_t{1}});
    defaults->set("b", {int64_t{2}});
    EXPECT_EQ(loop.armedTimers(), 1u);
    EXPECT_FALSE(std::filesystem::exists(path));
    endTurn();
    EXPECT_EQ(fileAsJson(), (nlohmann::json{{"a", 1}, {"b", 2}}));
    defaults->set("a", {int64_t{1}});
    EXPECT_EQ(loop.armedTimers(), 0u) << "what is stored already needs no writing";
    defaults->remove("a");
    endTurn();
    EXPECT_EQ(fileAsJson(), (nlohmann::json{{"b", 2}}));
}

TEST_F(JsonDefaultsTest, UnreadableFilesAreKeptAsideAndNeverOverwritten) {
    const std::string deep(100'000, '[');
    int number = 0;
    for (const std::string& bad : {std::string("{\"barHeight\": 40"), std::string("[1, 2]"), std::string(), deep,
                                   std::string("{\"a\": \"\xFF\"}"), "{\"a\": " + deep + "}"}) {
        writeFile(bad);
        const size_t before = log.errors.size();
        const auto defaults = open();
        EXPECT_EQ(log.errors.size(), before + 1) << "one line for " << bad.substr(0, 20);
        EXPECT_EQ(defaults->object("barHeight"), std::nullopt);
        defaults->set("barHeight", {30.0});
        endTurn();
        EXPECT_EQ(fileAsJson(), (nlohmann::json{{"barHeight", 30.0}}));
        EXPECT_EQ(folder.read("morvel/defaults.json.unreadable-" + std::to_string(++number)), bad);
    }
}

TEST_F(JsonDefaultsTest, EntriesThatAreNoValuesOfOursSurviveTheirFile) {
    writeFile(R"({"later": {"$new": 1}, "nothing": null, "huge": 18446744073709551615, "barEdge": "top"})");
    const auto defaults = open();
    EXPECT_EQ(defaults->object("later"), std::nullopt);
    EXPECT_EQ(defaults->object("huge"), std::nullopt);
    defaults->set("nothing", {std::string("now ours")});
    endTurn();
    const auto json = fileAsJson();
    EXPECT_EQ(json["later"], (nlohmann::json{{"$new", 1}}));
    EXPECT_EQ(json["huge"], 18446744073709551615u);
    EXPECT_EQ(json["nothing"], "now ours");
    EXPECT_EQ(json["barEdge"], "top");
}

TEST_F(JsonDefaultsTest, AFolderThatCannotBeWrittenCostsOneLineAndNoValue) {
    folder.write("morvel", "a file where the folder should be");
    const auto defaults = open();
    EXPECT_TRUE(log.errors.empty());
    for (int64_t i = 0; i < 3; ++i) {
        defaults->set("a", {i});
        endTurn();
    }
    EXPECT_EQ(log.errors.size(), 1u);
    EXPECT_EQ(defaults->object("a"), (DefaultsValue{int64_t{2}}));
}

TEST_F(JsonDefaultsTest, ReplacesTheFileALinkLeadsTo) {
    const std::string target = folder.write("dotfiles/morvel.json", "{\"a\": 1}");
    std::filesystem::create_directories(folder.at("morvel"));
    std::filesystem::create_symlink(target, path);
    open()->set("a", {int64_t{2}});
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(nlohmann::json::parse(folder.read("dotfiles/morvel.json")), (nlohmann::json{{"a", 2}}));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.at("dotfiles")), {}), 1) << "nothing left over";
}

}  // namespace
}  // namespace morvel::x11
