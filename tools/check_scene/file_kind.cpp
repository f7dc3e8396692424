#include "check_scene/file_kind.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <string_view>

#include "platform/files.h"

using namespace std::string_view_literals;

namespace {

struct Kind {
    std::string_view start;
    const char* name;
    FileUse use;            ///< what it could be made
    const char* extension;  ///< by which import_scene knows it; null if that doesn't read it
};

constexpr Kind kinds[] = {
    {"\x89PNG"sv, "a PNG image", FileUse::Image, ".png"},
    {"\xFF\xD8\xFF"sv, "a JPEG image", FileUse::Image, ".jpg"},
    {"GIF8"sv, "a GIF image", FileUse::Image, ".gif"},
    {"DDS "sv, "a DDS image", FileUse::Image, ".dds"},
    {"RIFF"sv, "a WebP image", FileUse::Image, ".webp"},
    {"II*\0"sv, "a TIFF image", FileUse::Image, ".tif"},
    {"MM\0*"sv, "a TIFF image", FileUse::Image, ".tif"},
    {"BM"sv, "a BMP image", FileUse::Image, ".bmp"},
    {"\x01\xDA"sv, "an SGI image", FileUse::Image, ".rgb"},
    {"glTF"sv, "a glTF model", FileUse::Scene, ".glb"},
    {"BLENDER"sv, "a Blender file", FileUse::Scene, ".blend"},
    {"Kaydara FBX"sv, "an FBX model", FileUse::Scene, ".fbx"},
    {"MM"sv, "a 3DS model", FileUse::Scene, ".3ds"},
    {"ply\n"sv, "a PLY model", FileUse::Scene, ".ply"},
    {"ply\r"sv, "a PLY model", FileUse::Scene, ".ply"},
    {"solid "sv, "an STL model", FileUse::Scene, ".stl"},
    {"PK\3\4"sv, "a ZIP archive", FileUse::Text, nullptr},
    {"\x1F\x8B"sv, "a packed file (gzip)", FileUse::Text, nullptr},
    {"\x28\xB5\x2F\xFD"sv, "a packed file (zstd)", FileUse::Text, nullptr},
    {"7z\xBC\xAF"sv, "a 7z archive", FileUse::Text, nullptr},
    {"%PDF"sv, "a PDF document", FileUse::Text, nullptr},
};

bool IsText(std::string_view bytes) {
    return std::ranges::none_of(bytes, [](char c) { return c >= 0 && c < 9; });
}

/// A model that is text; null if it isn't known for one.
const Kind* TextModel(std::string_view text) {
    static constexpr Kind gltf{{}, "a glTF model", FileUse::Scene, ".gltf"};
    static constexpr Kind collada{{}, "a COLLADA model", FileUse::Scene, ".dae"};
    static constexpr Kind obj{{}, "an OBJ model", FileUse::Scene, ".obj"};
    const auto has = [&](std::string_view part) { return text.find(part) != text.npos; };
    return has("\"asset\"")                              ? &gltf
           : has("<COLLADA")                             ? &collada
           : has("\nv ") || has("\no ") || has("mtllib") ? &obj
                                                         : nullptr;
}

std::string Advice(const Kind& kind, const std::string& path, FileUse wanted) {
    const std::string stem = path.substr(0, path.find_last_of('.'));
    if (kind.extension == nullptr) {
        return ": unpack it, and take what is inside";
    }
    if (kind.use != wanted) {
        return "";
    }
    const std::string named = stem + kind.extension;
    return ": call it " + named + ", then: import_scene " + named + " " +
           (wanted == FileUse::Image ? path : stem);
}

}  // namespace

std::string ForeignKind(const std::string& name, FileUse wanted) {
    const std::string path = ResolveFileName(name.c_str());
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(OpenFile(path.c_str(), "rb"), &std::fclose);
    std::array<char, 4096> buffer{};
    const std::size_t count = file == nullptr ? 0 : std::fread(buffer.data(), 1, buffer.size(), file.get());
    const std::string_view bytes(buffer.data(), count);
    if (wanted == FileUse::Text && IsText(bytes)) {
        return {};
    }
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        return "is UTF-16: iconv -f UTF-16 -t ASCII//TRANSLIT " + path +
               " writes plain text to take instead";
    }
    const auto known =
        std::ranges::find_if(kinds, [&](const Kind& kind) { return bytes.starts_with(kind.start); });
    const Kind* kind = known != std::end(kinds) ? known : IsText(bytes) ? TextModel(bytes) : nullptr;
    if (kind != nullptr) {
        return std::string("is ") + kind->name + Advice(*kind, path, wanted);
    }
    if (wanted == FileUse::Text) {
        return "is no text: bytes stand in it that no text has";
    }
    return count > 0 && IsText(bytes) ? "is text, such as an attribute file" : "";
}
