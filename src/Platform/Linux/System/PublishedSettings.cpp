#include "Platform/Linux/System/PublishedSettings.h"

#include "Platform/Linux/System/Property.h"
#include "Platform/Linux/System/XSettings.h"

namespace morvel::x11 {

namespace {

constexpr std::string_view kEnableAnimations = "Gtk/EnableAnimations";
constexpr std::string_view kThemeName = "Net/ThemeName";
constexpr uint32_t kMaxWords = 64 * 1024;  // many times what any desktop publishes
// What the list of windows also asks for, since the server keeps one choice of ours per window and the publisher's
// may be in that list.
constexpr uint32_t kEvents = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;

}  // namespace

PublishedSettings::PublishedSettings(XConnection& connection)
    : connection_(connection), publisher_(connection, connection.atoms().settingsSelection) {
    publisherChanges_ = publisher_.observeChanges([this] { followPublisher(); });
    followPublisher();
    connection_.settleReplies();
}

void PublishedSettings::followPublisher() {
    propertyChanges_.reset();
    const xcb_window_t window = publisher_.window();
    if (window == XCB_WINDOW_NONE) return take({});
    propertyChanges_ = connection_.observeWindow(window, [this](const xcb_generic_event_t& event) {
        const auto& changed = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (event.response_type == XCB_PROPERTY_NOTIFY && changed.atom == connection_.atoms().xsettingsSettings) read();
    });
    xcb_change_window_attributes(connection_.get(), window, XCB_CW_EVENT_MASK, &kEvents);
    read();
}

void PublishedSettings::read() {
    const xcb_window_t window = publisher_.window();
    const auto cookie = xcb_get_property(connection_.get(), 0, window, connection_.atoms().xsettingsSettings,
                                         XCB_ATOM_ANY, 0, kMaxWords);
    connection_.whenReplied<xcb_get_property_reply_t>(
        cookie.sequence, lifetime_.whileAlive([this, window](const xcb_get_property_reply_t* reply) {
            if (window == publisher_.window()) take(bytes(reply).value_or(std::string_view()));
        }));
}

void PublishedSettings::take(std::string_view published) {
    if (published == published_) return;
    published_ = published;
    changed_.emit();
}

bool PublishedSettings::animationsAreOff() const {
    return xSettingsNumber(published_, kEnableAnimations) == 0;
}

std::optional<std::string> PublishedSettings::theme() const {
    return xSettingsText(published_, kThemeName);
}

}  // namespace morvel::x11
