#include "harness/XServer.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <vector>

namespace morvel::e2e {
namespace {

Environment environmentIn(const std::filesystem::path& home) {
    Environment environment;
    for (const char* kept : {"PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"})
        if (const char* value = std::getenv(kept)) environment[kept] = value;
    for (const auto& [variable, folder] : {std::pair{"XDG_CONFIG_HOME", ".config"},
                                           {"XDG_CACHE_HOME", ".cache"},
                                           {"XDG_DATA_HOME", ".local/share"},
                                           {"XDG_RUNTIME_DIR", "runtime"}}) {
        const auto path = home / folder;
        std::filesystem::create_directories(path);
        environment[variable] = path;
    }
    std::filesystem::permissions(home / "runtime", std::filesystem::perms::owner_all);
    environment["HOME"] = home;
    environment["LANG"] = environment["LC_ALL"] = "C.UTF-8";
    // Programs must neither find the developer's session bus nor start one that outlives the test.
    environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + (home / "runtime/no-bus").string();
    environment["NO_AT_BRIDGE"] = "1";
    environment["GSETTINGS_BACKEND"] = "memory";
    environment["GDK_BACKEND"] = "x11";
    return environment;
}

/// Reads the display number that the server writes once it is ready for connections.
std::string readDisplayNumber(int descriptor) {
    std::string text;
    while (text.find('\n') == std::string::npos) {
        pollfd ready{descriptor, POLLIN, 0};
        char chunk[16];
        if (poll(&ready, 1, static_cast<int>(kPatience.count())) != 1) break;
        const auto count = read(descriptor, chunk, sizeof chunk);
        if (count <= 0) break;
        text.append(chunk, static_cast<size_t>(count));
    }
    if (text.empty() || text.back() != '\n') throw std::runtime_error("the X server does not start");
    text.pop_back();
    return text;
}

Program startServer(int width, int height, const Environment& environment, const std::filesystem::path& log,
                    std::string& display) {
    int ready[2];
    if (pipe2(ready, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    const auto screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
    Program server({"Xvfb", "-displayfd", std::to_string(ready[1]), "-screen", "0", screen, "-nolisten", "tcp",
                    "-noreset", "-dpi", "96"},
                   environment, {.output = log, .deathSignal = SIGTERM, .inheritedDescriptor = ready[1]});
    close(ready[1]);
    display = ":" + readDisplayNumber(ready[0]);
    close(ready[0]);
    return server;
}

}  // namespace

XServer::XServer(int width, int height)
    : environment_(environmentIn(scratch_.path())),
      server_(startServer(width, height, environment_, home() / "server.log", display_)) {
    environment_["DISPLAY"] = display_;
}

// Ended politely, it removes its socket and its lock.
XServer::~XServer() {
    server_.terminate();
}

}  // namespace morvel::e2e
