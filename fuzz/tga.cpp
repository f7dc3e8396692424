#include "fuzz_world.h"

// TGA images.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryFiles files({{"image.tga", Characters(data, size)}});
    Texture texture;
    std::int32_t width = -1;
    std::int32_t height = -1;
    std::int32_t components = 3;
    const auto pixels = texture.ReadTga("image.tga", width, height, components);
    if (pixels != nullptr) {
        const auto last = static_cast<std::size_t>(width) * height * components - 1;
        volatile std::uint8_t touched = pixels[last];
        static_cast<void>(touched);
    }
    return 0;
}
