#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "scene/scene.h"
#include "support/temporary_folder.h"

// The example in docs/scene_files.md is a whole scene file. What the page says is what loads.

namespace {

std::ifstream OpenPage() {
    return std::ifstream(std::filesystem::path(__FILE__).parent_path() / "../../docs/scene_files.md");
}

/// Two digits of the text become one byte; blanks in between don't matter.
std::string BytesOfHex(const std::string& text) {
    std::string digits;
    for (const char c : text) {
        if (std::isxdigit(static_cast<unsigned char>(c))) digits += c;
    }
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    return bytes;
}

/// The lines of the dump: an indent, eight digits of offset and a colon, 39 columns of bytes.
std::string BytesOfDump() {
    std::ifstream page = OpenPage();
    std::string bytes;
    for (std::string line; std::getline(page, line);) {
        if (line.size() > 53 && line.starts_with("    0") && line[12] == ':') {
            bytes += BytesOfHex(line.substr(14, 39));
        }
    }
    return bytes;
}

Vector VertexOf(const Object& object, std::int32_t index) {
    Vector result;
    object.GetVertex(result, index);
    return result;
}

void ExpectVector(Vector vector, float x, float y, float z) {
    EXPECT_EQ(vector.x, x);
    EXPECT_EQ(vector.y, y);
    EXPECT_EQ(vector.z, z);
}

}  // namespace

TEST(WorkedExample, LoadsAsThePageSays) {
    const std::string bytes = BytesOfDump();
    ASSERT_EQ(bytes.size(), 462u);
    const TemporaryFolder folder;
    WriteWholeFile("tile.bin", bytes);
    Scene scene;
    ASSERT_TRUE(scene.LoadMesh("tile.bin"));

    ASSERT_EQ(scene.objectCount, 1);
    const Object& tile = scene.objects[0];
    EXPECT_EQ(tile.name, "Tile");
    ASSERT_EQ(tile.vertexValueCount, 27);
    ASSERT_EQ(tile.faceValueCount, 6);
    EXPECT_EQ(tile.texVertexValueCount, 15);
    ExpectVector(VertexOf(tile, 0), 0, 0, 0);
    ExpectVector(VertexOf(tile, 3), 2, 2, 0);
    ExpectVector(VertexOf(tile, tile.spareVertex), 1, 1, 0);
    ExpectVector(VertexOf(tile, tile.centreVertex), 1, 1, 0);
    ExpectVector(VertexOf(tile, tile.xAxisVertex), 2, 1, 0);
    ExpectVector(VertexOf(tile, tile.yAxisVertex), 1, 2, 0);
    ExpectVector(VertexOf(tile, tile.zAxisVertex), 1, 1, 1);
    EXPECT_EQ(tile.spareVertex, 4);
    EXPECT_EQ(tile.normals[2], 1.0f);  // seen from above
    ASSERT_EQ(tile.keyTrackCount, 1);
    ASSERT_EQ(tile.keyTracks[0].keyCount, 1);
    ExpectVector(tile.keyTracks[0].keyTranslations[0], 0, 0, 0.5f);
}

TEST(WorkedExample, FieldsStandWhereThePageSays) {
    const std::string bytes = BytesOfDump();
    std::ifstream page = OpenPage();
    int fields = 0;
    for (std::string line; std::getline(page, line);) {
        std::istringstream row(line);
        std::string bar, content;
        std::size_t offset = 0;
        if (!(row >> bar >> offset >> bar) || !std::getline(row, content, '|')) continue;
        if (!content.starts_with(" `")) continue;
        const std::string expected = BytesOfHex(content);
        EXPECT_EQ(bytes.substr(offset, expected.size()), expected) << line;
        fields++;
    }
    EXPECT_GT(fields, 20);
}
