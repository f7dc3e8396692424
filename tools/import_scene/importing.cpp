#include "import_scene/importing.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>

#include "import_scene/animations.h"
#include "import_scene/groups.h"
#include "import_scene/image_reading.h"
#include "import_scene/image_scaling.h"
#include "import_scene/lamps.h"
#include "import_scene/materials.h"
#include "import_scene/output_files.h"
#include "import_scene/pieces.h"
#include "import_scene/players.h"
#include "import_scene/scene_assembly.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostRenamedTold = 20;
/// Above these, reading takes long enough to say what goes on.
constexpr std::uintmax_t largeFile = 20'000'000;

/// Where a scene goes, and what the engine calls it: it is started in the folder above the scene's.
struct Target {
    std::string name;           ///< of the scene, without an extension
    std::string folderOfFiles;  ///< with a slash at its end; may be empty
    std::string
        folderInTexts;  ///< the same as the engine is told, with a backslash at its end; may be empty
    std::string settingsPath;

    explicit Target(const std::string& output) {
        fs::path path(output);
        if (path.extension() == ".bin") {
            path.replace_extension();
        }
        name = path.filename().string();
        const fs::path folder = path.parent_path();
        if (!folder.empty()) {
            folderOfFiles = folder.string() + "/";
            folderInTexts = fs::absolute(folder).lexically_normal().filename().string() + "\\";
        }
        settingsPath = ((folder.empty() ? fs::path() : folder.parent_path()) / "settings.atr").string();
        Check(name);
        if (!folder.empty()) {
            Check(folderInTexts.substr(0, folderInTexts.size() - 1));
        }
        if (name.size() + folderInTexts.size() > 150) {
            throw WrongUsage("the engine reads paths of 199 characters at most");
        }
    }

    /// The engine reads letters and digits, and makes the name of the second file by the first "bin".
    static void Check(const std::string& part) {
        if (part.empty() || PlainName(part) != part) {
            throw WrongUsage("the engine can't read the name \"" + part +
                             "\": the scene and its folder may have letters and digits only");
        }
        if (part.find("bin") != std::string::npos) {
            throw WrongUsage("the engine cuts paths at the first \"bin\": choose another name than \"" +
                             part + "\"");
        }
    }
};

void ImportTexture(const Options& options) {
    const engine::Image image = ReadImageFile(options.input);
    const engine::Image scaled = ScaledForTexture(image, options.textureSize, true, true);
    const bool isTga = options.output.ends_with(".tga");
    if (!options.dryRun) {
        WriteAll(
            {{options.output, isTga ? TgaBytes(scaled) : SgiBytes(scaled, engine::SgiPacking::RunLength)}});
    }
    std::printf("%s: %d x %d, %d bits, from %d x %d\n", options.output.c_str(), scaled.width, scaled.height,
                8 * scaled.channels, image.width, image.height);
}

void Tell(const std::string& text) {
    std::fprintf(stderr, "import_scene: %s\n", text.c_str());
}

std::size_t TriangleCount(const std::vector<engine::SceneObject>& objects) {
    std::size_t count = 0;
    for (const engine::SceneObject& object : objects) {
        count += object.faces.size();
    }
    return count;
}

std::string Counted(std::size_t count, const std::string& singular) {
    return std::to_string(count) + " " + singular + (count == 1 ? "" : "s");
}

void PrintSummary(const Options& options, const AssembledScene& scene,
                  const std::vector<SceneTexture>& textures, std::size_t lightCount, int playerCount,
                  const Report& report) {
    std::printf("%s: %s, %s, %s, %s, %s\n", options.output.c_str(),
                Counted(scene.objects.size(), "object").c_str(),
                Counted(TriangleCount(scene.objects), "triangle").c_str(),
                Counted(textures.size(), "texture").c_str(), Counted(lightCount, "light").c_str(),
                Counted(playerCount, "player").c_str());
    for (const SceneTexture& texture : textures) {
        if (!texture.source.empty()) {
            std::printf("  texture %s: %d x %d, %d bits, from %s (%d x %d)\n", texture.fileName.c_str(),
                        texture.image.width, texture.image.height, 8 * texture.image.channels,
                        texture.source.c_str(), texture.sourceWidth, texture.sourceHeight);
        }
    }
    for (std::size_t i = 0; i < scene.renamed.size() && i < mostRenamedTold; i++) {
        std::printf("  renamed: %s is %s\n", scene.renamed[i].first.c_str(),
                    scene.renamed[i].second.c_str());
    }
    if (scene.renamed.size() > mostRenamedTold) {
        std::printf("  and %zu more are renamed\n", scene.renamed.size() - mostRenamedTold);
    }
    for (const std::string& note : report.Notes()) {
        std::printf("  note: %s\n", note.c_str());
    }
    std::fflush(stdout);
    for (const std::string& warning : report.Warnings()) {
        std::fprintf(stderr, "%s: warning: %s\n", options.input.c_str(), warning.c_str());
    }
}

/// Coordinates beyond the edges of an image show what the engine can't.
void WarnOfClamped(const std::vector<WorldObject>& objects, const std::vector<SceneTexture>& textures,
                   Report& report) {
    for (const WorldObject& object : objects) {
        if (object.texture == -1 || !textures[object.texture].clamped) {
            continue;
        }
        for (const engine::Float3& at : object.mesh.texVertices) {
            if (at.x < -0.01f || at.x > 1.01f || at.y < -0.01f || at.y > 1.01f) {
                report.Warn("a texture repeats that the model lets end at its edges", object.name);
                break;
            }
        }
    }
}

void ImportModel(const Options& options) {
    const Target target(options.output);
    Report report;
    std::error_code error;
    const bool isLarge = fs::file_size(options.input, error) > largeFile && !error;
    if (isLarge) {
        Tell("reading " + options.input);
    }
    Model model(options, report);
    if (isLarge) {
        Tell("converting");
    }
    TextureList textures(model, options, target.name, report);
    const std::vector<Surface> surfaces = ReadSurfaces(model, textures, report);
    std::vector<WorldObject> objects = MakeObjects(model, surfaces, options, report);
    if (std::none_of(objects.begin(), objects.end(), std::mem_fn(&WorldObject::HasTriangles))) {
        throw std::runtime_error("there are no triangles in it, so there would be nothing to see");
    }
    WarnOfClamped(objects, textures.textures, report);
    GroupIds groups(objects);
    CompleteGroups(model, objects, groups, report);
    AddPlayers(model, objects, groups, options, report);
    Options settingOptions = options;
    if (options.animate) {
        const std::vector<std::string> lines = AddAnimator(model, objects, report);
        settingOptions.settingLines.insert(settingOptions.settingLines.begin(), lines.begin(), lines.end());
    }
    AddKeyTracks(model, objects, options, report);
    if (options.merge) {
        objects = MergeScenery(std::move(objects), options.piece);
    }
    const std::vector<engine::SceneLight> lights = MakeLights(model, objects, options, report);
    if (!options.sprites) {
        objects.push_back(MakeSpriteVeil(textures.textures, target.name));
    }
    const int playerCount = PlayerCount(objects);
    const std::string settings =
        MakeSettings(objects, target.folderInTexts + target.name + ".bin", settingOptions);
    AssembledScene scene =
        AssembleScene(std::move(objects), lights, textures.textures, target.folderInTexts);
    PrintSummary(options, scene, textures.textures, lights.size(), playerCount, report);
    if (options.dryRun) {
        return;
    }
    std::vector<OutputFile> files;
    for (const SceneTexture& texture : textures.textures) {
        files.push_back({target.folderOfFiles + texture.fileName, TgaBytes(texture.image)});
    }
    if (isLarge) {
        Tell("writing " + options.output);
    }
    files.push_back({target.folderOfFiles + target.name + ".atr", scene.attributes});
    files.push_back({target.folderOfFiles + target.name + ".bin", SceneFileBytes(scene.objects)});
    if (options.settings) {
        files.push_back({target.settingsPath, settings});
    }
    WriteWorld(std::move(files), target.folderOfFiles + "imported.txt", options.force);
}

}  // namespace

void Import(const Options& options) {
    if (options.IsForTexture()) {
        ImportTexture(options);
    } else {
        ImportModel(options);
    }
}
