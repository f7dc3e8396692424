#include "loading/sgi_image.h"
#include "loading/tga_sgi_test.h"
#include "services/log.h"

namespace {

/// The image as four bytes a pixel: grey in all three colours, and 255 for an alpha that isn't there.
Bytes Rgba(const Image& image) {
    Bytes pixels;
    for (int y = 0; y < image.height; y++) {
        for (int x = 0; x < image.width; x++) {
            const bool grey = image.channels < 3;
            pixels.push_back(image.At(x, y, 0));
            pixels.push_back(image.At(x, y, grey ? 0 : 1));
            pixels.push_back(image.At(x, y, grey ? 0 : 2));
            const bool alpha = image.channels == 2 || image.channels > 3;
            pixels.push_back(alpha ? image.At(x, y, grey ? 1 : 3) : 255);
        }
    }
    return pixels;
}

using SgiTexture = TextureTest;

TEST_F(SgiTexture, ReachesOpenGlPixelByPixel) {
    for (const SgiPacking packing : {SgiPacking::Verbatim, SgiPacking::RunLength}) {
        for (int channels = 1; channels <= 4; channels++) {
            const Image image = MakePicture(256, 32, channels);
            WriteSgi("wall.rgb", image, packing);
            Texture texture;
            texture.LoadRgb("wall.rgb");
            ExpectLoaded(texture, "wall.rgb");
            EXPECT_EQ(texture.width, 256);
            EXPECT_EQ(texture.height, 32);
            EXPECT_EQ(texture.components, channels);
            EXPECT_EQ(Parameter(GL_TEXTURE_INTERNAL_FORMAT), channels);
            EXPECT_EQ(Uploaded(texture, channels), image.samples);
        }
    }
}

TEST_F(SgiTexture, WithFiveChannelsIsLeftToOpenGl) {
    WriteSgi("wall.rgb", MakePicture(8, 8, 5));
    Texture texture;
    texture.LoadRgb("wall.rgb");
    EXPECT_EQ(texture.components, 5);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_VALUE));
    ExpectLoaded(texture, "wall.rgb");
}

/// Reads images without a display or a context. A log takes what is said about damaged ones.
struct SgiImage : ImageFileTest {
    Log log;
    std::int32_t width = -1;
    std::int32_t height = -1;
    std::int32_t components = -1;

    SgiImage() {
        unsetenv("DISPLAY");
        unsetenv("WAYLAND_DISPLAY");
    }
    Bytes Read(const char* path) {
        const auto pixels = ReadRgbTexture(path, width, height, components, &log);
        if (pixels == nullptr) return {};
        return Bytes(pixels.get(), pixels.get() + std::size_t{4} * width * height);
    }
    Bytes ReadBytes(const std::string& bytes) {
        WriteBytes("wall.rgb", bytes);
        return Read("wall.rgb");
    }
    /// The red values alone, which are all there is of a grey image.
    Bytes ReadGrey(const std::string& bytes) {
        Bytes grey;
        const Bytes pixels = ReadBytes(bytes);
        for (std::size_t i = 0; i < pixels.size(); i += 4) {
            grey.push_back(pixels[i]);
        }
        return grey;
    }
    static bool IsDamageLogged() {
        return ReadWholeFile("defaultlog.txt").find("wall.rgb: damaged SGI image") != std::string::npos;
    }
};

TEST_F(SgiImage, GivesFourChannelsWhateverItHas) {
    for (const SgiPacking packing : {SgiPacking::Verbatim, SgiPacking::RunLength}) {
        for (int channels = 1; channels <= 5; channels++) {
            const Image image = MakePicture(50, 9, channels);
            EXPECT_EQ(ReadBytes(SgiBytes(image, packing)), Rgba(image)) << channels;
            EXPECT_EQ(components, channels);
        }
    }
    EXPECT_FALSE(IsDamageLogged());
}

TEST_F(SgiImage, WrittenByAnotherProgramIsTheSame) {
    for (const char* packing : {"-compress none", "-compress RLE"}) {
        for (const int channels : {1, 3, 4}) {
            const Image image = MakePicture(300, 40, channels);
            Convert(image, packing, "sgi:wall.rgb");
            EXPECT_EQ(Read("wall.rgb"), Rgba(image)) << packing << channels;
            EXPECT_EQ(components, channels);
        }
    }
    const Image image = MakePicture(77, 13, 3);
    Convert(image, "", "source.ppm");
    ASSERT_EQ(RunCommand("pnmtosgi -rle source.ppm > wall.rgb").exitCode, 0);
    EXPECT_EQ(Read("wall.rgb"), Rgba(image));
    EXPECT_FALSE(IsDamageLogged());
}

/// A run-length encoded grey image whose first rows hold these packets.
std::string GreyRows(int width, const std::vector<std::string>& rows) {
    std::string bytes = SgiBytes(Image(width, static_cast<int>(rows.size()), 1), SgiPacking::RunLength);
    bytes.resize(512);
    std::size_t offset = 512 + 8 * rows.size();
    std::string lengths;
    std::string packets;
    const auto append = [](std::string& table, std::size_t value) {
        for (const int shift : {24, 16, 8, 0}) {
            table += static_cast<char>(value >> shift & 0xFF);
        }
    };
    for (const std::string& row : rows) {
        append(bytes, offset + packets.size());
        append(lengths, row.size());
        packets += row;
    }
    return bytes + lengths + packets;
}

TEST_F(SgiImage, DropsWhatDoesNotFitAndPutsZeroForWhatIsMissing) {
    const auto packets = [](std::initializer_list<int> bytes) {
        return std::string(bytes.begin(), bytes.end());
    };
    const struct {
        std::string row;
        Bytes pixels;
        bool damaged;
    } cases[] = {
        {packets({0x84, 1, 2, 3, 4, 0}), {1, 2, 3, 4}, false},
        {packets({2, 7, 0x82, 8, 9, 0}), {7, 7, 8, 9}, false},
        {packets({4, 7}), {7, 7, 7, 7}, false},    // full without an end
        {packets({3, 7, 0}), {7, 7, 7, 0}, true},  // ends early
        {packets({0, 4, 7}), {0, 0, 0, 0}, true},
        {packets({127, 7, 0}), {7, 7, 7, 7}, true},                  // run past the row
        {packets({0x86, 1, 2, 3, 4, 5, 6, 0}), {1, 2, 3, 4}, true},  // literals past the row
        {packets({4, 7, 1, 8, 0}), {7, 7, 7, 7}, true},
        {packets({0x84, 1, 2}), {1, 2, 0, 0}, true},  // literals cut off
        {packets({3, 7, 1}), {7, 7, 7, 0}, true},     // run cut off
        {"", {0, 0, 0, 0}, true},
    };
    for (const auto& row : cases) {
        std::filesystem::resize_file("defaultlog.txt", 0);
        // Followed by a good row, which must not suffer.
        Bytes expected = row.pixels;
        expected.insert(expected.end(), {5, 5, 5, 5});
        EXPECT_EQ(ReadGrey(GreyRows(4, {row.row, packets({4, 5, 0})})), expected);
        EXPECT_EQ(IsDamageLogged(), row.damaged);
    }
}

TEST_F(SgiImage, TrustsNoTable) {
    const std::string good = GreyRows(4, {std::string("\x04\x05\x00", 3), std::string("\x04\x06\x00", 3)});
    ASSERT_EQ(ReadGrey(good), (Bytes{5, 5, 5, 5, 6, 6, 6, 6}));
    // Offset and length of the first row.
    for (const std::size_t field : {512u, 512u + 8u}) {
        for (const char* value : {"\x7F\xFF\xFF\xFF", "\xFF\xFF\xFF\xFF"}) {
            std::string bytes = good;
            bytes.replace(field, 4, value);
            const std::uint8_t first = field == 512 ? 0 : 5;  // a length too large still has its row
            EXPECT_EQ(ReadGrey(bytes), (Bytes{first, first, first, first, 6, 6, 6, 6}));
        }
    }
    EXPECT_TRUE(IsDamageLogged());
}

TEST_F(SgiImage, CutAnywhereGivesZeroForTheRest) {
    const Image image = MakePicture(20, 6, 2);
    for (const SgiPacking packing : {SgiPacking::Verbatim, SgiPacking::RunLength}) {
        const std::string good = SgiBytes(image, packing);
        const Bytes whole = Rgba(image);
        for (std::size_t size = 0; size < good.size(); size++) {
            std::filesystem::resize_file("defaultlog.txt", 0);
            const Bytes pixels = ReadBytes(good.substr(0, size));
            if (size < 12) continue;  // the sides are cut too
            ASSERT_EQ(pixels.size(), whole.size());
            for (std::size_t i = 0; i < pixels.size(); i++) {
                ASSERT_TRUE(pixels[i] == whole[i] || pixels[i] == 0);
            }
            // A file that lacks nothing but the end mark of its last row still has all pixels.
            ASSERT_TRUE(IsDamageLogged() || pixels == whole);
        }
    }
}

TEST_F(SgiImage, RandomBytesDoNoHarm) {
    std::mt19937 random(3);
    const std::string good = SgiBytes(MakePicture(40, 5, 3), SgiPacking::RunLength);
    for (int round = 0; round < 3000; round++) {
        std::string bytes = good;
        for (std::uint32_t count = 1 + random() % 8; count > 0; count--) {
            // Sides stay what they are, lest the image gets huge.
            bytes[random() % 2 == 0 ? 512 + random() % 120 : 512 + random() % (bytes.size() - 512)] =
                static_cast<char>(random());
        }
        ASSERT_EQ(ReadBytes(bytes).size(), 40u * 5 * 4);
    }
}

/// A header and nothing behind it.
std::string Header(const char* type, const char* xsize, const char* ysize, const char* zsize) {
    return std::string("\x01\xDA") + std::string(type, 2) + std::string("\0\x03", 2) +
           std::string(xsize, 2) + std::string(ysize, 2) + std::string(zsize, 2) + std::string(500, '\0');
}

using SgiImageDeathTest = SgiImage;

TEST_F(SgiImageDeathTest, MoreThanAGibibyteCountsAsNoMemory) {
    testing::internal::CaptureStderr();
    // 16385 x 16384 pixels of four bytes.
    EXPECT_EQ(ReadBytes(Header("\0\x01", "\x40\x01", "\x40\0", "\0\x03")), Bytes{});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "[:-(] Textura nejde nahrát\n");
    EXPECT_EQ(width, 16385);
    EXPECT_EQ(height, 16384);

    // 65535 rows of 65535 channels, each with two entries of four bytes in the tables.
    WriteBytes("wall.rgb", Header("\x01\x01", "\0\x01", "\xFF\xFF", "\xFF\xFF"));
    EXPECT_EXIT(Read("wall.rgb"), testing::ExitedWithCode(1), "Nedostatek Paměti");
}

TEST_F(SgiImageDeathTest, AMissingFileEndsTheProcess) {
    EXPECT_EXIT(Read("none.rgb"), testing::ExitedWithCode(1),
                "Nenalezen soubor s Texturou\nnone.rgb: No such file or directory");
}

}  // namespace
