// An assistive program, as a screen reader is one: looks at other programs' objects, presses them and hears what
// happens.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "SessionBus.h"

namespace morvel::e2e {

/// An object of some program on the accessibility bus.
struct AccessibleObject {
    std::string program;  // its name on the bus
    std::string path;
};

class Assistant {
public:
    /// Hears changes of names and of children from now on. Throws std::runtime_error when the bus cannot be reached.
    explicit Assistant(const SessionBus& session);
    ~Assistant();

    std::optional<AccessibleObject> application(const std::string& name);
    /// The first object with this role ("push button") and name in the application.
    std::optional<AccessibleObject> find(const std::string& application, const std::string& role,
                                         const std::string& name);
    std::vector<AccessibleObject> childrenOf(const AccessibleObject& object);

    std::string nameOf(const AccessibleObject& object) { return text(object, "Name"); }
    std::string descriptionOf(const AccessibleObject& object) { return text(object, "Description"); }
    std::string roleOf(const AccessibleObject& object) { return answer(ask(object, "Accessible", "GetRoleName")); }
    std::string actionOf(const AccessibleObject& object) {
        return answer(ask(object, "Action", "GetLocalizedName", g_variant_new("(i)", 0)));
    }
    /// By AT-SPI's number of the state.
    bool hasState(const AccessibleObject& object, unsigned state);
    /// On the screen. Empty: it has no place.
    Box extentsOf(const AccessibleObject& object);
    /// Whether the first action was done.
    bool press(const AccessibleObject& object);

    /// Whether the program of the object told of such an event with this detail: "ChildrenChanged" "add", for instance.
    bool hasHeard(const AccessibleObject& of, const std::string& event, const std::string& detail);
    void forgetWhatWasHeard() { heard_.clear(); }
    /// The accessibility bus has ended.
    bool isCutOff() const { return g_dbus_connection_is_closed(bus_.get()); }

    static constexpr unsigned kSensitive = 24, kShowing = 25, kVisible = 30, kFocusable = 11;

private:
    struct Event {
        std::string program;
        std::string kind;
        std::string detail;
    };

    Variant ask(const AccessibleObject& object, const std::string& interface, const std::string& method,
                GVariant* arguments = nullptr);
    std::string text(const AccessibleObject& object, const char* property);
    /// The text of an answer that is one; empty without.
    static std::string answer(const Variant& reply);
    std::optional<AccessibleObject> findBelow(const AccessibleObject& top, const std::string& role,
                                              const std::string& name);

    BusConnection bus_;
    guint listening_ = 0;
    std::vector<Event> heard_;
};

}  // namespace morvel::e2e
