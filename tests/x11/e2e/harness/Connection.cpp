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
    xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 8,
                        static_cast<uint32_t>(value.size()), value.data());
}

void Connection::setCardinals(xcb_window_t window, std::string_view property, std::string_view type,
                              const std::vector<uint32_t>& values) {
    xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 32,
                        static_cast<uint32_t>(values.size()), values.data());
}

void Connection::askManager(xcb_window_t window, std::string_view message, const std::array<uint32_t, 5>& data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(message);
    std::copy(data.begin(), data.end(), event.data.data32);
    xcb_send_event(get(), 0, root(), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
    flush();
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
