#include "check_scene/image_check.h"

#include <bit>
#include <cstdio>
#include <memory>

#include "check_scene/file_kind.h"
#include "loading/tga_image.h"
#include "platform/files.h"

// The engine says in a box that an image can't be used; the header shows why.

namespace {

constexpr std::size_t headerSize = 18;

/// The first bytes of the file; false if it can't be opened.
bool ReadHeader(const std::string& path, std::uint8_t (&header)[headerSize]) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(OpenFile(path.c_str(), "rb"), &std::fclose);
    return file != nullptr && std::fread(header, 1, headerSize, file.get()) > 0;
}

std::string Size(int width, int height) {
    return std::to_string(width) + " x " + std::to_string(height) + " pixels";
}

std::string TgaFault(const KeptImage& image, const std::uint8_t (&header)[headerSize]) {
    const int kind = header[2];
    if (kind == 9 || kind == 10 || kind == 11) {
        return "is run-length encoded: save it uncompressed";
    }
    if (header[1] != 0 || kind == 1) {
        return "has a palette: save it in true colour";
    }
    if (kind == 3) {
        return "is grey: save it in true colour, or as an SGI image";
    }
    if (kind != 2) {
        return "is no TGA image";
    }
    const int width = header[12] + 256 * header[13];
    const int height = header[14] + 256 * header[15];
    if (width > 512 || height > 512) {
        return "is " + Size(width, height) + ", which is too large: 512 is the most for each side";
    }
    if (!IsPowerOfTwo(width) || !IsPowerOfTwo(height)) {
        return "is " + Size(width, height) +
               ": its sides must be powers of two, 2, 4, 8 and so on up to 512";
    }
    if (header[16] != 24 && header[16] != 32) {
        return "has " + std::to_string(header[16]) + " bits a pixel: save it with 24 or 32";
    }
    return "can't be read whole: the engine says \"" + image.trouble + "\"";
}

std::string SgiFault(const std::uint8_t (&header)[headerSize], bool& isError) {
    const int channels = 256 * header[10] + header[11];
    const int width = 256 * header[6] + header[7];
    const int height = 256 * header[8] + header[9];
    isError = true;
    if (header[0] != 1 || header[1] != 218) {
        return "is no SGI image, though its name says so";
    }
    if (header[3] != 1) {
        return "has " + std::to_string(header[3]) + " bytes a sample: save it with 8 bits a channel";
    }
    if (channels < 1 || channels > 4) {
        return "has " + std::to_string(channels) + " channels: 1 to 4 show something";
    }
    isError = false;
    if (!std::has_single_bit(static_cast<unsigned>(width)) ||
        !std::has_single_bit(static_cast<unsigned>(height))) {
        return "is " + Size(width, height) +
               ": not every display driver takes sides that are no powers of two";
    }
    return {};
}

}  // namespace

std::string ImageFault(const KeptImage& image, bool& isError) {
    isError = true;
    const bool isSgi = image.path.find(".rgb") != std::string::npos;
    std::uint8_t header[headerSize] = {};
    if (!ReadHeader(image.path, header)) {
        return isSgi ? "can't be found or is empty; the engine ends there" : "can't be found or is empty";
    }
    const bool isForeign = isSgi ? header[0] != 1 || header[1] != 218 : image.pixels == nullptr;
    std::string foreign = isForeign ? ForeignKind(image.path, FileUse::Image) : "";
    if (!foreign.empty()) {
        return foreign;
    }
    if (image.endsEngine) {
        return "can't be loaded, and the engine ends there: " + image.trouble;
    }
    if (isSgi) {
        const std::string fault = SgiFault(header, isError);
        isError = isError || image.pixels == nullptr;
        return isError && fault.empty() ? "can't be read: the engine says \"" + image.trouble + "\""
                                        : fault;
    }
    if (image.pixels == nullptr) {
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(OpenFile(image.path.c_str(), "r+b"),
                                                                   &std::fclose);
        return file == nullptr ? "isn't writable, and the engine takes it for missing"
                               : TgaFault(image, header);
    }
    isError = false;
    if (header[0] != 0) {
        return "carries an ID text after its header, which shifts the pixels: save it without";
    }
    if ((header[17] & 0x10) != 0) {
        return "begins with its right column and is shown mirrored: save it from the left to the right";
    }
    if ((header[17] & 0x20) != 0) {
        return "begins with its top row and is shown upside down: save it from the bottom up";
    }
    return {};
}
