#include "loading/tga_image.h"

#include <utility>

#include "loading/image_memory.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/windows1250.h"
#include "scene/texture.h"

// The reader of TGA images: uncompressed true colour, of 24 or 32 bits, whatever the origin.

namespace {

/// Where the header has the size. What lies between the first bytes and here is of no use.
constexpr long sizeOffset = 12;

std::unique_ptr<std::uint8_t[]> Refuse(const char* text) {
    MessageBoxA(nullptr, text, ":-(", MB_OK);
    return nullptr;
}

/// The file holds blue, green, red; OpenGL wants it the other way round.
std::unique_ptr<std::uint8_t[]> ReadPixels(std::FILE* file, std::int32_t pixelCount,
                                           std::size_t pixelSize) {
    const std::size_t size = static_cast<std::size_t>(pixelCount) * pixelSize;
    auto pixels = AllocateForImage<std::uint8_t>(size);
    if (pixels == nullptr) {
        return nullptr;
    }
    if (std::fread(pixels.get(), 1, size, file) != size) {
        return nullptr;
    }
    for (std::size_t i = 0; i < size; i += pixelSize) {
        std::swap(pixels[i], pixels[i + 2]);
    }
    return pixels;
}

}  // namespace

bool IsPowerOfTwo(std::int32_t size) {
    return size >= 2 && size <= 512 && (size & (size - 1)) == 0;
}

std::unique_ptr<std::uint8_t[]> Texture::ReadTga32(std::FILE* file, std::int32_t pixelCount) {
    auto read = ReadPixels(file, pixelCount, 4);
    if (read != nullptr) {
        components = 4;
    }
    return read;
}

std::unique_ptr<std::uint8_t[]> Texture::ReadTga24(std::FILE* file, std::int32_t pixelCount) {
    auto read = ReadPixels(file, pixelCount, 3);
    if (read != nullptr) {
        components = 3;
    }
    return read;
}

std::unique_ptr<std::uint8_t[]> Texture::ReadTgaPixels(std::FILE* file, std::int32_t pixelCount,
                                                       std::int32_t depth) {
    if (depth == 32) {
        return ReadTga32(file, pixelCount);
    }
    if (depth == 24) {
        return ReadTga24(file, pixelCount);
    }
    return nullptr;
}

std::unique_ptr<std::uint8_t[]> Texture::ReadTga(const char* path, std::int32_t& imageWidth,
                                                 std::int32_t& imageHeight, std::int32_t& imageComponents) {
    // Opened for update though nothing is written: a file without write permission is refused.
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(OpenFile(path, "r+bt"), &std::fclose);
    if (file == nullptr) {
        return Refuse("Nelze otevřít soubor s TGA texturou"_1250);
    }

    std::uint8_t start[3] = {};
    std::uint8_t size[6] = {};
    const bool complete = std::fread(start, 1, sizeof start, file.get()) == sizeof start &&
                          std::fseek(file.get(), sizeOffset, SEEK_SET) == 0 &&
                          std::fread(size, 1, sizeof size, file.get()) == sizeof size;
    const std::int32_t colourMapType = start[1];
    const std::int32_t imageType = start[2];
    const std::int32_t fileWidth = size[0] | size[1] << 8;
    const std::int32_t fileHeight = size[2] | size[3] << 8;
    const std::int32_t depth = size[4];
    if (colourMapType != 0 || imageType != 2) {
        return Refuse("Nesprávný typ TGA souboru"_1250);
    }
    if (!IsPowerOfTwo(fileWidth) || !IsPowerOfTwo(fileHeight)) {
        return Refuse("Špatné rozměry TGA textury"_1250);
    }
    if (depth != 32 && depth != 24) {
        return Refuse("Špatné TGA bity"_1250);
    }

    auto read = complete ? ReadTgaPixels(file.get(), fileWidth * fileHeight, depth) : nullptr;
    imageComponents = depth == 32 ? 4 : 3;
    imageWidth = fileWidth;
    imageHeight = fileHeight;
    if (read == nullptr) {
        return Refuse("Špatná TGA data"_1250);
    }
    return read;
}
