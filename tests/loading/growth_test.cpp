#include <malloc.h>
#include <time.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>

#include "costly_files.h"
#include "loading/key_index.h"
#include "loading/loading_test.h"
#include "loading/sgi_image.h"

namespace {

struct GrowthTest : testing::TestWithParam<CostlyFiles> {};

/// Seconds of the processor that a load takes: the least of some, since other programs only add to them.
double LoadTime(const CostlyFiles& files, double best) {
    const LoadingWorld world;
    timespec before{};
    timespec after{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &before);
    files.load();
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &after);
    return std::min(best, static_cast<double>(after.tv_sec - before.tv_sec) +
                              1e-9 * static_cast<double>(after.tv_nsec - before.tv_nsec));
}

TEST_P(GrowthTest, TheTimeOfALoadGrowsWithTheSizeOfItsFiles) {
    unsetenv("DISPLAY");
    // Memory that the system has handed out once stays, or else large files would pay for it again and
    // again.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    const TemporaryFolder folder;
    const CostlyFiles& files = GetParam();
    double times[3] = {INFINITY, INFINITY, INFINITY};
    double exponent = INFINITY;
    for (int round = 0; round < 40 && (round < 3 || exponent > 1.1); round++) {
        for (int size = 0; size < 3; size++) {
            files.write(std::int64_t{1} << (16 + size));
            times[size] = LoadTime(files, times[size]);
        }
        exponent = std::log2(times[2] / times[0]) / 2;
    }
    EXPECT_LE(exponent, 1.1) << times[0] << " s, " << times[1] << " s, " << times[2] << " s";
}

INSTANTIATE_TEST_SUITE_P(, GrowthTest, testing::ValuesIn(AllCostlyFiles()),
                         [](const auto& suite) { return suite.param.name; });

using HeaderAlone = LoadingTest;

TEST_F(HeaderAlone, GivesNoMemoryToAnImageOfWhichTheFileHoldsNothing) {
    for (const char* type : {"\x00", "\x01"}) {  // verbatim and encoded
        // 16128 x 16128 pixels of three channels.
        WriteBytes("wall.rgb", "\x01\xDA" + std::string(type, 1) +
                                   std::string("\x01\0\x03\x3F\0\x3F\0\0\x03", 9) + std::string(500, 0));
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

TEST(KeyIndex, GathersWhatTheKeyLoopMeets) {
    constexpr std::string_view keys[] = {"*A"};
    const auto handlingOf = [](std::int32_t number) {
        using Handling = KeyIndex::Handling;
        return number == 1 ? Handling::none : number > 1 ? Handling::together : Handling::oneByOne;
    };
    std::mt19937 random(1);
    for (int round = 0; round < 2000; round++) {
        std::string characters;
        for (unsigned length = random() % 60; length > 0; length--) {
            characters += "*A*A*A 012345--"[random() % 15];
        }
        AttributeText text(characters);
        KeyIndex index(text, keys);
        for (int i = 0; i < 5; i++) {
            // A block ends with a brace, never within a key or a number.
            const std::size_t end = std::min(characters.find(' ', random() % 60), characters.size());
            const TextRange range{std::min<std::size_t>(random() % 60, end), end};
            std::vector<std::int32_t> wantedOneByOne, oneByOne;
            std::map<std::int32_t, std::pair<std::size_t, std::size_t>> wanted, together;
            AttributeText body(characters.substr(range.begin, end - range.begin));
            ForEachKey(body, "*A", [&](TextCursor cursor) {
                const std::size_t position = range.begin + cursor.position;
                const std::int32_t number = ScanInt(cursor);
                if (number > 1) {
                    wanted[number] = {wanted[number].first + 1, position};
                } else if (number < 1) {
                    wantedOneByOne.push_back(number);
                }
            });
            for (const auto& found : index.ForNumbers(range, 0, handlingOf)) {
                if (found.number > 1) {
                    together[found.number] = {together[found.number].first + found.count,
                                              found.last.position};
                } else {
                    oneByOne.push_back(found.number);
                }
            }
            ASSERT_EQ(oneByOne, wantedOneByOne) << characters << " to " << end;
            ASSERT_EQ(together, wanted) << characters << " to " << end;
        }
    }
}

}  // namespace
