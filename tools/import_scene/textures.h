#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "import_scene/model.h"
#include "import_scene/names.h"
#include "scene_writer/image_file.h"

/// What an image does beyond its edges.
enum class Wrap : std::uint8_t { Repeat, Mirror, Clamp };

struct SceneTexture {
    std::string fileName;  ///< with extension, without a folder
    engine::Image image;   ///< of a size that the engine takes
    std::string source;    ///< what the model calls it
    int sourceWidth = 0;
    int sourceHeight = 0;
    bool clamped = false;  ///< beyond its edges the model shows the edge, which the engine can't
};

/// The images of a model, found, read and brought to sizes that the engine takes.
class TextureList {
public:
    std::vector<SceneTexture> textures;

    /// @param newPrefix the scene's name, before the names of all its textures
    TextureList(const Model& newModel, const Options& newOptions, std::string newPrefix, Report& newReport)
        : model(newModel), options(newOptions), prefix(std::move(newPrefix)), report(newReport) {}

    /// @param path as the model has it: a file, or one of the images within the model. Files are looked for
    /// in the model's folder and in `Options::images` alone, as what is found goes into a world that may be
    /// given away: at their path from there, and by their name there and in the folders within, without
    /// regard to case
    /// @return the index of the texture; -1, with a warning, if the image can't be had
    int Add(const std::string& path, Wrap wrapX, Wrap wrapY, const std::string& material);

private:
    engine::Image Read(const std::string& path, std::string& name) const;

    const Model& model;
    const Options& options;
    std::string prefix;
    Report& report;
    NameList names{150};
    std::map<std::string, int> known;
};
