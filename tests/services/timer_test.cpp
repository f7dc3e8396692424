#include "services/timer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "platform/clock.h"

namespace {

TEST(Timer, AFrameLastsAtLeastItsPeriod) {
    Timer timer;
    timer.framePeriod = 20;
    timer.LimitFrameRate();
    for (DWORD frame = 1, start = timer.lastTick; frame <= 5; frame++) {
        timer.LimitFrameRate();
        EXPECT_GE(timer.lastTick - start, 20 * frame);
    }
}

TEST(Timer, AnOverrunIsNotMadeUpFor) {
    Timer timer;
    timer.framePeriod = 20;
    timer.LimitFrameRate();
    std::this_thread::sleep_for(std::chrono::milliseconds(70));
    timer.LimitFrameRate();  // no wait
    EXPECT_GE(timer.loopTime, 70);
    const DWORD start = timer.lastTick;
    timer.LimitFrameRate();
    EXPECT_GE(timer.lastTick - start, 20u);
}

TEST(Timer, APeriodOfZeroNeverWaits) {
    Timer timer;
    timer.framePeriod = 0;
    const DWORD start = timeGetTime();
    for (int frame = 0; frame < 1000; frame++) {
        timer.LimitFrameRate();
    }
    EXPECT_LT(timeGetTime() - start, 900u);  // a single millisecond each would be 1000
}

TEST(Timer, ScalesByFrameTime) {
    Timer timer;
    EXPECT_EQ(timer.ScaleByFrameTime(3.0f), 3.0f);  // no frame yet
    timer.frameTime = 100;
    EXPECT_EQ(timer.ScaleByFrameTime(3.0f), 1.5f);  // half the reference of 200
    timer.referenceSpeed = 0;
    EXPECT_EQ(timer.ScaleByFrameTime(3.0f), 3.0f);
}

TEST(Timer, OnlyDifferencesOfTheClockCount) {
    Timer timer;
    timer.lastTick = timeGetTime() - 5;
    timer.lastLoopTick = timeGetTime() + 0xFFFFFFF0u;  // 16 ago, across the wrap
    timer.TickFrame();
    timer.TickLoop();
    EXPECT_GE(timer.frameTime, 5);
    EXPECT_GE(timer.loopTime, 16);
    EXPECT_LT(timer.loopTime, 10000);
}

}  // namespace
