// The program among what the person's session starts: a desktop entry in the autostart folder.
#pragma once

#include <string>

#include "Platform/Log.h"
#include "Platform/LoginItem.h"

namespace morvel::x11 {

/// Main thread only. An entry that is there for this program is left as it is: session tools keep in it that the person
/// has switched it off.
class Autostart : public LoginItem {
public:
    /// The log outlives it. The folder is that of the configuration, the program this one's file.
    Autostart(Log& log, const std::string& configFolder, std::string program);

    void setRegistered(bool isRegistered) override;

    /// The path of the running program; empty where it cannot be told.
    static std::string ownProgram();

private:
    Log& log_;
    const std::string file_;
    const std::string program_;
};

}  // namespace morvel::x11
