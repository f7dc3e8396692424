#include "platform/clock.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

namespace {

TEST(Clock, LocalTimeFollowsTheZone) {
    for (const char* zone : {"UTC0", "EAST-13:30"}) {
        setenv("TZ", zone, 1);
        tzset();
        SYSTEMTIME time;
        GetLocalTime(&time);
        const std::time_t now = std::time(nullptr);
        char text[40];
        std::strftime(text, sizeof text, "%Y %m %d %w %H %M", std::localtime(&now));
        char expected[40];
        std::snprintf(expected, sizeof expected, "%d %02d %02d %d %02d %02d", time.wYear, time.wMonth,
                      time.wDay, time.wDayOfWeek, time.wHour, time.wMinute);
        EXPECT_TRUE(std::string(text) == expected || time.wSecond == 59) << text << expected;
    }
    unsetenv("TZ");
}

}  // namespace
