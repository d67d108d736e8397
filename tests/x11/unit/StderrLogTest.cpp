#include "Platform/Linux/System/StderrLog.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace morvel::x11 {
namespace {

TEST(StderrLog, OneLineStaysOneLineWhateverItQuotes) {
    testing::internal::CaptureStderr();
    StderrLog log;
    log.error("not shown: \"a\nmorvel: b\x1b[2J\" R\u00e9sum\u00e9");
    log.error(std::string(1'000'000, 'x'));
    const std::string written = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(written.starts_with("morvel: not shown: \"a morvel: b [2J\" R\u00e9sum\u00e9\n"))
        << written.substr(0, 200);
    EXPECT_EQ(std::ranges::count(written, '\n'), 2);
    EXPECT_LT(written.size(), 2000u);
}

}  // namespace
}  // namespace morvel::x11
