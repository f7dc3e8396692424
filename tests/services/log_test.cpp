#include "services/log.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <regex>

#include "platform/windows1250.h"
#include "support/temporary_folder.h"

namespace {

const std::string stamp = R"(\d{1,2}\.\d{1,2}\.\d{4} \d{1,2}:\d{1,2}:\d{1,2} )";

TEST(Log, EntriesAreTheirBytesBehindATimeStamp) {
    TemporaryFolder folder;
    {
        Log log;
        EXPECT_TRUE(Log::Write(&log, "Jméno rendereru:"_1250));
        EXPECT_TRUE(Log::Write(&log, reinterpret_cast<const unsigned char*>("unsigned")));
        EXPECT_TRUE(Log::Write(&log, static_cast<const char*>(nullptr)));
        // Flushed at once: all is in the file while the log is still open.
        EXPECT_NE(ReadWholeFile("defaultlog.txt").find("unsigned\n"), std::string::npos);
    }
    const std::regex whole(stamp + "Logging started\\.\\.\\.\n\n" + stamp + "Jm\xE9no rendereru:\n" +
                           stamp + "unsigned\n" + stamp + "\n" + stamp + "Logging ended\\.\\.\\.\n\n");
    const std::string bytes = ReadWholeFile("defaultlog.txt");
    EXPECT_TRUE(std::regex_match(bytes, whole)) << bytes;
}

TEST(Log, NumbersAreNotPadded) {
    TemporaryFolder folder;
    Log log;
    const SYSTEMTIME& now = log.now;
    const std::string expected = std::to_string(now.wDay) + "." + std::to_string(now.wMonth) + "." +
                                 std::to_string(now.wYear) + " " + std::to_string(now.wHour) + ":" +
                                 std::to_string(now.wMinute) + ":" + std::to_string(now.wSecond) +
                                 " Logging";
    EXPECT_EQ(ReadWholeFile("defaultlog.txt").substr(0, expected.size()), expected);
    EXPECT_GT(now.wYear, 2000);
}

TEST(Log, EachRunRewritesTheFile) {
    TemporaryFolder folder;
    WriteWholeFile("defaultlog.txt", std::string(10000, 'x'));
    { Log log; }
    EXPECT_LT(ReadWholeFile("defaultlog.txt").size(), 200u);
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

}  // namespace
