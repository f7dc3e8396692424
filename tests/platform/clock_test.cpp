#include "platform/clock.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>

namespace {

TEST(Clock, CountsMilliseconds) {
    const DWORD start = timeGetTime();
    usleep(50000);
    const DWORD passed = timeGetTime() - start;
    EXPECT_GE(passed, 49u);
    EXPECT_LT(passed, 5000u);
}

TEST(Clock, LocalTimeFollowsTheZone) {
    const auto minuteOfDay = [](const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
        SYSTEMTIME time;
        GetLocalTime(&time);
        EXPECT_LT(time.wMilliseconds, 1000);
        return time.wHour * 60 + time.wMinute;
    };
    const int universal = minuteOfDay("UTC0");
    const int east = minuteOfDay("EAST-5:30");
    const int ahead = (east - universal + 1440) % 1440;
    EXPECT_TRUE(ahead == 330 || ahead == 331) << ahead;

    setenv("TZ", "UTC0", 1);
    tzset();
    SYSTEMTIME time;
    GetLocalTime(&time);
    const std::time_t now = std::time(nullptr);
    const std::tm expected = *std::gmtime(&now);
    EXPECT_EQ(time.wYear, expected.tm_year + 1900);
    EXPECT_EQ(time.wMonth, expected.tm_mon + 1);
    EXPECT_EQ(time.wDay, expected.tm_mday);
    EXPECT_EQ(time.wDayOfWeek, expected.tm_wday);
}

}  // namespace
