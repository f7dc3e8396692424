#include <cstdint>

#include "loading/sgi_image.h"
#include "memory_files.h"

// SGI images.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Images of many megapixels or channels are slow and teach nothing; the largest end the process.
    for (const std::size_t highByte : {6, 8, 10}) {
        if (size > highByte && data[highByte] > 0) {
            return -1;
        }
    }
    const MemoryFiles files({{"image.rgb", Characters(data, size)}});
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t components = 0;
    const auto pixels = ReadRgbTexture("image.rgb", width, height, components);
    if (pixels != nullptr && width > 0 && height > 0) {
        volatile std::uint8_t touched = pixels[static_cast<std::size_t>(width) * height * 4 - 1];
        static_cast<void>(touched);
    }
    return 0;
}
