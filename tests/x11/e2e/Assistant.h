// An assistive program, as a screen reader is one: looks at other programs' objects, presses them and hears what
// happens.
#pragma once

#include <algorithm>
#include <vector>

#include "SessionBus.h"

namespace morvel::e2e {

/// An object of some program on the accessibility bus.
struct AccessibleObject {
    std::string program;  // its name on the bus
    std::string path;
};

/// Hears while the harness waits.
class Assistant {
public:
    /// Hears changes of names and of children from now on. Throws std::runtime_error when the bus cannot be reached.
    explicit Assistant(const SessionBus& session)
        : bus_(connectToBus(session.accessibilityAddress().value_or("unix:path=/none"))) {
        if (!bus_) throw std::runtime_error("the accessibility bus cannot be reached");
        listening_ = g_dbus_connection_signal_subscribe(
            bus_.get(), nullptr, "org.a11y.atspi.Event.Object", nullptr, nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
            [](GDBusConnection*, const gchar* program, const gchar*, const gchar*, const gchar* kind,
               GVariant* arguments, gpointer self) {
                const char* detail = "";
                g_variant_get_child(arguments, 0, "&s", &detail);
                static_cast<Assistant*>(self)->heard_.push_back({program, kind, detail});
            },
            this, nullptr);
        for (const char* event : {"object:children-changed", "object:property-change"})
            callMethod(bus_, {kRegistry, "/org/a11y/atspi/registry", "org.a11y.atspi.Registry", "RegisterEvent"},
                       g_variant_new("(s)", event));
    }
    ~Assistant() { g_dbus_connection_signal_unsubscribe(bus_.get(), listening_); }

    std::optional<AccessibleObject> application(const std::string& name) {
        for (const auto& program : childrenOf({kRegistry, "/org/a11y/atspi/accessible/root"}))
            if (nameOf(program) == name) return program;
        return std::nullopt;
    }
    /// The first object with this role ("push button") and name in the application.
    std::optional<AccessibleObject> find(const std::string& program, const std::string& role, const std::string& name) {
        const auto top = application(program);
        return top ? findBelow(*top, role, name) : std::nullopt;
    }
    std::vector<AccessibleObject> childrenOf(const AccessibleObject& object) {
        std::vector<AccessibleObject> children;
        const Variant answer = ask(object, "Accessible", "GetChildren");
        if (!answer || !g_variant_is_of_type(answer.get(), G_VARIANT_TYPE("(a(so))"))) return children;
        GVariantIter* each = nullptr;
        const char *program = nullptr, *path = nullptr;
        g_variant_get(answer.get(), "(a(so))", &each);
        while (g_variant_iter_next(each, "(&s&o)", &program, &path)) children.push_back({program, path});
        g_variant_iter_free(each);
        return children;
    }

    std::string nameOf(const AccessibleObject& object) { return property(object, "Name"); }
    std::string descriptionOf(const AccessibleObject& object) { return property(object, "Description"); }
    std::string roleOf(const AccessibleObject& object) { return textOf(ask(object, "Accessible", "GetRoleName")); }
    /// What its first action is called.
    std::string actionOf(const AccessibleObject& object) {
        return textOf(ask(object, "Action", "GetLocalizedName", g_variant_new("(i)", 0)));
    }
    /// By AT-SPI's number of the state.
    bool hasState(const AccessibleObject& object, unsigned state) {
        const Variant answer = ask(object, "Accessible", "GetState");
        if (!answer) return false;
        const Variant words(g_variant_get_child_value(answer.get(), 0));
        gsize count = 0;
        const auto* bits = static_cast<const guint32*>(g_variant_get_fixed_array(words.get(), &count, sizeof(guint32)));
        return state / 32 < count && (bits[state / 32] >> (state % 32) & 1) != 0;
    }
    /// On the screen. Empty: it has no place.
    Box extentsOf(const AccessibleObject& object) {
        constexpr guint32 kOnScreen = 0;
        const Variant answer = ask(object, "Component", "GetExtents", g_variant_new("(u)", kOnScreen));
        Box box;
        if (answer) g_variant_get(answer.get(), "((iiii))", &box.x, &box.y, &box.width, &box.height);
        return box;
    }
    /// Whether the first action was done.
    bool press(const AccessibleObject& object) {
        const Variant answer = ask(object, "Action", "DoAction", g_variant_new("(i)", 0));
        gboolean isDone = FALSE;
        if (answer) g_variant_get(answer.get(), "(b)", &isDone);
        return isDone;
    }

    /// Whether the program of the object told of such an event with this detail: "ChildrenChanged" "add", for instance.
    bool hasHeard(const AccessibleObject& of, const std::string& event, const std::string& detail) {
        return std::ranges::any_of(
            heard_, [&](const Event& e) { return e.program == of.program && e.kind == event && e.detail == detail; });
    }
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
    static constexpr const char* kRegistry = "org.a11y.atspi.Registry";

    Variant ask(const AccessibleObject& object, const std::string& interface, const std::string& method,
                GVariant* arguments = nullptr) {
        return callMethod(bus_, {object.program, object.path, "org.a11y.atspi." + interface, method}, arguments);
    }
    /// The text of an answer that is one; empty without.
    static std::string textOf(const Variant& answer) {
        const char* text = "";
        if (answer) g_variant_get(answer.get(), "(&s)", &text);
        return text;
    }
    std::string property(const AccessibleObject& object, const char* name) {
        const Variant answer = callMethod(bus_, {object.program, object.path, "org.freedesktop.DBus.Properties", "Get"},
                                          g_variant_new("(ss)", "org.a11y.atspi.Accessible", name));
        if (!answer || !g_variant_is_of_type(answer.get(), G_VARIANT_TYPE("(v)"))) return {};
        GVariant* inner = nullptr;
        g_variant_get(answer.get(), "(v)", &inner);
        const Variant value(inner);
        return g_variant_is_of_type(inner, G_VARIANT_TYPE_STRING) ? g_variant_get_string(inner, nullptr) : "";
    }
    std::optional<AccessibleObject> findBelow(const AccessibleObject& top, const std::string& role,
                                              const std::string& name) {
        for (const auto& child : childrenOf(top)) {
            if (nameOf(child) == name && roleOf(child) == role) return child;
            if (const auto found = findBelow(child, role, name)) return found;
        }
        return std::nullopt;
    }

    BusConnection bus_;
    guint listening_ = 0;
    std::vector<Event> heard_;
};

}  // namespace morvel::e2e
