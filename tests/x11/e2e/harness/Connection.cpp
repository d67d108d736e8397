#include "harness/Connection.h"

#include <stdexcept>

namespace morvel::e2e {
namespace {

constexpr uint32_t kWholeProperty = 0x10000000;  // in units of four bytes: more than any property

}  // namespace

Connection::Connection(const std::string& display) : connection_(xcb_connect(display.c_str(), nullptr)) {
    if (!isAlive()) throw std::runtime_error("cannot connect to display " + display);
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(get())).data;
}

xcb_atom_t Connection::atom(std::string_view name) {
    if (const auto known = atoms_.find(name); known != atoms_.end()) return known->second;
    const auto cookie = xcb_intern_atom(get(), 0, static_cast<uint16_t>(name.size()), name.data());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(get(), cookie, nullptr));
    if (!reply) throw std::runtime_error("the X server is gone");
    return atoms_[std::string(name)] = reply->atom;
}

std::string Connection::atomName(xcb_atom_t atom) {
    const Owned<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(get(), xcb_get_atom_name(get(), atom), nullptr));
    if (!reply) return {};
    return {xcb_get_atom_name_name(reply.get()), static_cast<size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

std::optional<std::string> Connection::bytes(xcb_window_t window, std::string_view property) {
    const auto cookie =
        xcb_get_property(get(), 0, window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, kWholeProperty);
    xcb_generic_error_t* error = nullptr;
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(get(), cookie, &error));
    std::free(error);
    if (!reply || reply->type == XCB_NONE) return std::nullopt;
    return std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                       static_cast<size_t>(xcb_get_property_value_length(reply.get())));
}

std::vector<uint32_t> Connection::cardinals(xcb_window_t window, std::string_view property) {
    const auto text = bytes(window, property).value_or("");
    std::vector<uint32_t> values(text.size() / sizeof(uint32_t));
    std::copy_n(text.begin(), values.size() * sizeof(uint32_t), reinterpret_cast<char*>(values.data()));
    return values;
}

void Connection::setBytes(xcb_window_t window, std::string_view property, std::string_view type,
                          std::string_view value) {
    setBytes(window, atom(property), atom(type), value);
}

void Connection::setBytes(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::string_view value) {
    xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, property, type, 8, static_cast<uint32_t>(value.size()),
                        value.data());
}

void Connection::setCardinals(xcb_window_t window, std::string_view property, std::string_view type,
                              const std::vector<uint32_t>& values) {
    xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 32,
                        static_cast<uint32_t>(values.size()), values.data());
}

xcb_window_t Connection::makeWindow(const Box& box, uint32_t color, uint32_t events, bool isManaged) {
    const xcb_window_t id = xcb_generate_id(get());
    const uint32_t values[] = {color, isManaged ? 0U : 1U, events};
    xcb_create_window(get(), XCB_COPY_FROM_PARENT, id, root(), static_cast<int16_t>(box.x), static_cast<int16_t>(box.y),
                      static_cast<uint16_t>(box.width), static_cast<uint16_t>(box.height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    return id;
}

void Connection::listen(xcb_window_t window, uint32_t events) {
    xcb_change_window_attributes(get(), window, XCB_CW_EVENT_MASK, &events);
}

void Connection::own(xcb_window_t window, std::string_view selection) {
    xcb_set_selection_owner(get(), window, atom(selection), XCB_CURRENT_TIME);
    sync();
}

void Connection::answer(const xcb_selection_request_event_t& request, xcb_atom_t property) {
    union {
        xcb_selection_notify_event_t notice;
        char sent[32];  // an event is that long, whatever its own fields
    } event{};
    event.notice.response_type = XCB_SELECTION_NOTIFY;
    event.notice.requestor = request.requestor;
    event.notice.selection = request.selection;
    event.notice.target = request.target;
    event.notice.time = request.time;
    event.notice.property = property;
    xcb_send_event(get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, event.sent);
    flush();
}

void Connection::send(xcb_window_t target, uint32_t mask, xcb_window_t about, std::string_view message,
                      const std::array<uint32_t, 5>& data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = about;
    event.type = atom(message);
    std::copy(data.begin(), data.end(), event.data.data32);
    xcb_send_event(get(), 0, target, mask, reinterpret_cast<const char*>(&event));
    flush();
}

void Connection::send(xcb_window_t target, std::string_view message, const std::array<uint32_t, 5>& data) {
    send(target, XCB_EVENT_MASK_NO_EVENT, target, message, data);
}

void Connection::askManager(xcb_window_t window, std::string_view message, const std::array<uint32_t, 5>& data) {
    send(root(), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY, window, message, data);
}

std::vector<xcb_window_t> Connection::childrenOf(xcb_window_t window) {
    const Owned<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(get(), xcb_query_tree(get(), window), nullptr));
    if (!reply) return {};
    const auto* first = xcb_query_tree_children(reply.get());
    return {first, first + xcb_query_tree_children_length(reply.get())};
}

std::optional<Box> Connection::boxOf(xcb_window_t window) {
    const auto sizeCookie = xcb_get_geometry(get(), window);
    const auto placeCookie = xcb_translate_coordinates(get(), window, root(), 0, 0);
    const Owned<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(get(), sizeCookie, nullptr));
    const Owned<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(get(), placeCookie, nullptr));
    if (!size || !place) return std::nullopt;
    return Box{place->dst_x, place->dst_y, size->width, size->height};
}

bool Connection::isViewable(xcb_window_t window) {
    const Owned<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(get(), xcb_get_window_attributes(get(), window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

void Connection::sync() {
    atomName(XCB_ATOM_WM_NAME);
}

}  // namespace morvel::e2e
