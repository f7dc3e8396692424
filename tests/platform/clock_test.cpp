#include "platform/clock.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
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
    for (const char* zone : {"UTC0", "EAST-13:30"}) {
        setenv("TZ", zone, 1);
        tzset();
        const auto now = std::chrono::system_clock::now().time_since_epoch() / std::chrono::milliseconds(1);
        const std::time_t seconds = now / 1000;
        SYSTEMTIME time;
        GetLocalTime(&time);
        std::tm told{time.wSecond,
                     time.wMinute,
                     time.wHour,
                     time.wDay,
                     time.wMonth - 1,
                     time.wYear - 1900,
                     0,
                     0,
                     0,
                     0,
                     nullptr};
        EXPECT_EQ(time.wDayOfWeek, std::localtime(&seconds)->tm_wday);
        EXPECT_NEAR(static_cast<double>(std::mktime(&told) * 1000 + time.wMilliseconds),
                    static_cast<double>(now), 500);
    }
    unsetenv("TZ");
}

}  // namespace
