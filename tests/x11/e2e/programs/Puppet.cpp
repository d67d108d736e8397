// A program with plain windows for tests: `puppet CLASS TITLE…` opens one window per title. It closes a window when
// asked to, but lives on without any, as many background programs do, until it is killed.
#include <unistd.h>

#include <cstdlib>

#include "harness/Connection.h"

namespace {

using namespace morvel::e2e;

void openWindow(Connection& connection, const std::string& className, const std::string& title, int index) {
    const int offset = 40 + 26 * (index % 16);
    const xcb_window_t id =
        connection.makeWindow({offset, offset, 300, 180}, 0x304050U + static_cast<uint32_t>(index) * 0x0F1705U);
    connection.setBytes(id, "_NET_WM_NAME", "UTF8_STRING", title);
    connection.setBytes(id, "WM_NAME", "STRING", title);
    connection.setBytes(id, "WM_CLASS", "STRING", className + std::string(1, '\0') + className + std::string(1, '\0'));
    connection.setCardinals(id, "_NET_WM_PID", "CARDINAL", {static_cast<uint32_t>(getpid())});
    connection.setCardinals(id, "WM_PROTOCOLS", "ATOM", {connection.atom("WM_DELETE_WINDOW")});
    xcb_map_window(connection, id);
}

}  // namespace

int main(int argc, char** argv) {
    const char* display = std::getenv("DISPLAY");
    if (argc < 2 || !display) return 2;
    Connection connection(display);
    for (int i = 2; i < argc; ++i) openWindow(connection, argv[1], argv[i], i - 2);
    connection.flush();
    const auto deleteWindow = connection.atom("WM_DELETE_WINDOW");
    while (const Event event{xcb_wait_for_event(connection)}) {
        if (typeOf(event) != XCB_CLIENT_MESSAGE) continue;
        const auto& message = as<xcb_client_message_event_t>(event);
        if (message.data.data32[0] == deleteWindow) xcb_destroy_window(connection, message.window);
        connection.flush();
    }
    return 0;
}
