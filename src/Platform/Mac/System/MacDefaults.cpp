// Reads and writes by key; what has no object is never written.
#include "Platform/Mac/System/MacDefaults.h"

#include "Platform/Mac/System/DefaultsObjects.h"

namespace morvel::mac {

std::optional<DefaultsValue> MacDefaults::object(const std::string& key) const {
    const NSString name = NSString::from(key);
    return name ? defaultsValueFrom(defaults_.at(name)) : std::nullopt;
}

void MacDefaults::set(const std::string& key, DefaultsValue value) {
    const NSString name = NSString::from(key);
    const Id object = objectFrom(value);
    if (name && object) defaults_.set(name, object);
}

void MacDefaults::remove(const std::string& key) {
    if (const NSString name = NSString::from(key)) defaults_.remove(name);
}

}  // namespace morvel::mac
