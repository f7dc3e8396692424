#pragma once

#include <string>
#include <vector>

#include "scene_writer/scene_file.h"

using engine::Float3;
using engine::Mixed;
using engine::SceneObject;

/// What becomes of an object once it has been put into the world.
enum class Role {
    Fixed,    ///< casts and takes shadows; gets its markers when the world is written
    Outside,  ///< the same, but neither casts nor takes shadows
    Moving    ///< has its markers already; shadows would move along with it
};

struct WorldObject {
    SceneObject mesh;
    Role role = Role::Fixed;
    std::vector<std::string> attributes;  ///< the lines of its block
};

/// A scene while it is being put together, object by object in the order of the file. The engine draws in
/// that order, and what an attribute refers to must come first.
struct World {
    std::vector<WorldObject> objects;

    void Add(SceneObject mesh, Role role, std::vector<std::string> attributes = {});
    /// Adds a mesh that has texture coordinates, with the key for its texture.
    void AddTextured(SceneObject mesh, Role role, const std::string& texture,
                     std::vector<std::string> attributes = {});
    /// Adds a fixed mesh of one colour, on which the texture repeats every `tile` world units.
    void AddPainted(SceneObject mesh, Float3 colour, const std::string& texture, float tile);
};

/// Writes data/courtyard.bin and data/courtyard.atr into the folder. Throws std::runtime_error if a file
/// can't be written.
void WriteWorld(const World& world, const std::string& folder);
