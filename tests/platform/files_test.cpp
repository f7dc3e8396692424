#include "platform/files.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace {

std::string Content(const char* name) {
    std::FILE* file = OpenFile(name, "rb");
    if (!file) return "no file";
    char buffer[100];
    const std::size_t length = std::fread(buffer, 1, sizeof buffer, file);
    std::fclose(file);
    return std::string(buffer, length);
}

TEST(Files, AreFoundWhateverTheCase) {
    const TemporaryFolder folder;
    WriteWholeFile("Scenes/Castle/wall.TGA", "wall");
    EXPECT_EQ(Content("Scenes/Castle/wall.TGA"), "wall");
    EXPECT_EQ(Content("SCENES\\castle\\Wall.tga"), "wall");
    EXPECT_EQ(Content(".\\scenes\\..\\SCENES\\\\castle/WALL.tga"), "wall");
    EXPECT_EQ(Content(((folder.path / "scenes/CASTLE/wall.tga").string()).c_str()), "wall");
    EXPECT_EQ(Content("scenes\\castle\\door.tga"), "no file");
    EXPECT_EQ(Content("scenes\\wall.tga\\wall.tga"), "no file");
    EXPECT_EQ(Content(""), "no file");
    EXPECT_EQ(Content(std::string(100000, 'a').c_str()), "no file");
}

TEST(Files, ExactNamesComeFirst) {
    const TemporaryFolder folder;
    WriteWholeFile("WALL.tga", "capitals");
    WriteWholeFile("Wall.tga", "capital");
    EXPECT_EQ(Content("Wall.tga"), "capital");
    EXPECT_EQ(Content("wall.tga"), "capitals") << "otherwise the first in the order of bytes";
    WriteWholeFile("back\\slash", "odd");
    EXPECT_EQ(Content("back\\slash"), "no file") << "a backslash always separates folders";
}

TEST(Files, FoldersAreNoFiles) {
    const TemporaryFolder folder;
    std::filesystem::create_directory("textures");
    EXPECT_EQ(OpenFile("textures", "r"), nullptr);
    EXPECT_EQ(OpenFile("TEXTURES", "r+bt"), nullptr);
    EXPECT_EQ(OpenFile("textures\\", "rb"), nullptr);
    EXPECT_EQ(OpenTextFile("textures"), nullptr);
}

TEST(Files, NewOnesGetTheNameAsWritten) {
    const TemporaryFolder folder;
    std::filesystem::create_directory("logs");
    std::FILE* file = OpenFile("logs\\New.txt", "w");
    ASSERT_NE(file, nullptr);
    std::fputs("text\n", file);
    std::fclose(file);
    EXPECT_EQ(ReadWholeFile("logs/New.txt"), "text\n");
    EXPECT_EQ(ResolveFileName("No\\Where"), "No/Where");
}

TEST(Files, UpdateModeReads) {
    const TemporaryFolder folder;
    WriteWholeFile("image", "\r\n\x1A");
    std::FILE* file = OpenFile("image", "r+bt");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(std::fgetc(file), '\r');
    EXPECT_EQ(std::fputc('x', file), 'x');
    std::fclose(file);
    EXPECT_EQ(ReadWholeFile("image"), "\rx\x1A");
}

TEST(TextFiles, ReadLineEndsOfBothKindsAlike) {
    const TemporaryFolder folder;
    WriteWholeFile("settings.atr", "a\r\nb\nc\rd\r\r\n\xFF\r");
    const std::unique_ptr<TextStream> stream = OpenTextFile("SETTINGS.ATR");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->text, "a\nb\nc\rd\r\n\xFF\r");
    EXPECT_EQ(stream->Read(), 'a');
    stream->position = 9;
    EXPECT_EQ(stream->Read(), 0xFF);
    EXPECT_EQ(stream->Read(), '\r');
    EXPECT_EQ(stream->Read(), -1);
    EXPECT_EQ(stream->Read(), -1);
    EXPECT_EQ(OpenTextFile("missing.atr"), nullptr);

    const std::string big(20000, 'x');
    WriteWholeFile("big", big + "\r\n");
    EXPECT_EQ(OpenTextFile("big")->text, big + "\n");
}

}  // namespace
