#include "Platform/Linux/Windows/ClientWindows.h"

#include <unistd.h>
#include <xcb/res.h>

#include <algorithm>
#include <bitset>

#include "Platform/Linux/System/Property.h"
#include "Platform/ProcessProbe.h"

namespace morvel::x11 {

namespace {

using namespace std::chrono_literals;

// A window manager that takes over lists the windows one by one; this long after its last word on the matter it is
// taken to have listed all that it wants.
constexpr Duration kOrphanDelay = 1s;
constexpr uint32_t kWatchedEvents = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
constexpr size_t kMostProperties = 32;

}  // namespace

struct ClientWindows::Tracked {
    ClientWindow client;
    ClientOwner owner;
    bool isComplete = false;  // all has been answered; told to listeners
    bool isListed = true;
    std::bitset<kMostProperties> dirtyProperties;
    bool isPositionDirty = false;
    Subscription events;
};

ClientWindows::ClientWindows(XConnection& connection, MainLoop& mainLoop, RootState& root)
    : connection_(connection), mainLoop_(mainLoop), root_(root), properties_(clientProperties(connection.atoms())) {
    const auto* resources = xcb_get_extension_data(connection_.get(), &xcb_res_id);
    canAskPids_ = resources && resources->present;
    if (canAskPids_)
        connection_.whenReplied<xcb_res_query_version_reply_t>(xcb_res_query_version(connection_.get(), 1, 2).sequence,
                                                               [](const auto*) {});
    subscriptions_.push_back(root_.observeClients([this] { listChanged(); }));
    subscriptions_.push_back(root_.observeActive([this] {
        const auto window = root_.activeWindow();
        const auto found = window ? windows_.find(*window) : windows_.end();
        if (found == windows_.end() || found->second->isComplete) activeChanged_.emit();
    }));
    subscriptions_.push_back(root_.observeWindowManager([this] { armOrphanCheck(); }));
    subscriptions_.push_back(connection_.observeBatchEnd([this] { fetchDirty(); }));
    listChanged();
}

ClientWindows::~ClientWindows() = default;

const ClientWindow* ClientWindows::find(xcb_window_t window) const {
    const auto found = windows_.find(window);
    return found != windows_.end() && found->second->isComplete ? &found->second->client : nullptr;
}

std::vector<const ClientWindow*> ClientWindows::all() const {
    std::vector<const ClientWindow*> out;
    for (const auto& [window, tracked] : windows_)
        if (tracked->isComplete) out.push_back(&tracked->client);
    std::sort(out.begin(), out.end(), [](const auto* a, const auto* b) { return a->serial < b->serial; });
    return out;
}

bool ClientWindows::isMinimized(const ClientWindow& client) const {
    // Some window managers also call windows of other workspaces iconic, so the newer word counts where it is known.
    return root_.supports(connection_.atoms().stateHidden) ? client.saysHidden : client.isIconic;
}

const ClientWindow* ClientWindows::active() const {
    const auto window = root_.activeWindow();
    return window ? find(*window) : nullptr;
}

void ClientWindows::listChanged() {
    if (!root_.clients()) return;  // no window manager at the moment
    const std::set<xcb_window_t> listed(root_.clients()->begin(), root_.clients()->end());
    for (const auto& [window, tracked] : windows_) {
        const bool wasListed = std::exchange(tracked->isListed, listed.contains(window));
        if (wasListed && !tracked->isListed) checkMissing(*tracked);
    }
    // In the list's order, and not the set's, since the serials tell the order of mapping.
    for (const xcb_window_t window : *root_.clients())
        if (!windows_.contains(window) && !connection_.isOwnWindow(window)) track(window);
}

void ClientWindows::track(xcb_window_t window) {
    auto& tracked = *windows_.emplace(window, std::make_unique<Tracked>()).first->second;
    tracked.client.window = window;
    tracked.client.serial = ++lastSerial_;
    tracked.events =
        connection_.observeWindow(window, [this, window](const auto& event) { handleEvent(window, event); });
    // Selected before anything is asked, so that no change falls between the answer and the first notice.
    xcb_change_window_attributes(connection_.get(), window, XCB_CW_EVENT_MASK, &kWatchedEvents);
    fetchAll(tracked);
}

void ClientWindows::fetchAll(Tracked& tracked) {
    for (size_t i = 0; i < properties_.size(); ++i) fetch(tracked, i);
    fetchServerPid(tracked);
    fetchGeometry(tracked);
}

template <class Reply>
void ClientWindows::whenTracked(xcb_window_t window, unsigned sequence,
                                std::function<void(Tracked&, const Reply*)> replied) {
    const uint64_t serial = windows_.at(window)->client.serial;
    connection_.whenReplied<Reply>(sequence, [this, window, serial, replied](const Reply* reply) {
        if (auto* stillThere = tracked(window, serial)) replied(*stillThere, reply);
    });
}

ClientWindows::Tracked* ClientWindows::tracked(xcb_window_t window, uint64_t serial) {
    const auto found = windows_.find(window);
    return found != windows_.end() && found->second->client.serial == serial ? found->second.get() : nullptr;
}

void ClientWindows::fetch(Tracked& to, size_t property) {
    const auto& row = properties_[property];
    const xcb_window_t window = to.client.window;
    const auto cookie =
        xcb_get_property(connection_.get(), 0, window, row.atom, XCB_GET_PROPERTY_TYPE_ANY, 0, row.length);
    whenTracked<xcb_get_property_reply_t>(window, cookie.sequence, [this, row](Tracked& tracked, const auto* reply) {
        if (!reply) return;  // the window is gone; its notice is on the way
        const ClientWindow before = tracked.client;
        row.read(connection_.atoms(), reply, tracked.client, tracked.owner);
        if (tracked.isComplete) tellChanges(tracked, before);
    });
}

void ClientWindows::fetchServerPid(Tracked& to) {
    if (!canAskPids_) return;
    const xcb_window_t window = to.client.window;
    const xcb_res_client_id_spec_t spec{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto cookie = xcb_res_query_client_ids(connection_.get(), 1, &spec);
    whenTracked<xcb_res_query_client_ids_reply_t>(window, cookie.sequence, [](Tracked& tracked, const auto* reply) {
        if (!reply) return;
        auto ids = xcb_res_query_client_ids_ids_iterator(reply);
        for (; ids.rem > 0; xcb_res_client_id_value_next(&ids))
            if (xcb_res_client_id_value_value_length(ids.data) > 0)
                tracked.owner.server = static_cast<int32_t>(*xcb_res_client_id_value_value(ids.data));
    });
}

// The last of a new window's questions, so that its answer completes the record.
void ClientWindows::fetchGeometry(Tracked& to) {
    const xcb_window_t window = to.client.window;
    const auto size = xcb_get_geometry(connection_.get(), window);
    whenTracked<xcb_get_geometry_reply_t>(window, size.sequence, [](Tracked& tracked, const auto* reply) {
        if (!reply) return;
        tracked.client.content.width = reply->width;
        tracked.client.content.height = reply->height;
    });
    const auto position = xcb_translate_coordinates(connection_.get(), window, connection_.root(), 0, 0);
    whenTracked<xcb_translate_coordinates_reply_t>(window, position.sequence, [this](Tracked& tracked, const auto* r) {
        if (!r) return remove(tracked.client.window);
        tracked.client.content.x = r->dst_x;
        tracked.client.content.y = r->dst_y;
        complete(tracked);
    });
}

void ClientWindows::complete(Tracked& tracked) {
    const uint32_t clientIndex = tracked.client.window & ~xcb_get_setup(connection_.get())->resource_id_mask;
    const auto owner = tracked.owner;
    tracked.client.pid = resolvePid(owner.server, owner.told, owner.isLocal, clientIndex >> 16, killProbe);
    // Dialogs of this very process come over a connection of their own, so only the process tells them.
    if (tracked.client.pid == ProcessID(getpid())) {
        tracked.events.reset();
        return;
    }
    tracked.isComplete = true;
    const ClientWindow told = tracked.client;
    changed_.emit(told, ClientChange::Added);
    if (root_.activeWindow() == told.window) activeChanged_.emit();
}

void ClientWindows::handleEvent(xcb_window_t window, const xcb_generic_event_t& event) {
    const auto found = windows_.find(window);
    if (found == windows_.end()) return;
    Tracked& tracked = *found->second;
    switch (event.response_type & 0x7F) {
        case XCB_PROPERTY_NOTIFY: {
            const auto atom = reinterpret_cast<const xcb_property_notify_event_t&>(event).atom;
            for (size_t i = 0; i < properties_.size(); ++i)
                if (properties_[i].atom == atom) tracked.dirtyProperties.set(i);
            dirty_.insert(window);
            break;
        }
        case XCB_CONFIGURE_NOTIFY:
            handleConfigure(tracked, reinterpret_cast<const xcb_configure_notify_event_t&>(event));
            break;
        case XCB_REPARENT_NOTIFY:
            tracked.isPositionDirty = true;
            dirty_.insert(window);
            break;
        case XCB_DESTROY_NOTIFY:
            if (reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == window) remove(window);
            break;
        default:
            break;
    }
}

void ClientWindows::handleConfigure(Tracked& tracked, const xcb_configure_notify_event_t& event) {
    const ClientWindow before = tracked.client;
    auto& content = tracked.client.content;
    content.width = event.width;
    content.height = event.height;
    const bool isFromWindowManager = (event.response_type & 0x80) != 0;
    if (isFromWindowManager) {
        // The event tells the border's corner, also of a border that the window manager took away.
        content.x = event.x + event.border_width;
        content.y = event.y + event.border_width;
    } else {
        // Relative to the decoration it sits in, which says nothing about the root window.
        dirty_.insert(tracked.client.window);
    }
    tracked.isPositionDirty = !isFromWindowManager;
    if (tracked.isComplete) tellChanges(tracked, before);
}

void ClientWindows::fetchDirty() {
    for (const xcb_window_t window : std::exchange(dirty_, {})) {
        const auto found = windows_.find(window);
        if (found == windows_.end()) continue;
        Tracked& tracked = *found->second;
        for (size_t i = 0; i < properties_.size(); ++i)
            if (tracked.dirtyProperties.test(i)) fetch(tracked, i);
        tracked.dirtyProperties.reset();
        if (std::exchange(tracked.isPositionDirty, false)) fetchPosition(tracked);
    }
}

void ClientWindows::fetchPosition(Tracked& to) {
    const xcb_window_t window = to.client.window;
    const auto cookie = xcb_translate_coordinates(connection_.get(), window, connection_.root(), 0, 0);
    whenTracked<xcb_translate_coordinates_reply_t>(window, cookie.sequence, [this](Tracked& tracked, const auto* r) {
        if (!r) return;
        const ClientWindow before = tracked.client;
        tracked.client.content.x = r->dst_x;
        tracked.client.content.y = r->dst_y;
        if (tracked.isComplete) tellChanges(tracked, before);
    });
}

void ClientWindows::tellChanges(const Tracked& tracked, const ClientWindow& before) {
    const ClientWindow after = tracked.client;  // a listener may make us forget the window
    const auto frame = after.frame(), oldFrame = before.frame();
    const auto tell = [&](bool hasChanged, ClientChange change) {
        if (hasChanged) changed_.emit(after, change);
    };
    tell(after.isAdmissible() != before.isAdmissible(), ClientChange::Admission);
    tell(after.title() != before.title(), ClientChange::Title);
    tell(frame.origin() != oldFrame.origin(), ClientChange::Moved);
    tell(frame.size() != oldFrame.size(), ClientChange::Resized);
    tell(after.isFullscreen != before.isFullscreen, ClientChange::Fullscreen);
    tell(after.desktop != before.desktop, ClientChange::Desktop);
    tell(after.strut != before.strut, ClientChange::Strut);
}

// It left the list: closed or withdrawn, unless it is still shown, if only as an icon: then its window manager goes.
void ClientWindows::checkMissing(Tracked& missing) {
    const xcb_window_t window = missing.client.window;
    for (size_t i = 0; i < properties_.size(); ++i)
        if (properties_[i].atom == connection_.atoms().wmState) fetch(missing, i);
    const auto cookie = xcb_get_window_attributes(connection_.get(), window);
    whenTracked<xcb_get_window_attributes_reply_t>(window, cookie.sequence, [this](Tracked& tracked, const auto* r) {
        if (tracked.isListed) return;
        const bool isShown = r && (r->map_state != XCB_MAP_STATE_UNMAPPED || tracked.client.isIconic);
        if (!isShown) return remove(tracked.client.window);
        armOrphanCheck();
    });
}

void ClientWindows::armOrphanCheck() {
    orphanCheck_ = mainLoop_.after(kOrphanDelay, [this] {
        root_.askWhetherManaged([this](bool isManaged) {
            // Without a window manager the next one's arrival starts the check again.
            if (isManaged && root_.clients()) removeOrphans();
        });
    });
}

void ClientWindows::removeOrphans() {
    std::vector<xcb_window_t> orphans;
    for (const auto& [window, tracked] : windows_)
        if (!tracked->isListed) orphans.push_back(window);
    for (const xcb_window_t window : orphans) remove(window);
}

void ClientWindows::remove(xcb_window_t window) {
    const auto found = windows_.find(window);
    if (found == windows_.end()) return;
    const auto removed = std::move(found->second);
    windows_.erase(found);
    if (removed->isComplete) changed_.emit(removed->client, ClientChange::Removed);
}

}  // namespace morvel::x11
