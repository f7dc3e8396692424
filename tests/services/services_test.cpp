#include <gtest/gtest.h>

#include <chrono>
#include <regex>
#include <thread>

#include "platform/windows1250.h"
#include "services/log.h"
#include "services/timer.h"
#include "support/temporary_folder.h"

namespace {

TEST(Log, EntriesAreTheirBytesAfterATimeStampAndAreThereAtOnce) {
    TemporaryFolder folder;
    WriteWholeFile("defaultlog.txt", std::string(10000, 'x'));  // each run rewrites the file
    std::string stamp;
    {
        Log log;
        const SYSTEMTIME& now = log.now;  // in numbers that aren't padded
        for (const auto& [number, end] :
             {std::pair{now.wDay, "\\."}, {now.wMonth, "\\."}, {now.wYear, " "}}) {
            stamp += std::to_string(number) + end;
        }
        EXPECT_TRUE(ReadWholeFile("defaultlog.txt")
                        .find(" " + std::to_string(now.wHour) + ":" + std::to_string(now.wMinute) + ":" +
                              std::to_string(now.wSecond) + " Logging") < 12);
        EXPECT_TRUE(Log::Write(&log, "Jméno rendereru:"_1250));
        EXPECT_TRUE(Log::Write(&log, reinterpret_cast<const unsigned char*>("unsigned")));
        EXPECT_TRUE(Log::Write(&log, static_cast<const char*>(nullptr)));
        EXPECT_NE(ReadWholeFile("defaultlog.txt").find("unsigned\n"), std::string::npos);
    }
    stamp += R"(\d{1,2}:\d{1,2}:\d{1,2} )";
    const std::regex whole(stamp + "Logging started\\.\\.\\.\n\n" + stamp + "Jm\xE9no rendereru:\n" +
                           stamp + "unsigned\n" + stamp + "\n" + stamp + "Logging ended\\.\\.\\.\n\n");
    const std::string bytes = ReadWholeFile("defaultlog.txt");
    EXPECT_TRUE(std::regex_match(bytes, whole)) << bytes;
}

TEST(Log, WithoutAFileOrALogNothingIsWritten) {
    EXPECT_FALSE(Log::Write(nullptr, "text"));
    TemporaryFolder folder;
    std::filesystem::create_directory("defaultlog.txt");
    testing::internal::CaptureStderr();
    Log log;
    EXPECT_FALSE(Log::Write(&log, "text"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "[:-(] Nelze zahájit logování\n");
}

TEST(Timer, AFrameLastsItsPeriodAndAnOverrunIsNotMadeUpFor) {
    Timer timer;
    EXPECT_EQ(timer.framePeriod, 100);
    timer.framePeriod = 20;
    timer.LimitFrameRate();
    std::this_thread::sleep_for(std::chrono::milliseconds(70));
    timer.LimitFrameRate();  // no wait
    EXPECT_GE(timer.loopTime, 70);
    EXPECT_LT(timer.frameTime, 70) << "of the next frame's work";
    int shortest = 1000;
    for (std::uint32_t frame = 1, start = timer.lastTick; frame <= 5; frame++) {
        timer.LimitFrameRate();
        EXPECT_GE(timer.lastTick - start, 20 * frame);
        EXPECT_GE(timer.loopTime, frame == 1 ? 0 : 20) << "the wait included";
        shortest = std::min(shortest, timer.loopTime);
    }
    EXPECT_LT(shortest, 40) << "a period is waited for once";

    // A period of 0 never waits: a single millisecond each would be a second.
    timer.framePeriod = 0;
    const std::uint32_t start = timer.lastTick;
    for (int frame = 0; frame < 1000; frame++) {
        timer.LimitFrameRate();
    }
    EXPECT_LT(timer.lastTick - start, 900u);

    // Only differences of the clock count, also across its wrap.
    timer.lastLoopTick = timer.lastTick + 0xFFFFFFF0u;  // 16 ago
    timer.TickLoop();
    EXPECT_GE(timer.loopTime, 16);
    EXPECT_LT(timer.loopTime, 10000);
}

TEST(Timer, ScalesByFrameTime) {
    Timer timer;
    EXPECT_EQ(timer.ScaleByFrameTime(3.0f), 3.0f);  // no frame yet
    timer.frameTime = 100;
    EXPECT_EQ(timer.ScaleByFrameTime(3.0f), 1.5f);  // half the reference of 200
    timer.referenceSpeed = 0;
    EXPECT_EQ(timer.ScaleByFrameTime(3.0f), 3.0f);
}

}  // namespace
