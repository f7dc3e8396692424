#pragma once

#include <string>
#include <vector>

#include "import_scene/options.h"
#include "import_scene/textures.h"
#include "import_scene/world_object.h"
#include "scene_writer/attribute_text.h"

/// A scene as it is written.
struct AssembledScene {
    std::vector<engine::SceneObject> objects;
    std::string attributes;                                    ///< the text beside it
    std::vector<std::pair<std::string, std::string>> renamed;  ///< the model's name and the scene's
};

/// Puts objects into the order that players need, gives them names that the engine finds, markers and their
/// blocks of attributes.
/// @param textureFolder stands before the textures' names, with a backslash at its end; may be empty
AssembledScene AssembleScene(std::vector<WorldObject> objects,
                             const std::vector<engine::SceneLight>& lights,
                             const std::vector<SceneTexture>& textures, const std::string& textureFolder);

/// The last object of a scene lends its texture to the engine's sprites: this one's is invisible. It has no
/// triangles. Its texture goes to the end of the list.
WorldObject MakeSpriteVeil(std::vector<SceneTexture>& textures, const std::string& prefix);

/// A settings file for the scene, with the lines of the options in place of its own.
/// @param scenePath as the engine is to find it
std::string MakeSettings(const std::vector<WorldObject>& objects, const std::string& scenePath,
                         const Options& options);
