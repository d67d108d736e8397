#include "Platform/Linux/Applications/Autostart.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "TemporaryFolder.h"
#include "sim/SimLog.h"

namespace morvel::x11 {
namespace {

std::string read(const std::string& path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return file ? text.str() : "none";
}

TEST(Autostart, ComesAndGoesAndLeavesAloneWhatThePersonChanged) {
    const TemporaryFolder folder;
    sim::SimLog log;
    const std::string file = folder.at("autostart/morvel.desktop");
    Autostart item(log, folder.at("").substr(0, folder.at("").size() - 1), "/opt/my bar/mor$vel");
    item.setRegistered(false);
    EXPECT_EQ(log.errors.size(), 0u) << "it was not there";
    item.setRegistered(true);
    const std::string entry = read(file);
    EXPECT_NE(entry.find("\nExec=\"/opt/my bar/mor\\\\$vel\"\n"), std::string::npos) << entry;
    std::ofstream(file, std::ios::app) << "Hidden=true\n";
    item.setRegistered(true);
    EXPECT_EQ(read(file), entry + "Hidden=true\n");
    std::ofstream(file) << "[Desktop Entry]\nExec=/gone/morvel\n";
    item.setRegistered(true);
    EXPECT_EQ(read(file), entry) << "an entry of where the program was before";
    item.setRegistered(false);
    EXPECT_EQ(read(file), "none");
}

TEST(Autostart, AFolderThatCannotBeWrittenIsLogged) {
    sim::SimLog log;
    Autostart item(log, "/dev/null", "/usr/bin/morvel");
    item.setRegistered(true);
    item.setRegistered(false);
    EXPECT_EQ(log.errors.size(), 2u);
}

}  // namespace
}  // namespace morvel::x11
