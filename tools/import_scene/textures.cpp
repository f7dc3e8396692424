#include "import_scene/textures.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <stdexcept>

#include "import_scene/image_reading.h"
#include "import_scene/image_scaling.h"

namespace {

namespace fs = std::filesystem;

bool EqualWithoutCase(const std::string& a, const std::string& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

/// The entry of a folder under that name, with the right letters before others; empty if there is none.
fs::path EntryOf(const fs::path& folder, const std::string& name) {
    std::error_code error;
    if (fs::exists(folder / name, error)) {
        return folder / name;
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        if (EqualWithoutCase(entry.path().filename().string(), name)) {
            return entry.path();
        }
    }
    return {};
}

fs::path FindAlong(fs::path folder, const fs::path& relative) {
    for (const fs::path& part : relative) {
        if (part == "." || part.empty()) {
            continue;
        }
        folder = part == ".." ? folder / part : EntryOf(folder, part.string());
        if (folder.empty()) {
            return {};
        }
    }
    return folder;
}

bool IsFile(const fs::path& path) {
    std::error_code error;
    return !path.empty() && fs::is_regular_file(path, error);
}

int HexDigit(char digit) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    const int letter = std::tolower(static_cast<unsigned char>(digit));
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

/// With "%20" and the like replaced by what they stand for, and slashes between folders.
std::string PlainPath(const std::string& path) {
    std::string plain;
    for (std::size_t i = 0; i < path.size(); i++) {
        if (path[i] == '%' && i + 2 < path.size() && HexDigit(path[i + 1]) >= 0 &&
            HexDigit(path[i + 2]) >= 0) {
            plain += static_cast<char>(HexDigit(path[i + 1]) * 16 + HexDigit(path[i + 2]));
            i += 2;
        } else {
            plain += path[i] == '\\' ? '/' : path[i];
        }
    }
    return plain;
}

}  // namespace

std::string FindBeside(const std::string& modelPath, const std::string& fileName) {
    fs::path folder = fs::path(modelPath).parent_path();
    if (folder.empty()) {
        folder = ".";
    }
    const fs::path wanted = PlainPath(fileName);
    for (const fs::path& candidate : {wanted, fs::path(fileName)}) {
        const fs::path found = candidate.is_absolute() ? candidate : FindAlong(folder, candidate);
        if (IsFile(found)) {
            return found.string();
        }
    }
    const std::string name = wanted.filename().string();
    if (name.empty()) {
        return {};
    }
    if (const fs::path found = EntryOf(folder, name); IsFile(found)) {
        return found.string();
    }
    // Folders of images stand within the model's folder, or beside it.
    std::error_code error;
    for (const fs::path& place : {folder, folder / ".."}) {
        for (const fs::directory_entry& entry : fs::directory_iterator(place, error)) {
            const fs::path found = entry.is_directory(error) ? EntryOf(entry.path(), name) : fs::path();
            if (IsFile(found)) {
                return found.string();
            }
        }
    }
    return {};
}

engine::Image TextureList::Read(const std::string& path, std::string& name) const {
    if (const aiTexture* embedded = model.scene->GetEmbeddedTexture(path.c_str())) {
        const std::string ownName = embedded->mFilename.C_Str();
        name =
            ownName.empty() || ownName[0] == '*' ? "image" : fs::path(PlainPath(ownName)).stem().string();
        if (embedded->mHeight == 0) {
            return ReadImageBytes(embedded->pcData, embedded->mWidth, embedded->achFormatHint);
        }
        return ReadImagePixels(embedded->pcData, static_cast<int>(embedded->mWidth),
                               static_cast<int>(embedded->mHeight));
    }
    const std::string found = FindBeside(model.path, path);
    if (found.empty()) {
        throw std::runtime_error("there is no such file beside the model");
    }
    name = fs::path(found).stem().string();
    return ReadImageFile(found);
}

int TextureList::Add(const std::string& path, Wrap wrapX, Wrap wrapY, const std::string& material) {
    const bool mirrorX = wrapX == Wrap::Mirror;
    const bool mirrorY = wrapY == Wrap::Mirror;
    const bool clampX = wrapX == Wrap::Clamp;
    const bool clampY = wrapY == Wrap::Clamp;
    const std::string key =
        path + '\n' + std::to_string(static_cast<int>(wrapX)) + std::to_string(static_cast<int>(wrapY));
    const auto [entry, isNew] = known.try_emplace(key, -1);
    if (!isNew) {
        return entry->second;
    }
    try {
        std::string name;
        const engine::Image image = Read(path, name);
        const engine::Image mirrored = mirrorX || mirrorY ? Mirrored(image, mirrorX, mirrorY) : image;
        engine::Image scaled = ScaledForTexture(mirrored, options.textureSize, !clampX, !clampY);
        entry->second = static_cast<int>(textures.size());
        const std::string fileName = names.Take(prefix + PlainName(name)) + ".tga";
        textures.push_back(
            {fileName, std::move(scaled), path, image.width, image.height, clampX || clampY});
    } catch (const std::exception& failure) {
        report.Warn("image " + path + " is left out, " + failure.what(), material);
    }
    return entry->second;
}
