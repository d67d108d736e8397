// The module's entry: starts GTK as a guest in a program that has a connection to the X server of its own.
#include <X11/Xlib.h>
#include <gdk/gdkx.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/Linux/Forms/FormBridge.h"
#include "Platform/Linux/Forms/Module/FormWindow.h"

namespace morvel::x11 {

namespace {

constexpr const char* kNoBridgeVariable = "NO_AT_BRIDGE";

constexpr const char* kStyle =
    ".morvel-heading { font-weight: bold; font-size: 110%; }"
    ".morvel-help { font-size: 92%; }"
    ".morvel-link { padding: 2px 0; min-height: 0; }"
    ".morvel-link:link label { text-decoration-line: underline; }"
    // Themes give these buttons more width than their titles need, and five would not fit beside the search field.
    ".morvel-tabs button { min-width: 0; padding-left: 10px; padding-right: 10px; }";

/// What GTK would have told ATK of itself.
AtkUtilClass gtkUtil{};

/// GTK would enter itself as the whole program with assistive programs, where the bar has its own place: the functions
/// by which ATK asks for the program's root are put back, and no bridge is started.
class AtkUntouched {
public:
    AtkUntouched() : util_(ATK_UTIL_CLASS(g_type_class_ref(ATK_TYPE_UTIL))), before_(*util_) {
        if (const char* set = std::getenv(kNoBridgeVariable)) variable_ = set;
        // Where the bar's own bridge runs, GTK's would be the same one, which starts only once.
        if (!before_.get_root) setenv(kNoBridgeVariable, "1", 1);
        // GTK leaves a root alone that is there already, and then has none of its own.
        util_->get_root = nullptr;
    }
    ~AtkUntouched() {
        gtkUtil = *util_;
        variable_ ? setenv(kNoBridgeVariable, variable_->c_str(), 1) : unsetenv(kNoBridgeVariable);
        util_->get_root = before_.get_root;
        util_->get_toolkit_name = before_.get_toolkit_name;
        util_->get_toolkit_version = before_.get_toolkit_version;
        util_->add_global_event_listener = before_.add_global_event_listener;
        util_->remove_global_event_listener = before_.remove_global_event_listener;
        util_->add_key_event_listener = before_.add_key_event_listener;
        util_->remove_key_event_listener = before_.remove_key_event_listener;
        g_type_class_unref(util_);
    }

private:
    AtkUtilClass* util_;
    AtkUtilClass before_;
    std::optional<std::string> variable_;
};

/// GDK ends the program on an error of its connection. Here an error is one window's misfortune, and the end of the
/// server is noticed, and answered, by the bar.
void surviveErrors(GdkDisplay* display) {
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    XSetIOErrorHandler([](Display*) { return 0; });
    XSetIOErrorExitHandler(
        gdk_x11_display_get_xdisplay(display), [](Display*, void*) {}, nullptr);
}

void addStyle() {
    GtkCssProvider* provider = gtk_css_provider_new();
    gtk_css_provider_load_from_data(provider, kStyle, -1, nullptr);
    gtk_style_context_add_provider_for_screen(gdk_screen_get_default(), GTK_STYLE_PROVIDER(provider),
                                              GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_unref(provider);
}

bool startToolkit() {
    gtk_disable_setlocale();  // the program's locale is not ours to change
    gdk_set_allowed_backends("x11");
    const AtkUntouched atk;
    // Where the bar is known to assistive programs already, GTK looks for the signals of these as it starts.
    for (const GType type : {GTK_TYPE_MENU_SHELL, GTK_TYPE_WINDOW}) g_type_class_ref(type);
    if (!gtk_init_check(nullptr, nullptr)) return false;
    surviveErrors(gdk_display_get_default());
    gtk_window_set_default_icon_name("morvel");  // as in the desktop entry
    addStyle();
    return true;
}

class GtkForms : public FormBridge {
public:
    std::unique_ptr<ui::FormWindowPeer> makeWindow(ui::Form form) override {
        return std::make_unique<FormWindow>(std::move(form));
    }
    void setDark(bool dark) override {
        GtkSettings* const settings = gtk_settings_get_default();
        g_object_set(settings, "gtk-application-prefer-dark-theme", gboolean{dark}, nullptr);
        // A theme that is dark by itself stays dark; the one that it is the dark half of can be both.
        constexpr std::string_view kDarkHalf = "-dark";
        gchar* name = nullptr;
        g_object_get(settings, "gtk-theme-name", &name, nullptr);
        std::string theme(name ? name : "");
        g_free(name);
        if (dark || !theme.ends_with(kDarkHalf)) return;
        theme.resize(theme.size() - kDarkHalf.size());
        g_object_set(settings, "gtk-theme-name", theme.c_str(), nullptr);
    }
    void* accessibleRoot() override {
        AtkObject* const root = gtkUtil.get_root();
        // GTK tells which window is the active one only once somebody has listened for that.
        const auto nobody = +[](GSignalInvocationHint*, guint, const GValue*, gpointer) -> gboolean { return TRUE; };
        gtkUtil.add_global_event_listener(nobody, "window:activate");
        return root;
    }
};

}  // namespace
}  // namespace morvel::x11

extern "C" __attribute__((visibility("default"))) morvel::x11::FormBridge* morvelMakeFormBridge(const char* version) {
    using namespace morvel::x11;
    if (std::string_view(version) != MORVEL_VERSION || !startToolkit()) return nullptr;
    return new GtkForms;
}
