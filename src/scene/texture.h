#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

struct Log;

/// One texture: the name that it was loaded under and its OpenGL texture object. A copy shares the
/// texture object.
struct Texture {
    std::string name;                        ///< file name as the attribute file gives it
    std::unique_ptr<std::uint8_t[]> pixels;  ///< rows bottom up; only while loading, null again afterwards
    std::uint32_t glName = 0;
    std::int32_t width = -1;   ///< pixels
    std::int32_t height = -1;  ///< pixels
    std::int32_t components = 3;
    std::int32_t magFilter = 9729;  ///< GL_LINEAR
    std::int32_t minFilter = 9728;  ///< GL_NEAREST

    /// Copies every field but the pixels, which a loaded texture has no more.
    void CopyTo(Texture& destination) const;

    // Loading, in loading/. Failure is reported by message box; the record is usable all the same, and its
    // texture object exists.

    /// Reads an uncompressed TGA image of 24 or 32 bits, with sides of powers of two from 2 to 512.
    void LoadTga(const char* path);
    /// Reads an SGI image, verbatim or run-length encoded. A missing file ends the process.
    /// @param log takes a line if the file is damaged; may be null
    void LoadRgb(const char* path, Log* log = nullptr);

    /// The image as RGB or RGBA bytes; null on failure, reported by message box.
    std::unique_ptr<std::uint8_t[]> ReadTga(const char* path, std::int32_t& imageWidth,
                                            std::int32_t& imageHeight, std::int32_t& imageComponents);
    /// @param depth bits per pixel, 24 or 32. Null if the data are short or don't fit into memory.
    std::unique_ptr<std::uint8_t[]> ReadTgaPixels(std::FILE* file, std::int32_t pixelCount,
                                                  std::int32_t depth);
    std::unique_ptr<std::uint8_t[]> ReadTga32(std::FILE* file, std::int32_t pixelCount);
    std::unique_ptr<std::uint8_t[]> ReadTga24(std::FILE* file, std::int32_t pixelCount);
};
