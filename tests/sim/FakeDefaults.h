// A defaults store in memory that a test fills and reads directly.
#pragma once

#include <utility>

#include "Platform/UserDefaults.h"

namespace morvel::sim {

class FakeDefaults : public UserDefaults {
public:
    std::optional<DefaultsValue> object(const std::string& key) const override {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    void set(const std::string& key, DefaultsValue value) override {
        values.insert_or_assign(key, std::move(value));
        ++writes;
    }
    void remove(const std::string& key) override {
        values.erase(key);
        ++writes;
    }

    DefaultsDictionary values;
    int writes = 0;  ///< calls of `set` and `remove` so far
};

}  // namespace morvel::sim
