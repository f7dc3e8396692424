#include "loading/tga_image.h"
#include "loading/tga_sgi_test.h"

namespace {

struct TgaTexture : TextureTest {
    /// Loads the bytes as wall.tga, and returns what the box says.
    std::string Load(Texture& texture, const std::string& bytes) {
        WriteBytes("wall.tga", bytes);
        testing::internal::CaptureStderr();
        texture.LoadTga("wall.tga");
        return testing::internal::GetCapturedStderr();
    }
};

TEST_F(TgaTexture, ReachesOpenGlPixelByPixel) {
    for (const auto& [width, height] : {std::pair{2, 2}, std::pair{64, 16}, std::pair{2, 512}}) {
        for (const int channels : {3, 4}) {
            const Image image = MakePicture(width, height, channels);
            Texture texture;
            EXPECT_EQ(Load(texture, TgaBytes(image)), "");
            ExpectLoaded(texture, "wall.tga");
            EXPECT_EQ(texture.width, width);
            EXPECT_EQ(texture.height, height);
            EXPECT_EQ(texture.components, channels);
            EXPECT_EQ(Uploaded(texture, channels), image.samples);
        }
    }
}

TEST_F(TgaTexture, WrittenByAnotherProgramIsTheSame) {
    for (const int channels : {3, 4}) {
        const Image image = MakePicture(32, 64, channels);
        Convert(image, "-flip -compress none", "wall.tga");  // this program writes the top row first
        Texture texture;
        texture.LoadTga("wall.tga");
        EXPECT_EQ(Uploaded(texture, channels), image.samples);
    }
}

TEST_F(TgaTexture, PixelsFollowTheHeaderWhateverItSays) {
    const Image image = MakePicture(2, 2, 3);
    std::string bytes = TgaBytes(image);
    bytes[0] = 3;      // an identification of three bytes, taken for the first pixel
    bytes[17] = 0x20;  // the top row first: not turned
    bytes.insert(18, "\x03\x02\x01");
    Texture texture;
    EXPECT_EQ(Load(texture, bytes), "");
    Bytes shifted{1, 2, 3};
    shifted.insert(shifted.end(), image.samples.begin(), image.samples.end() - 3);
    EXPECT_EQ(Uploaded(texture, 3), shifted);
}

TEST_F(TgaTexture, AFaultyFileIsToldAndGivesAnEmptyTexture) {
    const std::string good = TgaBytes(MakePicture(4, 8, 4));
    const auto with = [&](std::size_t offset, int value) {
        std::string bytes = good;
        bytes[offset] = static_cast<char>(value);
        return bytes;
    };
    const struct {
        std::string bytes;
        const char* box;
        int width;
    } cases[] = {
        {"", "Nesprávný typ TGA souboru", -1},
        {with(1, 1), "Nesprávný typ TGA souboru", -1},
        {with(2, 10), "Nesprávný typ TGA souboru", -1},
        {with(12, 1), "Špatné rozměry TGA textury", -1},
        {with(13, 4), "Špatné rozměry TGA textury", -1},  // 1028
        {with(14, 12), "Špatné rozměry TGA textury", -1},
        {good.substr(0, 13), "Špatné rozměry TGA textury", -1},
        {with(16, 16), "Špatné TGA bity", -1},
        {good.substr(0, 17), "Špatná TGA data", 4},
        {good.substr(0, good.size() - 1), "Špatná TGA data", 4},
        {good.substr(0, 18), "Špatná TGA data", 4},
    };
    for (const auto& faulty : cases) {
        Texture texture;
        EXPECT_EQ(Load(texture, faulty.bytes), std::string("[:-(] ") + faulty.box + "\n");
        EXPECT_EQ(texture.width, faulty.width);
        ExpectLoaded(texture, "wall.tga");
    }
    while (glGetError() != GL_NO_ERROR) {
    }
}

TEST_F(TgaTexture, AMissingFileIsToldAndGivesAnEmptyTexture) {
    Texture texture;
    testing::internal::CaptureStderr();
    texture.LoadTga("data\\none.tga");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "[:-(] Nelze otevřít soubor s TGA texturou\n");
    ExpectLoaded(texture, "data\\none.tga");
    while (glGetError() != GL_NO_ERROR) {
    }
}

TEST(TgaImage, SidesArePowersOfTwoFrom2To512) {
    std::vector<int> sides;
    for (int side = -4; side <= 70000; side++) {
        if (IsPowerOfTwo(side)) sides.push_back(side);
    }
    EXPECT_EQ(sides, (std::vector{2, 4, 8, 16, 32, 64, 128, 256, 512}));
}

}  // namespace
