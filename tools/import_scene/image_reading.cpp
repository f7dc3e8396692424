#include "import_scene/image_reading.h"

#include <SDL2/SDL_image.h>
#include <stb/stb_image.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>

#include "loading/sgi_image.h"
#include "platform/files.h"

namespace {

/// More than any texture has, and less than what fills the memory.
constexpr std::int64_t mostPixels = std::int64_t{1} << 26;

struct SurfaceDeleter {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
using SurfacePointer = std::unique_ptr<SDL_Surface, SurfaceDeleter>;

void CheckSize(std::int64_t width, std::int64_t height) {
    if (width < 1 || height < 1 || width * height > mostPixels) {
        throw std::runtime_error("its size is " + std::to_string(width) + " x " + std::to_string(height));
    }
}

/// Asks for the size before the pixels take gigabytes, as far as the kind of image can be asked.
void CheckHeader(const std::uint8_t* bytes, std::size_t size) {
    int width = 0;
    int height = 0;
    int channels = 0;
    if (stbi_info_from_memory(bytes, static_cast<int>(size), &width, &height, &channels) != 0) {
        CheckSize(width, height);
    } else if (size > 24 && std::memcmp(bytes, "\x89PNG", 4) == 0) {
        // The library says nothing of the largest ones.
        const auto number = [bytes](int at) {
            return std::int64_t{bytes[at]} << 24 | bytes[at + 1] << 16 | bytes[at + 2] << 8 | bytes[at + 3];
        };
        CheckSize(number(16), number(20));
    }
}

/// An image of four channels whose alpha goes if it is 255 everywhere.
engine::Image WithoutUselessAlpha(engine::Image image) {
    for (std::size_t i = 3; i < image.samples.size(); i += 4) {
        if (image.samples[i] != 255) {
            return image;
        }
    }
    for (std::size_t pixel = 0; pixel < image.samples.size() / 4; pixel++) {
        std::copy_n(image.samples.begin() + 4 * pixel, 3, image.samples.begin() + 3 * pixel);
    }
    image.samples.resize(image.samples.size() / 4 * 3);
    image.channels = 3;
    return image;
}

engine::Image FromSurface(SurfacePointer surface) {
    if (!surface) {
        throw std::runtime_error(SDL_GetError());
    }
    CheckSize(surface->w, surface->h);
    const SurfacePointer rgba(SDL_ConvertSurfaceFormat(surface.get(), SDL_PIXELFORMAT_RGBA32, 0));
    if (!rgba) {
        throw std::runtime_error(SDL_GetError());
    }
    engine::Image image(rgba->w, rgba->h, 4);
    for (int y = 0; y < rgba->h; y++) {
        const auto* row = static_cast<const std::uint8_t*>(rgba->pixels) + std::size_t(y) * rgba->pitch;
        std::copy_n(row, 4 * rgba->w, &image.At(0, rgba->h - 1 - y, 0));
    }
    return WithoutUselessAlpha(std::move(image));
}

/// The engine's own reader asks whoever sits there what to do without memory, so sizes are looked at first.
engine::Image ReadSgi(const std::string& path, const std::string& bytes) {
    const auto number = [&](std::size_t at) {
        return static_cast<std::uint8_t>(bytes[at]) << 8 | static_cast<std::uint8_t>(bytes[at + 1]);
    };
    CheckSize(number(6), number(8));
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t channels = 0;
    const std::unique_ptr<std::uint8_t[]> rgba = ReadRgbTexture(path.c_str(), width, height, channels);
    if (!rgba) {
        throw std::runtime_error("there is not enough memory for it");
    }
    engine::Image image(width, height, 4);
    std::copy_n(rgba.get(), image.samples.size(), image.samples.begin());
    return WithoutUselessAlpha(std::move(image));
}

bool IsSgi(const std::string& bytes) {
    return bytes.size() > 512 && bytes[0] == '\x01' && bytes[1] == '\xDA';
}

}  // namespace

engine::Image ReadImageFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    if (!file || bytes.empty()) {
        throw std::runtime_error("the file can't be opened, or is empty");
    }
    if (IsSgi(bytes)) {
        return ReadSgi(path, bytes);
    }
    return ReadImageBytes(bytes.data(), bytes.size(), std::filesystem::path(path).extension().string());
}

engine::Image ReadImageBytes(const void* bytes, std::size_t size, const std::string& format) {
    // A TGA image has no mark at its beginning, so it is known by its name alone.
    const char* type = LowerCase(format).ends_with("tga") ? "TGA" : "";
    CheckHeader(static_cast<const std::uint8_t*>(bytes), size);
    return FromSurface(
        SurfacePointer(IMG_LoadTyped_RW(SDL_RWFromConstMem(bytes, static_cast<int>(size)), 1, type)));
}

engine::Image ReadImagePixels(const void* pixels, int width, int height) {
    CheckSize(width, height);
    return FromSurface(SurfacePointer(SDL_CreateRGBSurfaceWithFormatFrom(
        const_cast<void*>(pixels), width, height, 32, 4 * width, SDL_PIXELFORMAT_BGRA32)));
}
