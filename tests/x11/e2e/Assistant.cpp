#include "Assistant.h"

#include <algorithm>
#include <stdexcept>

namespace morvel::e2e {
namespace {

const std::string kInterfaces = "org.a11y.atspi.";
const AccessibleObject kDesktopRoot{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};

BusConnection connectToAccessibility(const SessionBus& session) {
    const auto address = session.accessibilityAddress();
    auto bus = address ? connectToBus(*address) : nullptr;
    if (!bus) throw std::runtime_error("the accessibility bus cannot be reached");
    return bus;
}

}  // namespace

Assistant::Assistant(const SessionBus& session) : bus_(connectToAccessibility(session)) {
    listening_ = g_dbus_connection_signal_subscribe(
        bus_.get(), nullptr, "org.a11y.atspi.Event.Object", nullptr, nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const gchar* program, const gchar*, const gchar*, const gchar* kind, GVariant* arguments,
           gpointer self) {
            const char* detail = "";
            g_variant_get_child(arguments, 0, "&s", &detail);
            static_cast<Assistant*>(self)->heard_.push_back({program, kind, detail});
        },
        this, nullptr);
    for (const char* event : {"object:children-changed", "object:property-change"})
        callMethod(bus_, {kDesktopRoot.program, "/org/a11y/atspi/registry", "org.a11y.atspi.Registry", "RegisterEvent"},
                   g_variant_new("(s)", event));
}

Assistant::~Assistant() {
    g_dbus_connection_signal_unsubscribe(bus_.get(), listening_);
}

Variant Assistant::ask(const AccessibleObject& object, const std::string& interface, const std::string& method,
                       GVariant* arguments) {
    return callMethod(bus_, {object.program, object.path, kInterfaces + interface, method}, arguments);
}

std::string Assistant::text(const AccessibleObject& object, const char* property) {
    const Variant answer = callMethod(bus_, {object.program, object.path, "org.freedesktop.DBus.Properties", "Get"},
                                      g_variant_new("(ss)", "org.a11y.atspi.Accessible", property));
    if (!answer || !g_variant_is_of_type(answer.get(), G_VARIANT_TYPE("(v)"))) return {};
    GVariant* inner = nullptr;
    g_variant_get(answer.get(), "(v)", &inner);
    const Variant value(inner);
    return g_variant_is_of_type(inner, G_VARIANT_TYPE_STRING) ? g_variant_get_string(inner, nullptr) : "";
}

std::vector<AccessibleObject> Assistant::childrenOf(const AccessibleObject& object) {
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

std::optional<AccessibleObject> Assistant::application(const std::string& name) {
    for (const auto& program : childrenOf(kDesktopRoot))
        if (nameOf(program) == name) return program;
    return std::nullopt;
}

std::optional<AccessibleObject> Assistant::find(const std::string& program, const std::string& role,
                                                const std::string& name) {
    const auto top = application(program);
    return top ? findBelow(*top, role, name) : std::nullopt;
}

std::optional<AccessibleObject> Assistant::findBelow(const AccessibleObject& top, const std::string& role,
                                                     const std::string& name) {
    for (const auto& child : childrenOf(top)) {
        if (nameOf(child) == name && roleOf(child) == role) return child;
        if (const auto found = findBelow(child, role, name)) return found;
    }
    return std::nullopt;
}

std::string Assistant::answer(const Variant& reply) {
    const char* text = "";
    if (reply) g_variant_get(reply.get(), "(&s)", &text);
    return text;
}

bool Assistant::hasState(const AccessibleObject& object, unsigned state) {
    const Variant answer = ask(object, "Accessible", "GetState");
    if (!answer) return false;
    const Variant words(g_variant_get_child_value(answer.get(), 0));
    gsize count = 0;
    const auto* bits = static_cast<const guint32*>(g_variant_get_fixed_array(words.get(), &count, sizeof(guint32)));
    return state / 32 < count && (bits[state / 32] >> (state % 32) & 1) != 0;
}

Box Assistant::extentsOf(const AccessibleObject& object) {
    constexpr guint32 kOnScreen = 0;
    const Variant answer = ask(object, "Component", "GetExtents", g_variant_new("(u)", kOnScreen));
    Box box;
    if (answer) g_variant_get(answer.get(), "((iiii))", &box.x, &box.y, &box.width, &box.height);
    return box;
}

bool Assistant::press(const AccessibleObject& object) {
    const Variant answer = ask(object, "Action", "DoAction", g_variant_new("(i)", 0));
    gboolean isDone = FALSE;
    if (answer) g_variant_get(answer.get(), "(b)", &isDone);
    return isDone;
}

bool Assistant::hasHeard(const AccessibleObject& of, const std::string& event, const std::string& detail) {
    return std::ranges::any_of(
        heard_, [&](const Event& e) { return e.program == of.program && e.kind == event && e.detail == detail; });
}

}  // namespace morvel::e2e
