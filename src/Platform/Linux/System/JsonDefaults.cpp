#include "Platform/Linux/System/JsonDefaults.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>

#include "Platform/AtomicFile.h"
#include "Platform/Linux/System/DefaultsJson.h"

namespace morvel::x11 {

namespace {

constexpr size_t kLargestFile = 16 << 20;  // a thousand times what the settings need
constexpr int kIndent = 2;                 // people edit the file

// Not an object where the text is not JSON, or so deeply nested that handling it would exhaust the stack.
nlohmann::json parseShallow(const std::string& text) {
    constexpr int kDeepest = 256;
    bool isTooDeep = false;
    const auto notice = [&isTooDeep](int depth, nlohmann::json::parse_event_t, nlohmann::json&) {
        isTooDeep |= depth > kDeepest;
        return !isTooDeep;
    };
    auto json = nlohmann::json::parse(text, notice, false);
    return isTooDeep ? nlohmann::json() : json;
}

}  // namespace

JsonDefaults::JsonDefaults(std::string path, MainLoop& mainLoop, Log& log)
    : path_(std::move(path)), mainLoop_(mainLoop), log_(log) {
    read();
}

JsonDefaults::~JsonDefaults() {
    flush();
}

std::string JsonDefaults::defaultPath() {
    const char* config = std::getenv("XDG_CONFIG_HOME");
    const char* home = std::getenv("HOME");
    // A relative folder is to be ignored, says the base directory convention.
    const std::string folder = config && config[0] == '/' ? config : std::string(home ? home : "") + "/.config";
    return folder + "/morvel/defaults.json";
}

void JsonDefaults::read() {
    const auto content = readFile(path_, kLargestFile);
    if (!content) {
        if (errno != ENOENT && errno != ENOTDIR) setAside(std::strerror(errno));
        return;
    }
    const auto json = parseShallow(*content);
    if (!json.is_object()) return setAside("it is not a JSON object");
    for (const auto& [key, item] : json.items()) {
        if (auto value = fromJson(item))
            values_.emplace(key, std::move(*value));
        else
            foreign_.emplace(key, item.dump());
    }
}

// Never overwritten: it may hold a person's settings, mistyped by hand or written by a newer version.
void JsonDefaults::setAside(const std::string& why) {
    std::string aside;
    int number = 1;
    do aside = path_ + ".unreadable-" + std::to_string(number++);
    while (::access(aside.c_str(), F_OK) == 0);
    const bool isMoved = std::rename(path_.c_str(), aside.c_str()) == 0;
    log_.error("cannot read " + path_ + " (" + why + "); " +
               (isMoved ? "kept as " + aside : "it stays as it is and nothing is saved"));
    // What can be neither read nor moved must not be replaced either.
    hasComplained_ = isUnmovable_ = !isMoved;
}

std::optional<DefaultsValue> JsonDefaults::object(const std::string& key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

void JsonDefaults::set(const std::string& key, DefaultsValue value) {
    const auto found = values_.find(key);
    if (found != values_.end() && found->second == value) return;
    foreign_.erase(key);
    values_[key] = std::move(value);
    changed();
}

void JsonDefaults::remove(const std::string& key) {
    if (values_.erase(key) + foreign_.erase(key) > 0) changed();
}

void JsonDefaults::changed() {
    if (std::exchange(isDirty_, true)) return;
    writing_ = mainLoop_.after({}, [this] { flush(); });
}

void JsonDefaults::flush() {
    if (!std::exchange(isDirty_, false) || isUnmovable_) return;
    nlohmann::json json = nlohmann::json::object();
    for (const auto& [key, text] : foreign_) json[key] = nlohmann::json::parse(text);
    for (const auto& [key, value] : values_) json[key] = toJson(value);
    // Texts that are not UTF-8 come from other programs' titles and names; they are written as well as can be.
    const auto text = json.dump(kIndent, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
    if (replaceFile(path_, text)) {
        hasComplained_ = false;
    } else if (!std::exchange(hasComplained_, true)) {
        log_.error("cannot write " + path_ + ": " + std::strerror(errno));
    }
}

}  // namespace morvel::x11
