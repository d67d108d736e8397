// Walks the recorded cases of tests/data: each file is a list of {"name", "input", "expected"}, where a lenient case
// also lists every result that counts as right under "accept".
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "Platform/InstalledApplications.h"
#include "Settings/SettingsEnums.h"
#include "Util/Geometry.h"
#include "Util/Identity.h"

namespace morvel::vectors {

using Json = nlohmann::json;

inline Json load(const std::string& name) {
    std::ifstream file(std::string(MORVEL_TEST_DATA) + "/" + name + ".json");
    EXPECT_TRUE(file) << "no recorded cases of that name: " << name;
    return file ? Json::parse(file) : Json::array();
}

/// Equal values, numbers within 1e-9.
inline bool same(const Json& a, const Json& b) {
    if (a.is_number() && b.is_number()) return std::abs(a.get<double>() - b.get<double>()) <= 1e-9;
    if (a.type() != b.type() || a.size() != b.size()) return false;
    if (a.is_array()) return std::equal(a.begin(), a.end(), b.begin(), same);
    if (!a.is_object()) return a == b;
    for (const auto& [key, value] : a.items())
        if (!b.contains(key) || !same(value, b[key])) return false;
    return true;
}

/// Runs `answer` on every case's input and compares the whole result.
template <class Answer>
void walk(const std::string& name, const Answer& answer) {
    int cases = 0;
    for (const Json& test : load(name)) {
        ++cases;
        const Json got = answer(test["input"]);
        bool accepted = same(got, test["expected"]);
        if (test.contains("accept"))
            for (const Json& other : test["accept"]) accepted = accepted || same(got, other);
        EXPECT_TRUE(accepted) << name << ": " << test["name"] << "\ninput    " << test["input"] << "\nexpected "
                              << test["expected"] << "\ngot      " << got;
    }
    EXPECT_GT(cases, 0) << name;
}

/// The window id that stands for a number in the recorded cases.
inline WindowID windowID(uint64_t n) {
    return {0, n};
}
inline uint64_t number(const WindowID& id) {
    return id.low;
}

// --- What several kinds of cases have in common ---
template <class T>
std::optional<T> optional(const Json& value) {
    return value.is_null() ? std::nullopt : std::optional(value.get<T>());
}
/// A case of an enumeration by its stored text.
template <class E>
E choice(const Json& raw) {
    return fromRawString<E>(raw.get<std::string>()).value();
}
template <class Space>
Rect<Space> rect(const Json& r) {
    return {r[0], r[1], r[2], r[3]};
}
/// An application's Info.plist; keys of a wrong type count as missing.
inline ApplicationBundle bundle(const Json& info) {
    const auto text = [&info](const char* key) {
        const Json value = info.is_object() ? info.value(key, Json()) : Json();
        return value.is_string() ? std::optional(value.get<std::string>()) : std::nullopt;
    };
    return {.identifier = text("CFBundleIdentifier"),
            .displayName = text("CFBundleDisplayName"),
            .name = text("CFBundleName")};
}
template <class Space>
Json json(const Rect<Space>& r) {
    return {r.x, r.y, r.width, r.height};
}

}  // namespace morvel::vectors
