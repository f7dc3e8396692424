#include "loading/sgi_image.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "loading/image_memory.h"
#include "loading/load_fault.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/windows1250.h"

namespace {

constexpr std::size_t headerSize = 512;
/// No encoded row may be longer than this many bytes for each of its pixels.
constexpr std::size_t maxBytesPerPixel = 256;

[[noreturn]] void EndWithoutMemory() {
    MessageBoxA(nullptr, "Nedostatek Paměti"_1250, ":-(", MB_OK);
    std::exit(1);
}

template <typename Value>
std::unique_ptr<Value[]> AllocateOrEnd(std::size_t count) {
    auto memory = AllocateForImage<Value>(count);
    if (memory == nullptr) {
        EndWithoutMemory();
    }
    return memory;
}

std::unique_ptr<RgbImage> AllocateRecord() {
    const NewHandlerSuspended suspended;
    std::unique_ptr<RgbImage> image(new (std::nothrow) RgbImage);
    if (image == nullptr) {
        EndWithoutMemory();
    }
    return image;
}

/// Takes bytes of the file from the offset on. Those that it doesn't have are 0, and mean damage.
void CopyBytes(RgbImage& image, std::uint64_t offset, void* destination, std::size_t size) {
    const std::size_t begin = std::min<std::uint64_t>(offset, image.byteCount);
    const std::size_t present = std::min(size, image.byteCount - begin);
    if (present > 0) {
        std::memcpy(destination, image.bytes.get() + begin, present);
    }
    std::memset(static_cast<std::uint8_t*>(destination) + present, 0, size - present);
    if (present < size) {
        image.damaged = true;
    }
}

void ReadContent(RgbImage& image, std::FILE* file) {
    const std::size_t wanted = std::min(static_cast<std::size_t>(FileSize(file)), maxImageMemory);
    image.bytes = AllocateOrEnd<std::uint8_t>(wanted);
    image.byteCount = std::fread(image.bytes.get(), 1, wanted, file);
}

/// Those after are not read.
constexpr std::size_t maxChannels = 4;
constexpr std::size_t tableEntrySize = sizeof(std::uint32_t);

/// An entry of a table that begins at the offset.
std::uint32_t TableEntry(RgbImage& image, std::size_t tableOffset, std::size_t index) {
    std::uint32_t entry = 0;
    CopyBytes(image, tableOffset + index * tableEntrySize, &entry, sizeof entry);
    SwapLongs(&entry, 1);
    return entry;
}

/// Images up to this size are read whatever the file holds of them, in bytes.
constexpr std::size_t smallImage = std::size_t{1} << 20;
/// And so are those that are up to this many times as large as their file.
constexpr std::size_t plausibleGrowth = 64;

/// Whether the header promises a large image of which the file holds next to nothing. An encoded image may
/// be of any size, though: its rows may be repetitions of one byte, and share their bytes.
bool IsOutOfProportion(const RgbImage& image, std::size_t pixelBytes) {
    const std::size_t channels = std::max<std::size_t>(image.zsize, 1);  // one is read in any case
    const std::size_t leastSize =
        headerSize + image.ysize * (image.isEncoded ? 2 * tableEntrySize * channels
                                                    : std::min(channels, maxChannels) * image.xsize);
    return image.byteCount < leastSize &&
           pixelBytes > std::max(smallImage, plausibleGrowth * image.byteCount);
}

/// Unpacks one row: packets of a count with its high bit set and that many bytes, or of a count and one
/// byte to repeat. A count of 0 ends the row. Once it is known that there are too many, no more are read.
/// @return how many bytes of the row were written; `fits` turns false if any had to be dropped
std::size_t DecodeRow(const std::uint8_t* packet, const std::uint8_t* end, std::uint8_t* row,
                      std::size_t rowSize, bool& fits) {
    std::size_t filled = 0;
    while (packet < end && (*packet & 0x7F) != 0 && (filled < rowSize || fits)) {
        const bool literal = (*packet & 0x80) != 0;
        const std::size_t count = *packet++ & 0x7F;
        const auto present = static_cast<std::size_t>(end - packet);
        if (present == 0) {
            break;
        }
        const std::size_t room = rowSize - filled;
        if (count > room) {
            fits = false;
        }
        if (literal) {
            const std::size_t taken = std::min({count, present, room});
            std::copy_n(packet, taken, row + filled);
            filled += taken;
            packet += std::min(count, present);
        } else {
            const std::size_t taken = std::min(count, room);
            std::fill_n(row + filled, taken, *packet++);
            filled += taken;
        }
    }
    return filled;
}

/// Whether the row has the same bytes of the file as the one below it.
bool RepeatsRowBelow(RgbImage& image, std::int32_t y, std::int32_t z) {
    const std::size_t index = static_cast<std::size_t>(y) + std::size_t{image.ysize} * z;
    if (!image.isEncoded || y == 0 || index >= std::size_t{image.ysize} * image.zsize) {
        return false;
    }
    const auto isRepeated = [&](std::size_t table) {
        return TableEntry(image, table, index) == TableEntry(image, table, index - 1);
    };
    return isRepeated(headerSize) && isRepeated(headerSize + image.tableSize);
}

}  // namespace

void SwapShorts(std::uint16_t* values, std::size_t count) {
    if constexpr (std::endian::native == std::endian::big) {
        return;
    }
    for (std::size_t i = 0; i < count; i++) {
        values[i] = static_cast<std::uint16_t>(values[i] << 8 | values[i] >> 8);
    }
}

void SwapLongs(std::uint32_t* values, std::size_t count) {
    if constexpr (std::endian::native == std::endian::big) {
        return;
    }
    for (std::size_t i = 0; i < count; i++) {
        const std::uint32_t value = values[i];
        values[i] = value << 24 | (value & 0xFF00) << 8 | (value >> 8 & 0xFF00) | value >> 24;
    }
}

std::unique_ptr<RgbImage> OpenRgbImage(const char* path) {
    std::unique_ptr<RgbImage> image = AllocateRecord();
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(OpenFile(path, "rb"), &std::fclose);
    if (file == nullptr) {
        const int error = errno;  // the box may change it
        MessageBoxA(nullptr, "Nenalezen soubor s Texturou"_1250, ":-(", MB_OK);
        errno = error;
        std::perror(path);
        std::exit(1);
    }
    ReadContent(*image, file.get());

    std::uint16_t fields[6];
    CopyBytes(*image, 0, fields, sizeof fields);
    SwapShorts(fields, std::size(fields));
    image->magic = fields[0];
    image->type = fields[1];
    image->dimension = fields[2];
    image->xsize = fields[3];
    image->ysize = fields[4];
    image->zsize = fields[5];
    if ((image->type & 0xFF00) == 0x100) {
        image->isEncoded = true;
        image->tableSize = std::size_t{image->ysize} * image->zsize * tableEntrySize;
        if (2 * image->tableSize > maxImageMemory) {
            EndWithoutMemory();
        }
        // Without rows there are no tables to be missing.
        image->damaged = image->damaged ||
                         (image->tableSize > 0 && image->byteCount < headerSize + 2 * image->tableSize);
    }
    return image;
}

void CloseRgbImage(std::unique_ptr<RgbImage> image) {
    image.reset();
}

void ReadRgbRow(RgbImage& image, std::uint8_t* row, std::int32_t y, std::int32_t z) {
    const std::size_t index = static_cast<std::size_t>(y) + std::size_t{image.ysize} * z;
    const std::size_t rowSize = image.xsize;
    if (!image.isEncoded) {
        CopyBytes(image, headerSize + index * rowSize, row, rowSize);
        return;
    }
    std::size_t filled = 0;
    bool fits = true;
    if (index < std::size_t{image.ysize} * image.zsize) {
        const std::size_t begin =
            std::min<std::size_t>(TableEntry(image, headerSize, index), image.byteCount);
        const std::size_t wanted = TableEntry(image, headerSize + image.tableSize, index);
        const std::size_t length = std::min({wanted, rowSize * maxBytesPerPixel, image.byteCount - begin});
        fits = length == wanted;
        const std::uint8_t* packets = image.bytes.get() + begin;
        filled = DecodeRow(packets, packets + length, row, rowSize, fits);
    }
    std::fill(row + filled, row + rowSize, std::uint8_t{0});
    if (!fits || filled < rowSize) {
        image.damaged = true;
    }
}

void ConvertGreyToRgba(const std::uint8_t* grey, std::uint8_t* rgba, std::int32_t count) {
    for (std::int32_t i = 0; i < count; i++) {
        rgba[4 * i] = rgba[4 * i + 1] = rgba[4 * i + 2] = grey[i];
        rgba[4 * i + 3] = 255;
    }
}

void ConvertGreyAlphaToRgba(const std::uint8_t* grey, const std::uint8_t* alpha, std::uint8_t* rgba,
                            std::int32_t count) {
    for (std::int32_t i = 0; i < count; i++) {
        rgba[4 * i] = rgba[4 * i + 1] = rgba[4 * i + 2] = grey[i];
        rgba[4 * i + 3] = alpha[i];
    }
}

void ConvertRgbToRgba(const std::uint8_t* red, const std::uint8_t* green, const std::uint8_t* blue,
                      std::uint8_t* rgba, std::int32_t count) {
    for (std::int32_t i = 0; i < count; i++) {
        rgba[4 * i] = red[i];
        rgba[4 * i + 1] = green[i];
        rgba[4 * i + 2] = blue[i];
        rgba[4 * i + 3] = 255;
    }
}

void ConvertRgbaToRgba(const std::uint8_t* red, const std::uint8_t* green, const std::uint8_t* blue,
                       const std::uint8_t* alpha, std::uint8_t* rgba, std::int32_t count) {
    for (std::int32_t i = 0; i < count; i++) {
        rgba[4 * i] = red[i];
        rgba[4 * i + 1] = green[i];
        rgba[4 * i + 2] = blue[i];
        rgba[4 * i + 3] = alpha[i];
    }
}

std::unique_ptr<std::uint8_t[]> ReadRgbTexture(const char* path, std::int32_t& width, std::int32_t& height,
                                               std::int32_t& components, Log* log) {
    std::unique_ptr<RgbImage> image = OpenRgbImage(path);
    width = image->xsize;
    height = image->ysize;
    components = image->zsize;

    const std::size_t rowSize = image->xsize;
    const std::size_t pixelBytes = 4 * rowSize * image->ysize;
    std::unique_ptr<std::uint8_t[]> rgba;
    if (!IsOutOfProportion(*image, pixelBytes)) {
        rgba = AllocateForImage<std::uint8_t>(pixelBytes);
    }
    auto rows = AllocateForImage<std::uint8_t>(4 * rowSize);
    if (rgba == nullptr || rows == nullptr) {
        MessageBoxA(nullptr, "Textura nejde nahrát"_1250, ":-(", MB_OK);
        return nullptr;
    }
    std::uint8_t* channels[maxChannels];
    for (std::size_t z = 0; z < std::size(channels); z++) {
        channels[z] = rows.get() + z * rowSize;
    }
    const std::int32_t channelCount = std::clamp<std::int32_t>(components, 1, maxChannels);
    for (std::int32_t y = 0; y < height; y++) {
        for (std::int32_t z = 0; z < channelCount; z++) {
            if (!RepeatsRowBelow(*image, y, z)) {
                ReadRgbRow(*image, channels[z], y, z);
            }
        }
        std::uint8_t* pixels = rgba.get() + 4 * rowSize * y;
        if (channelCount == 4) {
            ConvertRgbaToRgba(channels[0], channels[1], channels[2], channels[3], pixels, width);
        } else if (channelCount == 3) {
            ConvertRgbToRgba(channels[0], channels[1], channels[2], pixels, width);
        } else if (channelCount == 2) {
            ConvertGreyAlphaToRgba(channels[0], channels[1], pixels, width);
        } else {
            ConvertGreyToRgba(channels[0], pixels, width);
        }
    }
    if (image->damaged) {
        ReportFault(log, {LoadFault::Kind::ImageDamaged, path, "damaged SGI image"});
    }
    CloseRgbImage(std::move(image));
    return rgba;
}
