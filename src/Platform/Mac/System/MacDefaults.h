// The application's own domain of the user defaults.
#pragma once

#include "Platform/Mac/apple/Foundation/NSUserDefaults.h"
#include "Platform/UserDefaults.h"

namespace morvel::mac {

/// The system keeps the values in memory and writes them out whole by itself, also when this process is killed.
class MacDefaults : public UserDefaults {
public:
    explicit MacDefaults(NSUserDefaults defaults = NSUserDefaults::standard()) : defaults_(std::move(defaults)) {}

    std::optional<DefaultsValue> object(const std::string& key) const override;
    /// A value that the system cannot hold (text that is not UTF-8) leaves the old one in place.
    void set(const std::string& key, DefaultsValue value) override;
    void remove(const std::string& key) override;

private:
    NSUserDefaults defaults_;
};

}  // namespace morvel::mac
