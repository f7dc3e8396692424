#include "import_scene/textures.h"

#include <charconv>
#include <filesystem>
#include <stdexcept>

#include "import_scene/image_reading.h"
#include "import_scene/image_scaling.h"
#include "platform/files.h"

namespace {

namespace fs = std::filesystem;

/// The file under that name, whatever the case of its letters; empty if there is none.
fs::path FileAt(const fs::path& path) {
    // A backslash separates folders in a name to be resolved, and here is a letter like any other.
    const bool isPlain = path.native().find('\\') == std::string::npos;
    fs::path found = isPlain ? fs::path(ResolveFileName(path.c_str())) : path;
    std::error_code error;
    return fs::is_regular_file(found, error) ? found : fs::path();
}

/// The image under that name in a folder, or one that differs in its extension alone: converters often
/// leave the old one in the model. Empty if there is none.
fs::path ImageIn(const fs::path& folder, const fs::path& name) {
    if (fs::path found = FileAt(folder / name); !found.empty()) {
        return found;
    }
    for (const char* extension :
         {".png", ".jpg", ".jpeg", ".tga", ".bmp", ".webp", ".tif", ".gif", ".rgb"}) {
        // A name without an extension may have points in it.
        for (const std::string& other : {name.string() + extension, name.stem().string() + extension}) {
            if (fs::path found = FileAt(folder / other); !found.empty()) {
                return found;
            }
        }
    }
    return {};
}

/// The image at a path from the folder. What leads out of the folder isn't looked for.
fs::path ImageAlong(const fs::path& folder, const fs::path& relative) {
    const fs::path plain = relative.lexically_normal();
    if (plain.is_absolute() || plain.empty() || *plain.begin() == "..") {
        return {};
    }
    return ImageIn(folder / plain.parent_path(), plain.filename());
}

/// The image at its path from the folder, or by its name alone there and in the folders within.
fs::path ImageBelow(const fs::path& folder, const fs::path& wanted) {
    if (fs::path found = ImageAlong(folder, wanted); !found.empty()) {
        return found;
    }
    if (wanted.filename().empty()) {
        return {};
    }
    if (fs::path found = ImageIn(folder, wanted.filename()); !found.empty()) {
        return found;
    }
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        fs::path found = entry.is_directory(error) ? ImageIn(entry.path(), wanted.filename()) : fs::path();
        if (!found.empty()) {
            return found;
        }
    }
    return {};
}

/// With "%20" and the like replaced by what they stand for, and slashes between folders.
std::string PlainPath(const std::string& path) {
    std::string plain;
    for (std::size_t i = 0; i < path.size(); i++) {
        unsigned letter = 0;
        const char* const digits = path.data() + i + 1;
        if (path[i] == '%' && i + 2 < path.size() &&
            std::from_chars(digits, digits + 2, letter, 16).ptr == digits + 2) {
            plain += static_cast<char>(letter);
            i += 2;
        } else {
            plain += path[i] == '\\' ? '/' : path[i];
        }
    }
    return plain;
}

}  // namespace

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
    const fs::path modelFolder = fs::path(model.path).parent_path();
    for (const fs::path& folder :
         {modelFolder.empty() ? fs::path(".") : modelFolder, fs::path(options.images)}) {
        for (const fs::path& wanted : {fs::path(PlainPath(path)), fs::path(path)}) {
            fs::path found = folder.empty() ? fs::path() : ImageBelow(folder, wanted);
            if (!found.empty()) {
                name = found.stem().string();
                return ReadImageFile(found.string());
            }
        }
    }
    throw std::runtime_error("there is no such file in the model's folder; --images names another one");
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
