// The application's persistent values in one JSON file of the person's configuration folder.
#pragma once

#include <map>
#include <string>

#include "Platform/Log.h"
#include "Platform/MainLoop.h"
#include "Platform/UserDefaults.h"

namespace morvel::x11 {

/// Reads the file once, at construction. What was set in one turn of the loop is written in one go at its end, and
/// what is left at destruction then: to a new file that takes the old one's place, so a crash leaves one or the other.
/// A file that is not a JSON object is renamed out of the way. A folder that cannot be written costs one log line; the
/// values then live as long as the program.
class JsonDefaults : public UserDefaults {
public:
    /// `mainLoop` and `log` outlive this.
    JsonDefaults(std::string path, MainLoop& mainLoop, Log& log);
    ~JsonDefaults() override;
    JsonDefaults(const JsonDefaults&) = delete;
    JsonDefaults& operator=(const JsonDefaults&) = delete;

    std::optional<DefaultsValue> object(const std::string& key) const override;
    void set(const std::string& key, DefaultsValue value) override;
    void remove(const std::string& key) override;

    /// Writes now what is not written yet.
    void flush();

    /// `morvel/defaults.json` under XDG_CONFIG_HOME, or under ~/.config.
    static std::string defaultPath();

private:
    void read();
    void setAside(const std::string& why);
    void changed();

    const std::string path_;
    MainLoop& mainLoop_;
    Log& log_;
    DefaultsDictionary values_;
    std::map<std::string, std::string> foreign_;  // entries that are no value of ours, as JSON texts, kept as they are
    bool isDirty_ = false;
    bool hasComplained_ = false;  // about the last attempt to write
    bool isUnmovable_ = false;    // an unreadable file that could not be moved out of the way is never replaced
    Timer writing_;
};

}  // namespace morvel::x11
