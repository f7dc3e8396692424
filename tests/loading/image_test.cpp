#include <random>

#include "loading/loading_test.h"
#include "loading/sgi_image.h"
#include "loading/tga_image.h"
#include "scene_writer/image_file.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

/// An image in which flat runs and noise alternate, so that both kinds of packets come up.
engine::Image MakePicture(int width, int height, int channels) {
    std::mt19937 random(1);
    engine::Image image(width, height, channels);
    for (int y = 0; y < height; y++) {
        for (int channel = 0; channel < channels; channel++) {
            std::uint8_t value = 0;
            for (int x = 0; x < width; x++) {
                if (x % 32 >= 16 || random() % 8 == 0) {
                    value = static_cast<std::uint8_t>(random());
                }
                image.At(x, y, channel) = value;
            }
        }
    }
    return image;
}

/// The image as four bytes a pixel: grey in all three colours, and 255 for an alpha that isn't there.
Bytes Rgba(const engine::Image& image) {
    const int n = image.channels;
    Bytes rgba;
    for (std::size_t i = 0; i < image.samples.size(); i += n) {
        const std::uint8_t* pixel = &image.samples[i];
        const std::uint8_t alpha = n == 2 ? pixel[1] : n > 3 ? pixel[3] : 255;
        rgba.insert(rgba.end(), {pixel[0], pixel[n < 3 ? 0 : 1], pixel[n < 3 ? 0 : 2], alpha});
    }
    return rgba;
}

struct ImageTest : LoadingTest {
    std::int32_t width = -1, height = -1, components = -1;

    /// The pixels of wall.rgb, RGBA.
    Bytes Read() {
        const auto pixels =
            Watch([this] { return ReadRgbTexture("wall.rgb", width, height, components, &log); });
        if (pixels == nullptr) {
            return {};
        }
        return Bytes(pixels.get(), pixels.get() + std::size_t{4} * width * height);
    }
    Bytes Read(const std::string& bytes) {
        engine::WriteBytes("wall.rgb", bytes);
        return Read();
    }
    bool IsDamageLogged() const { return LoggedWith("wall.rgb: damaged SGI image").size() == 1; }

    void LoadTga(Texture& texture) {
        NeedContext();
        Watch([&] { return texture.LoadTga("wall.tga"), 0; });
    }
    /// What OpenGL holds, in as many channels. The record is usable, with or without an image.
    static Bytes Uploaded(const Texture& texture, int channels) {
        EXPECT_TRUE(texture.name.starts_with("wall."));
        EXPECT_EQ(texture.pixels, nullptr);
        EXPECT_NE(texture.glName, 0u);
        glBindTexture(GL_TEXTURE_2D, texture.glName);
        GLint value = 0;
        for (const auto& [parameter, wanted] :
             {std::pair{GL_TEXTURE_WRAP_S, GL_REPEAT}, std::pair{GL_TEXTURE_WRAP_T, GL_REPEAT},
              std::pair{GL_TEXTURE_MAG_FILTER, GL_LINEAR}, std::pair{GL_TEXTURE_MIN_FILTER, GL_NEAREST}}) {
            glGetTexParameteriv(GL_TEXTURE_2D, parameter, &value);
            EXPECT_EQ(value, wanted);
        }
        glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &value);
        EXPECT_EQ(value, GL_MODULATE);
        Bytes pixels(static_cast<std::size_t>(std::max(texture.width * texture.height * channels, 0)));
        const GLenum formats[] = {GL_LUMINANCE, GL_LUMINANCE_ALPHA, GL_RGB, GL_RGBA};
        glGetTexImage(GL_TEXTURE_2D, 0, formats[channels - 1], GL_UNSIGNED_BYTE, pixels.data());
        return pixels;
    }
};

TEST_F(ImageTest, ReachesOpenGlPixelByPixel) {
    NeedContext();
    for (int channels = 1; channels <= 4; channels++) {
        for (const auto& [columns, rows] : {std::pair{2, 2}, std::pair{256, 32}}) {
            const engine::Image image = MakePicture(columns, rows, channels);
            const auto expectImage = [&](const Texture& texture) {
                EXPECT_EQ(std::vector({texture.width, texture.height, texture.components}),
                          std::vector({image.width, image.height, channels}));
                EXPECT_EQ(Uploaded(texture, channels), image.samples);
                glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_INTERNAL_FORMAT, &components);
                EXPECT_EQ(components, channels);
            };
            for (const engine::SgiPacking packing :
                 {engine::SgiPacking::Verbatim, engine::SgiPacking::RunLength}) {
                WriteSgi("wall.rgb", image, packing);
                Texture texture;
                texture.LoadRgb("wall.rgb", &log);
                expectImage(texture);
            }
            if (channels < 3) {
                continue;
            }
            WriteTga("wall.tga", image);
            Texture texture;
            LoadTga(texture);
            EXPECT_EQ(boxes, Lines{});
            expectImage(texture);
        }
    }
}

TEST_F(ImageTest, AFaultyTgaIsToldAndGivesAnEmptyTexture) {
    const char *const type = "Nesprávný typ TGA souboru", *const sides = "Špatné rozměry TGA textury",
                      *const data = "Špatná TGA data";
    const struct {
        int offset, value;  ///< one wrong byte, or -1
        int cut;            ///< bytes that are missing at the end
        const char* box;
        int width;
    } cases[] = {
        {1, 1, 0, type, -1},     {2, 10, 0, type, -1},
        {-1, 0, 146, type, -1},  {12, 1, 0, sides, -1},
        {13, 4, 0, sides, -1},   {14, 12, 0, sides, -1},
        {-1, 0, 133, sides, -1}, {16, 16, 0, "Špatné TGA bity", -1},
        {-1, 0, 129, data, 4},   {-1, 0, 128, data, 4},
        {-1, 0, 1, data, 4},
    };
    for (const auto& faulty : cases) {
        std::string bytes = TgaBytes(MakePicture(4, 8, 4));
        if (faulty.offset >= 0) {
            bytes[faulty.offset] = static_cast<char>(faulty.value);
        }
        engine::WriteBytes("wall.tga", bytes.substr(0, bytes.size() - faulty.cut));
        Texture texture;
        LoadTga(texture);
        EXPECT_EQ(boxes, Lines{std::string("[:-(] ") + faulty.box});
        EXPECT_EQ(texture.width, faulty.width);
        Uploaded(texture, 4);
    }
    std::filesystem::remove("wall.tga");
    Texture texture;
    LoadTga(texture);
    EXPECT_EQ(boxes, Lines{"[:-(] Nelze otevřít soubor s TGA texturou"});
    Uploaded(texture, 4);

    // An identification isn't skipped: its bytes are taken for pixels. Nor is the origin minded.
    std::string bytes = TgaBytes(MakePicture(2, 2, 3));
    bytes[0] = 3;
    bytes[17] = 0x20;
    engine::WriteBytes("wall.tga", bytes.insert(18, "\x03\x02\x01"));
    LoadTga(texture);
    EXPECT_EQ(boxes, Lines{});
    EXPECT_EQ(Uploaded(texture, 3)[0], 1);
    EXPECT_EQ(Uploaded(texture, 3)[3], MakePicture(2, 2, 3).samples[0]);
    EXPECT_TRUE(IsPowerOfTwo(512) && !IsPowerOfTwo(1024) && !IsPowerOfTwo(96) && !IsPowerOfTwo(1) &&
                IsPowerOfTwo(2));
}

/// A run-length encoded grey image of four pixels a row that holds these packets.
std::string GreyRows(const std::vector<std::string>& rows) {
    std::string bytes =
        SgiBytes(engine::Image(4, static_cast<int>(rows.size()), 1), engine::SgiPacking::RunLength);
    bytes.resize(512);
    std::string lengths, packets;
    for (const std::string& row : rows) {
        bytes += {0, 0, 2, static_cast<char>(8 * rows.size() + packets.size())};  // 512 and this
        lengths += {0, 0, 0, static_cast<char>(row.size())};
        packets += row;
    }
    return bytes + lengths + packets;
}

TEST_F(ImageTest, SgiDropsWhatDoesNotFitAndPutsZeroForWhatIsMissing) {
    const struct {
        std::string row;
        Bytes pixels;
        bool damaged;
    } cases[] = {
        {{'\x84', 1, 2, 3, 4, 0}, {1, 2, 3, 4}, false},
        {{2, 7, '\x82', 8, 9, 0}, {7, 7, 8, 9}, false},
        {{4, 7}, {7, 7, 7, 7}, false},                        // full without an end
        {{3, 7, 0}, {7, 7, 7, 0}, true},                      // ends early
        {{127, 7, 0}, {7, 7, 7, 7}, true},                    // run past the row
        {{'\x86', 1, 2, 3, 4, 5, 6, 0}, {1, 2, 3, 4}, true},  // literals past the row
        {{4, 7, 1, 8, 0}, {7, 7, 7, 7}, true},
        {{'\x84', 1, 2}, {1, 2, 0, 0}, true},  // literals cut off
        {{3, 7, 1}, {7, 7, 7, 0}, true},       // run cut off
        {"", {0, 0, 0, 0}, true},
    };
    const auto expectRows = [this](const std::string& bytes, const Bytes& pixels, bool damaged) {
        // Followed by a good row, which must not suffer.
        engine::Image image(4, 2, 1);
        image.samples = pixels;
        image.samples.resize(8, 5);
        EXPECT_EQ(Read(bytes), Rgba(image));
        EXPECT_EQ(IsDamageLogged(), damaged);
    };
    for (const auto& [row, pixels, damaged] : cases) {
        expectRows(GreyRows({row, {4, 5, 0}}), pixels, damaged);
    }
    for (const char* value : {"\x7F\xFF\xFF\xFF", "\xFF\xFF\xFF\xFF"}) {
        const std::string good = GreyRows({{4, 6, 0}, {4, 5, 0}});
        expectRows(std::string(good).replace(512, 4, value), {0, 0, 0, 0}, true);
        // A length too large still has its row.
        expectRows(std::string(good).replace(512 + 8, 4, value), {6, 6, 6, 6}, true);
    }
    // Three rows, of which the second is the bytes of the first.
    std::string shared = GreyRows({{4, 6, 0}, {4, 7, 0}, {4, 5, 0}});
    shared.replace(512 + 4, 4, shared, 512, 4);
    engine::Image image(4, 3, 1);
    image.samples = {6, 6, 6, 6, 6, 6, 6, 6, 5, 5, 5, 5};
    EXPECT_EQ(Read(shared), Rgba(image));
    // Of a height of 0: no rows, hence nothing that is missing.
    EXPECT_EQ(Read(GreyRows({""}).substr(0, 100).replace(8, 2, 2, '\0')), Bytes());
    EXPECT_FALSE(IsDamageLogged());
}

TEST_F(ImageTest, SgiOfAnySizeIsReadAndCutAnywhereGivesZeroForTheRest) {
    const engine::Image image = MakePicture(20, 6, 2);
    const Bytes whole = Rgba(image);
    for (const engine::SgiPacking packing : {engine::SgiPacking::Verbatim, engine::SgiPacking::RunLength}) {
        for (int channels = 1; channels <= 5; channels++) {  // of which the first four count
            const engine::Image odd = MakePicture(50, 9, channels);
            EXPECT_EQ(Read(SgiBytes(odd, packing)), Rgba(odd)) << channels;
            EXPECT_EQ(components, channels);
            EXPECT_FALSE(IsDamageLogged());
        }
        const std::string good = SgiBytes(image, packing);
        for (std::size_t size = 0; size < good.size(); size++) {
            const Bytes pixels = Read(good.substr(0, size));
            if (size < 12) {
                continue;  // the sides are cut too
            }
            ASSERT_TRUE(std::ranges::equal(pixels, whole, [](int a, int b) { return a == b || a == 0; }));
            // A file that lacks nothing but the end mark of its last row still has all pixels.
            ASSERT_TRUE(IsDamageLogged() || pixels == whole);
        }
    }
}

}  // namespace
