// A private virtual X server with a home folder of its own, gone without trace when the object dies.
#pragma once

#include <filesystem>
#include <string>

#include "../../TemporaryFolder.h"
#include "harness/Program.h"

namespace morvel::e2e {

class XServer {
public:
    /// One screen of the given size, depth 24. The server picks a free display number by itself and accepts local
    /// connections only. Throws std::runtime_error when it does not come up.
    XServer(int width, int height);
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;
    ~XServer();

    /// ":7", for instance.
    const std::string& display() const { return display_; }
    const std::filesystem::path& home() const { return scratch_.path(); }
    std::filesystem::path configFolder() const { return home() / ".config"; }
    /// For programs of this desktop: own HOME and XDG folders, no session bus, no accessibility bus, C.UTF-8.
    const Environment& environment() const { return environment_; }

private:
    TemporaryFolder scratch_;
    std::string display_;
    Environment environment_;
    Program server_;  // last: ends first
};

}  // namespace morvel::e2e
