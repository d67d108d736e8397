#include "Platform/Linux/Windows/RootState.h"

#include <algorithm>

#include "Platform/Linux/System/Property.h"

namespace morvel::x11 {

namespace {

constexpr uint32_t kMostItems = 16384;   // of a list; a window manager that tells more is out of its mind
constexpr uint32_t kMostDesktops = 256;  // so that a wild number cannot make us build a list without end

xcb_get_property_cookie_t requestProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property) {
    return xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kMostItems);
}

}  // namespace

struct RootState::Followed {
    xcb_atom_t Atoms::*atom;
    void (RootState::*read)(const xcb_get_property_reply_t*);
};

// In the order in which they are asked for and so answered: whether there is a window manager before what it says,
// and the clients before the active one of them.
const std::vector<RootState::Followed>& RootState::followed() {
    static const std::vector<Followed> table{
        {&Atoms::netSupportingWmCheck, &RootState::readCheck},
        {&Atoms::netSupported, &RootState::readSupported},
        {&Atoms::netNumberOfDesktops, &RootState::readDesktopCount},
        {&Atoms::netCurrentDesktop, &RootState::readCurrentDesktop},
        {&Atoms::netClientList, &RootState::readClients},
        {&Atoms::netActiveWindow, &RootState::readActive},
    };
    return table;
}

RootState::RootState(XConnection& connection) : connection_(connection) {
    connection_.addRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE);
    subscriptions_.push_back(connection_.observeRoot([this](const xcb_generic_event_t& event) {
        if (event.response_type != XCB_PROPERTY_NOTIFY) return;
        const xcb_atom_t property = reinterpret_cast<const xcb_property_notify_event_t&>(event).atom;
        if (!isAnswerNewer(event, property)) dirty_.insert(property);
    }));
    subscriptions_.push_back(connection_.observeBatchEnd([this] { requestDirty(); }));
    for (const Followed& property : followed()) request(property);
}

void RootState::requestDirty() {
    if (dirty_.empty()) return;
    for (const Followed& property : followed())
        if (dirty_.contains(connection_.atoms().*property.atom)) request(property);
    dirty_.clear();
}

// An event carries the number of the last request that the server had seen before it. Window managers take the active
// window away before they name the next, and that second change often comes while the first is still asked about.
bool RootState::isAnswerNewer(const xcb_generic_event_t& change, xcb_atom_t property) const {
    const auto asked = asked_.find(property);
    return asked != asked_.end() && static_cast<int32_t>(asked->second - change.full_sequence) > 0;
}

void RootState::request(const Followed& property) {
    const xcb_atom_t atom = connection_.atoms().*property.atom;
    const auto cookie = requestProperty(connection_.get(), connection_.root(), atom);
    asked_[atom] = cookie.sequence;
    connection_.whenReplied<xcb_get_property_reply_t>(
        cookie.sequence, [this, read = property.read](const auto* reply) { (this->*read)(reply); });
}

void RootState::readClients(const xcb_get_property_reply_t* reply) {
    auto clients = isPresent(reply) ? std::optional(cardinals(reply)) : std::nullopt;
    if (clients == clients_) return;
    clients_ = std::move(clients);
    clientsChanged_.emit();
}

void RootState::readActive(const xcb_get_property_reply_t* reply) {
    auto active = firstCardinal(reply);
    if (active == XCB_WINDOW_NONE) active.reset();
    if (active == active_) return;
    active_ = active;
    activeChanged_.emit();
}

void RootState::readCurrentDesktop(const xcb_get_property_reply_t* reply) {
    const uint32_t current = std::min(firstCardinal(reply).value_or(0), kMostDesktops - 1);
    if (current == currentDesktop_) return;
    currentDesktop_ = current;
    desktopsChanged_.emit();
}

void RootState::readDesktopCount(const xcb_get_property_reply_t* reply) {
    const uint32_t count = std::clamp(firstCardinal(reply).value_or(1), 1u, kMostDesktops);
    if (count == desktopCount_) return;
    desktopCount_ = count;
    desktopsChanged_.emit();
}

void RootState::readSupported(const xcb_get_property_reply_t* reply) {
    const auto hints = cardinals(reply);
    supported_ = {hints.begin(), hints.end()};
}

void RootState::readCheck(const xcb_get_property_reply_t*) {
    windowManagerChanged_.emit();
}

void RootState::askWhetherManaged(std::function<void(bool)> answered) {
    const xcb_atom_t check = connection_.atoms().netSupportingWmCheck;
    const auto onRoot = requestProperty(connection_.get(), connection_.root(), check);
    connection_.whenReplied<xcb_get_property_reply_t>(onRoot.sequence, [this, check, answered](const auto* reply) {
        const auto window = firstCardinal(reply);
        if (!window) return answered(false);
        // The property outlives a window manager that crashed; the window it names does not.
        const auto onItself = requestProperty(connection_.get(), *window, check);
        connection_.whenReplied<xcb_get_property_reply_t>(
            onItself.sequence, [window, answered](const auto* itself) { answered(firstCardinal(itself) == window); });
    });
}

}  // namespace morvel::x11
