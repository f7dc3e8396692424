#include <cctype>
#include <filesystem>

#include "loading/loading_test.h"

// The example in docs/scene_files.md is a whole scene file. What the page says is what loads.

namespace {

/// Two digits of the text become one byte; blanks in between don't matter.
std::string BytesOfHex(const std::string& text) {
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits),
                         [](unsigned char c) { return std::isxdigit(c) != 0; });
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    return bytes;
}

TEST_F(LoadingTest, TheWorkedExampleLoadsAsThePageSays) {
    const Lines lines = SplitLines(ReadWholeFile(DOCS_FOLDER "/scene_files.md"));
    std::string bytes;
    for (const std::string& line : lines) {
        // A line of the dump: an indent, eight digits of offset and a colon, 39 columns of bytes.
        if (line.size() > 53 && line.starts_with("    0") && line[12] == ':') {
            bytes += BytesOfHex(line.substr(14, 39));
        }
    }
    ASSERT_EQ(bytes.size(), 462u);
    ASSERT_TRUE(LoadBytes(bytes));
    EXPECT_EQ(Names(), Lines{"Tile"});
    const Object& tile = scene.objects[0];
    ASSERT_EQ(tile.vertexValueCount, 27);
    EXPECT_EQ(tile.texVertexValueCount, 15);
    EXPECT_EQ(VertexOf(tile, tile.xAxisVertex), (Values{2, 1, 0}));
    EXPECT_EQ(tile.normals[2], 1.0f);  // seen from above
    ASSERT_EQ(tile.keyTrackCount, 1);
    ASSERT_EQ(tile.keyTracks[0].keyCount, 1);
    EXPECT_EQ(ValuesOf(tile.keyTracks[0].keyTranslations[0]), (Values{0, 0, 0.5f}));
}

}  // namespace
