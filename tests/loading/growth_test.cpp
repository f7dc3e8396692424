#include <time.h>

#include <cmath>

#include "common/windowless.h"
#include "costly_files/costly_files.h"
#include "loading/loading_test.h"
#include "loading/sgi_image.h"
#include "text/attribute_text.h"

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr double mostSeconds = 5.0;  // the sanitizers look at each access
#else
constexpr double mostSeconds = 1.0;
#endif

struct GrowthTest : testing::TestWithParam<CostlyFiles> {};

TEST_P(GrowthTest, AMegabyteOfAnythingLoadsWithinASecond) {
    unsetenv("DISPLAY");
    const TemporaryFolder folder;
    GetParam().write(1 << 20);
    // Of the processor, and the least of some, since other programs only add to it.
    double seconds = INFINITY;
    for (int round = 0; round < 5 && seconds > mostSeconds; round++) {
        Windowless world;
        world.scene.AddPlayers(2);
        timespec before{};
        timespec after{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &before);
        GetParam().load();
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &after);
        seconds = std::min(seconds, static_cast<double>(after.tv_sec - before.tv_sec) +
                                        1e-9 * static_cast<double>(after.tv_nsec - before.tv_nsec));
    }
    EXPECT_LE(seconds, mostSeconds);
    RecordProperty("seconds", std::to_string(seconds));
}

INSTANTIATE_TEST_SUITE_P(, GrowthTest, testing::ValuesIn(AllCostlyFiles()),
                         [](const auto& suite) { return suite.param.name; });

using HeaderAlone = LoadingTest;

TEST_F(HeaderAlone, GivesNoMemoryToAnImageOfWhichTheFileHoldsNothing) {
    for (const char* type : {"\x00", "\x01"}) {  // verbatim and encoded
        // 16128 x 16128 pixels of three channels.
        engine::WriteBytes("wall.rgb", "\x01\xDA" + std::string(type, 1) +
                                           std::string("\x01\0\x03\x3F\0\x3F\0\0\x03", 9) +
                                           std::string(500, 0));
        std::int32_t width = 0, height = 0, components = 0;
        EXPECT_EQ(Watch([&] { return ReadRgbTexture("wall.rgb", width, height, components, &log); }),
                  nullptr);
        EXPECT_EQ(boxes, Lines{"[:-(] Textura nejde nahrát"});
        EXPECT_EQ(width, 16128);
    }
}

TEST(AttributeText, GivesTheSameNumberToAllKeysBeforeIt) {
    const std::string far(500, ' ');
    AttributeText text("*A*A*A" + far + "-0." + std::string(500, '3') + far + "7x" + far + "word");
    int keys = 0;
    ForEachKey(text, "*A", [&](TextCursor cursor) {
        EXPECT_EQ(ScanName(cursor), keys < 2 ? "A" : "0." + std::string(197, '3'));
        EXPECT_EQ(ScanFloat(cursor), -1.0f / 3.0f);
        EXPECT_EQ(ScanInt(cursor), 7);
        EXPECT_EQ(ScanFloat(cursor), 0.0f);
        EXPECT_EQ(cursor.position, text.characters.size());
        keys++;
    });
    EXPECT_EQ(keys, 3);
}

}  // namespace
