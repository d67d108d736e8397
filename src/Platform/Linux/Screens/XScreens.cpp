#include "Platform/Linux/Screens/XScreens.h"

#include <algorithm>
#include <memory>

#include "Platform/Linux/System/NameUuid.h"

namespace morvel::x11 {

namespace {

using namespace std::chrono_literals;

// Drivers report a replugged display in several steps; acting on each would move every panel several times.
constexpr Duration kSettleDelay = 200ms;

}  // namespace

XScreens::XScreens(XConnection& connection, MainLoop& mainLoop) : connection_(connection), mainLoop_(mainLoop) {
    const auto& screen = connection_.screen();
    root_ = {0, 0, double(screen.width_in_pixels), double(screen.height_in_pixels)};
    monitors_ = {{"default", true, root_}};  // what there is without RandR

    const auto* randr = xcb_get_extension_data(connection_.get(), &xcb_randr_id);
    if (!randr || !randr->present) return;
    // Servers offer monitors only to clients that have asked for the version.
    connection_.whenReplied<xcb_randr_query_version_reply_t>(xcb_randr_query_version(connection_.get(), 1, 5).sequence,
                                                             [](const auto*) {});
    xcb_randr_select_input(
        connection_.get(), connection_.root(),
        XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE | XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    // A monitor that is defined by hand shows as a mere notice of the root window's configuration.
    connection_.addRootEvents(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    subscriptions_.push_back(connection_.observeRoot([this](const xcb_generic_event_t& event) {
        if (typeOf(event) != XCB_CONFIGURE_NOTIFY) return;
        const auto& configured = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        root_ = {0, 0, double(configured.width), double(configured.height)};
        scheduleQuery();
    }));
    for (const int number : {XCB_RANDR_SCREEN_CHANGE_NOTIFY, XCB_RANDR_NOTIFY})
        subscriptions_.push_back(connection_.observeEventType(static_cast<uint8_t>(randr->first_event + number),
                                                              [this](const auto&) { scheduleQuery(); }));
    query();
}

void XScreens::scheduleQuery() {
    settle_ = mainLoop_.after(kSettleDelay, [this] { query(); });
}

void XScreens::query() {
    constexpr uint8_t kActiveOnly = 1;
    connection_.whenReplied<xcb_randr_get_monitors_reply_t>(
        xcb_randr_get_monitors(connection_.get(), connection_.root(), kActiveOnly).sequence,
        [this](const xcb_randr_get_monitors_reply_t* reply) { requestNames(reply); });
}

void XScreens::requestNames(const xcb_randr_get_monitors_reply_t* reply) {
    if (!reply) return;
    const auto found = std::make_shared<std::vector<Monitor>>();
    std::vector<xcb_atom_t> names;
    for (auto i = xcb_randr_get_monitors_monitors_iterator(reply); i.rem > 0; xcb_randr_monitor_info_next(&i)) {
        const auto& m = *i.data;
        found->push_back({{}, m.primary != 0, {double(m.x), double(m.y), double(m.width), double(m.height)}});
        names.push_back(m.name);
    }
    for (size_t i = 0; i < names.size(); ++i) {
        connection_.whenReplied<xcb_get_atom_name_reply_t>(
            xcb_get_atom_name(connection_.get(), names[i]).sequence,
            [this, found, i](const xcb_get_atom_name_reply_t* name) {
                auto& text = (*found)[i].name;
                if (name) text.assign(xcb_get_atom_name_name(name), size_t(xcb_get_atom_name_name_length(name)));
                if (text.empty()) text = "monitor " + std::to_string(i);
                if (i + 1 == found->size()) setMonitors(std::move(*found));
            });
    }
}

void XScreens::setMonitors(std::vector<Monitor> monitors) {
    monitors = mainFirst(std::move(monitors));
    if (monitors.empty() || monitors == monitors_) return;
    monitors_ = std::move(monitors);
    changed_.emit();
}

void XScreens::setStruts(std::vector<Strut> struts) {
    if (struts == struts_) return;
    struts_ = std::move(struts);
    changed_.emit();
}

std::vector<Screen> XScreens::screens() {
    const MainDisplayFrame main = mainFrame();
    std::vector<Screen> out;
    for (const Monitor& m : monitors_)
        out.push_back(
            {identify(m.name), m.name, main.toScreen(m.frame), main.toScreen(withoutStruts(m.frame, root_, struts_))});
    return out;
}

DisplayID XScreens::mainDisplay() {
    return identify(monitors_.front().name);
}

std::optional<std::string> XScreens::uuidString(DisplayID display) {
    const auto isIt = [display](const auto& entry) { return entry.second == display; };
    const auto found = std::find_if(identities_.begin(), identities_.end(), isIt);
    if (found == identities_.end()) return std::nullopt;
    return nameUuid(found->first);
}

Subscription XScreens::observeChanges(std::function<void()> changed) {
    return changed_.subscribe(std::move(changed));
}

MainDisplayFrame XScreens::mainFrame() const {
    return {monitors_.front().frame};
}

DisplayID XScreens::identify(const std::string& name) {
    const auto next = DisplayID(static_cast<uint32_t>(identities_.size()) + 1);
    return identities_.try_emplace(name, next).first->second;
}

}  // namespace morvel::x11
