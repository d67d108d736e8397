#include "harness/Client.h"

#include <stdexcept>

namespace morvel::e2e {
namespace {

constexpr uint32_t kIconSide = 32;

std::vector<uint32_t> plainIcon(uint32_t color) {
    std::vector<uint32_t> icon{kIconSide, kIconSide};
    icon.insert(icon.end(), kIconSide * kIconSide, 0xFF000000 | color);
    return icon;
}

}  // namespace

Client::Client(XServer& server, Desktop& desktop) : desktop_(desktop), connection_(server.display()) {
    desktop_.attend(*this);
}

Client::~Client() {
    desktop_.forget(*this);
}

xcb_window_t Client::open(const ClientWindow& window) {
    const xcb_window_t id = connection_.makeWindow(window.box, window.color, XCB_EVENT_MASK_BUTTON_PRESS);
    describe(id, window);
    xcb_map_window(connection_, id);
    connection_.flush();
    return id;
}

xcb_window_t Client::openAndWait(const ClientWindow& window) {
    const auto id = open(window);
    const auto managed = [&] {
        const auto clients = desktop_.clients();
        return std::find(clients.begin(), clients.end(), id) != clients.end() && desktop_.connection().isViewable(id);
    };
    if (!desktop_.waitUntil(managed)) throw std::runtime_error("the window is not shown: " + window.title);
    return id;
}

void Client::describe(xcb_window_t id, const ClientWindow& window) {
    const auto atoms = [this](const std::vector<std::string>& names) {
        std::vector<uint32_t> list;
        for (const auto& name : names) list.push_back(connection_.atom(name));
        return list;
    };
    setTitle(id, window.title);
    connection_.setBytes(id, "WM_CLASS", "STRING",
                         "testclient" + std::string(1, '\0') + window.className + std::string(1, '\0'));
    if (window.pid) setPid(id, *window.pid);
    connection_.setCardinals(id, "_NET_WM_WINDOW_TYPE", "ATOM", atoms({window.type}));
    if (!window.states.empty()) connection_.setCardinals(id, "_NET_WM_STATE", "ATOM", atoms(window.states));
    connection_.setCardinals(id, "WM_PROTOCOLS", "ATOM", atoms({"WM_DELETE_WINDOW"}));
    if (window.iconColor) connection_.setCardinals(id, "_NET_WM_ICON", "CARDINAL", plainIcon(*window.iconColor));
    if (window.fixedPlace) {
        constexpr uint32_t kUserPlace = 1;
        std::vector<uint32_t> hints(18);  // WM_SIZE_HINTS: only the flag counts, the rest is the window's geometry
        hints[0] = kUserPlace;
        connection_.setCardinals(id, "WM_NORMAL_HINTS", "WM_SIZE_HINTS", hints);
    }
}

void Client::setTitle(xcb_window_t window, std::string_view bytes) {
    connection_.setBytes(window, "_NET_WM_NAME", "UTF8_STRING", bytes);
    connection_.setBytes(window, "WM_NAME", "STRING", bytes);
    connection_.flush();
}

void Client::serve() {
    while (const auto event = connection_.next()) {
        const auto type = typeOf(event);
        if (type == XCB_BUTTON_PRESS) clicked_ = true;
        if (type == XCB_SELECTION_REQUEST) {
            const auto& request = as<xcb_selection_request_event_t>(event);
            connection_.setBytes(request.requestor, request.property, request.target, copied_);
            connection_.answer(request, request.property);
        }
        if (type == XCB_CLIENT_MESSAGE) {
            const auto& message = as<xcb_client_message_event_t>(event);
            if (message.data.data32[0] == connection_.atom("WM_DELETE_WINDOW")) destroy(message.window);
        }
    }
}

void Client::copy(xcb_window_t owner, std::string text) {
    copied_ = std::move(text);
    connection_.own(owner, "CLIPBOARD");
}

}  // namespace morvel::e2e
