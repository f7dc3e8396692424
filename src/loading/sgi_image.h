#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

struct Log;

// The reader of SGI images, verbatim and run-length encoded, of one byte a sample. Nothing in the file is
// trusted: what does not fit is dropped, and what is missing is 0.

/// One image file while it is read.
struct RgbImage {
    std::uint16_t magic = 0;
    std::uint16_t type = 0;  ///< a high byte of 1 means run-length encoded
    std::uint16_t dimension = 0;
    std::uint16_t xsize = 0;                ///< pixels
    std::uint16_t ysize = 0;                ///< rows
    std::uint16_t zsize = 0;                ///< channels
    std::unique_ptr<std::uint8_t[]> bytes;  ///< the whole file, since rows may lie anywhere in it
    std::size_t byteCount = 0;
    bool isEncoded = false;  ///< by run lengths, otherwise verbatim
    /// Bytes of each of the two tables of an encoded file, which tell where the rows begin and how long
    /// they are: ysize entries for each channel.
    std::size_t tableSize = 0;
    bool damaged = false;  ///< something didn't fit or was missing so far
};

/// Reads the file. Never null: a missing file, or too little memory, ends the process with a box.
std::unique_ptr<RgbImage> OpenRgbImage(const char* path);
void CloseRgbImage(std::unique_ptr<RgbImage> image);
/// Decodes one row of one channel.
/// @param row takes xsize bytes, always all of them
/// @param y from the bottom of the image
void ReadRgbRow(RgbImage& image, std::uint8_t* row, std::int32_t y, std::int32_t z);

/// The whole image as RGBA bytes, the bottom row first: grey stands in all three colours, and alpha is 255
/// where the file has none. Null, and a box, if there is no memory for it, or if it is huge and the file
/// can't hold it.
/// @param log takes a line if the file is damaged; may be null
std::unique_ptr<std::uint8_t[]> ReadRgbTexture(const char* path, std::int32_t& width, std::int32_t& height,
                                               std::int32_t& components, Log* log = nullptr);

// Combine rows of channels, `count` bytes each, into `count` pixels of four bytes.

void ConvertGreyToRgba(const std::uint8_t* grey, std::uint8_t* rgba, std::int32_t count);
void ConvertGreyAlphaToRgba(const std::uint8_t* grey, const std::uint8_t* alpha, std::uint8_t* rgba,
                            std::int32_t count);
void ConvertRgbToRgba(const std::uint8_t* red, const std::uint8_t* green, const std::uint8_t* blue,
                      std::uint8_t* rgba, std::int32_t count);
void ConvertRgbaToRgba(const std::uint8_t* red, const std::uint8_t* green, const std::uint8_t* blue,
                       const std::uint8_t* alpha, std::uint8_t* rgba, std::int32_t count);

// From the byte order of the file, big-endian, to the machine's, in place.

void SwapShorts(std::uint16_t* values, std::size_t count);
void SwapLongs(std::uint32_t* values, std::size_t count);
