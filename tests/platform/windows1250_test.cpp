#include "platform/windows1250.h"

#include <gtest/gtest.h>

namespace {

TEST(Windows1250, LiteralsAndTheWayBack) {
    EXPECT_STREQ("paměť"_1250, "pam\xEC\x9D");
    EXPECT_EQ(Windows1250ToUtf8("pam\xEC\x9D"), "paměť");
    const char* all = "Příliš žluťoučký kůň úpěl ďábelské ódy € “–”"_1250;
    EXPECT_EQ(Windows1250ToUtf8(all), "Příliš žluťoučký kůň úpěl ďábelské ódy € “–”");
    EXPECT_EQ(Windows1250ToUtf8("a\x81z\t"), "a?z\t") << "no letter has the byte 0x81";
    EXPECT_EQ(Windows1250ToUtf8(""), "");
}

TEST(Windows1250, ShortBuffersCutAtAWholeLetter) {
    char buffer[6];
    EXPECT_EQ(Windows1250ToUtf8("\x80\x80\x80", buffer, sizeof buffer), 3u);
    EXPECT_STREQ(buffer, "€");
    EXPECT_EQ(Windows1250ToUtf8("abc", buffer, 1), 0u);
    EXPECT_STREQ(buffer, "");
}

}  // namespace
