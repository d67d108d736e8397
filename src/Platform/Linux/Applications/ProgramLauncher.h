// Starting programs by their desktop entries, and opening files and pages with the applications that are for them.
#pragma once

#include <string>

#include "Platform/Log.h"

namespace morvel::x11 {

/// Every call returns at once: each piece of work has a thread of its own, so that neither a slow disk nor a bus that
/// does not answer holds up the bar or the next start. What is started owes us nothing: it has its own session, none of
/// our descriptors and no tie to our life, and init reaps it. What fails is logged.
class ProgramLauncher {
public:
    /// Outlives the main loop's last turn.
    explicit ProgramLauncher(Log& log) : log_(log) {}

    /// Starts the program of the entry, or has it activated over the session bus where the entry asks for that.
    void open(const std::string& entryPath);
    /// Starts a process of the entry's own Exec line whatever else the entry asks for.
    void openNewInstance(const std::string& entryPath);
    /// Starts the Exec line of one of the entry's additional actions.
    void openAction(const std::string& entryPath, const std::string& action);
    /// An absolute path.
    void openFile(const std::string& path);
    void openAddress(const std::string& address);

private:
    Log& log_;
};

}  // namespace morvel::x11
