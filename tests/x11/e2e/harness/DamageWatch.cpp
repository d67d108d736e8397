#include "harness/DamageWatch.h"

#include <xcb/damage.h>

#include <utility>

namespace morvel::e2e {

DamageWatch::DamageWatch(XServer& server, Desktop& desktop, xcb_window_t window)
    : desktop_(desktop), connection_(server.display()) {
    const Owned<xcb_damage_query_version_reply_t> version(
        xcb_damage_query_version_reply(connection_, xcb_damage_query_version(connection_, 1, 1), nullptr));
    firstEvent_ = xcb_get_extension_data(connection_, &xcb_damage_id)->first_event;
    xcb_damage_create(connection_, xcb_generate_id(connection_), window, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    take();  // the server reports the whole window once, as it does not know what we have seen of it
    desktop_.attend(*this);
}

DamageWatch::~DamageWatch() {
    desktop_.forget(*this);
}

void DamageWatch::serve() {
    while (const auto event = connection_.next()) {
        if (typeOf(event) != firstEvent_ + XCB_DAMAGE_NOTIFY) continue;
        const auto& area = as<xcb_damage_notify_event_t>(event).area;
        drawn_.push_back({area.x, area.y, area.width, area.height});
    }
}

std::vector<Box> DamageWatch::take() {
    connection_.sync();
    serve();
    return std::exchange(drawn_, {});
}

Box DamageWatch::takeExtents() {
    Box extents;
    for (const auto& box : take()) extents = extents.joined(box);
    return extents;
}

}  // namespace morvel::e2e
