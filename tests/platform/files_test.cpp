#include "platform/files.h"

#include <gtest/gtest.h>

#include "platform/windows1250.h"
#include "support/temporary_folder.h"

namespace {

std::string Content(const std::string& name) {
    std::FILE* file = OpenFile(name.c_str(), "rb");
    if (file == nullptr) {
        return "no file";
    }
    char buffer[100];
    const std::size_t length = std::fread(buffer, 1, sizeof buffer, file);
    std::fclose(file);
    return std::string(buffer, length);
}

TEST(Files, AreFoundWhateverTheCaseAndExactNamesFirst) {
    const TemporaryFolder folder;
    WriteWholeFile("Scenes/Castle/wall.TGA", "wall");
    WriteWholeFile("WALL.tga", "capitals");
    WriteWholeFile("Wall.tga", "capital");
    WriteWholeFile("back\\slash", "odd");
    std::filesystem::create_directory("textures");
    const std::pair<std::string, std::string> contents[] = {
        {"Scenes/Castle/wall.TGA", "wall"},
        {"SCENES\\castle\\Wall.tga", "wall"},
        {".\\scenes\\..\\SCENES\\\\castle/WALL.tga", "wall"},
        {(folder.path / "scenes/CASTLE/wall.tga").string(), "wall"},
        {"scenes\\castle\\door.tga", "no file"},
        {"scenes\\wall.tga\\wall.tga", "no file"},
        {"scenes\\castle\\wall.tg", "no file"},
        {"", "no file"},
        {std::string(100000, 'a'), "no file"},
        {"Wall.tga", "capital"},
        {"wall.tga", "capitals"},  // the first in the order of bytes
        {"back\\slash", "no file"},
        {"textures", "no file"},
        {"TEXTURES", "no file"},
        {"textures\\", "no file"},
    };
    for (const auto& [name, content] : contents) {
        EXPECT_EQ(Content(name), content) << name;
    }
    EXPECT_EQ(OpenTextFile("textures"), nullptr);
    EXPECT_EQ(OpenTextFile("missing.atr"), nullptr);
    EXPECT_EQ(ResolveFileName("No\\Where"), "No/Where");
}

TEST(Files, AreWrittenUnderTheNameGivenAndUpdatedInPlace) {
    const TemporaryFolder folder;
    std::filesystem::create_directory("Logs");
    std::FILE* file = OpenFile("logs\\New.txt", "w");
    ASSERT_EQ(file, nullptr) << "a new name is taken as it is written, folders included";
    file = OpenFile("Logs\\New.txt", "w");
    ASSERT_NE(file, nullptr);
    std::fputs("\r\n\x1A", file);
    std::fclose(file);
    file = OpenFile("logs\\new.TXT", "r+bt");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(std::fgetc(file), '\r');
    EXPECT_EQ(std::fputc('x', file), 'x');
    std::fclose(file);
    EXPECT_EQ(ReadWholeFile("Logs/New.txt"), "\rx\x1A");
}

TEST(TextFiles, ReadLineEndsOfBothKindsAlike) {
    const TemporaryFolder folder;
    WriteWholeFile("settings.atr", "a\r\nb\nc\rd\r\r\n\xFF\r");
    const std::unique_ptr<TextStream> stream = OpenTextFile("SETTINGS.ATR");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->text, "a\nb\nc\rd\r\n\xFF\r");
    EXPECT_EQ(stream->Read(), 'a');
    stream->position = 9;
    for (const int character : {0xFF, int{'\r'}, -1, -1}) {
        EXPECT_EQ(stream->Read(), character);
    }
    const std::string big(20000, 'x');
    WriteWholeFile("big", big + "\r\n");
    EXPECT_EQ(OpenTextFile("big")->text, big + "\n");
}

TEST(Windows1250, LiteralsTheWayBackAndShortBuffers) {
    EXPECT_STREQ("paměť"_1250, "pam\xEC\x9D");
    const char* all = "Příliš žluťoučký kůň úpěl ďábelské ódy € “–”"_1250;
    EXPECT_EQ(Windows1250ToUtf8(all), "Příliš žluťoučký kůň úpěl ďábelské ódy € “–”");
    EXPECT_EQ(Windows1250ToUtf8("a\x81z\t"), "a?z\t") << "no letter has the byte 0x81";
    // Cut at a whole letter.
    char buffer[6];
    EXPECT_EQ(Windows1250ToUtf8("\x80\x80\x80", buffer, sizeof buffer), 3u);
    EXPECT_STREQ(buffer, "€");
    EXPECT_EQ(Windows1250ToUtf8("abc", buffer, 1), 0u);
    EXPECT_STREQ(buffer, "");
}

}  // namespace
