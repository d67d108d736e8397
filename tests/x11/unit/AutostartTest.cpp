#include "Platform/Linux/Applications/Autostart.h"

#include <gtest/gtest.h>

#include <fstream>

#include "sim/SimLog.h"
#include "x11/TemporaryFolder.h"

namespace morvel::x11 {
namespace {

TEST(Autostart, ComesAndGoesAndLeavesAloneWhatThePersonChanged) {
    const TemporaryFolder folder;
    sim::SimLog log;
    constexpr const char* kFile = "autostart/morvel.desktop";
    const std::string file = folder.at(kFile);
    Autostart item(log, folder.path().string(), "/opt/my bar/mor$vel");
    item.setRegistered(false);
    EXPECT_EQ(log.errors.size(), 0u) << "it was not there";
    item.setRegistered(true);
    const std::string entry = folder.read(kFile);
    EXPECT_NE(entry.find("\nExec=\"/opt/my bar/mor\\\\$vel\"\n"), std::string::npos) << entry;
    std::ofstream(file, std::ios::app) << "Hidden=true\n";
    item.setRegistered(true);
    EXPECT_EQ(folder.read(kFile), entry + "Hidden=true\n");
    std::ofstream(file) << "[Desktop Entry]\nExec=/gone/morvel\n";
    item.setRegistered(true);
    EXPECT_EQ(folder.read(kFile), entry) << "an entry of where the program was before";
    item.setRegistered(false);
    EXPECT_FALSE(std::filesystem::exists(file));
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
