#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "import_scene/model.h"
#include "import_scene/properties.h"
#include "scene_writer/scene_file.h"

/// An object on its way into the scene.
struct WorldObject {
    std::string name;          ///< as wished for; the model's
    int node = -1;             ///< of the model, or -1 for what was added
    engine::SceneObject mesh;  ///< in the world, without markers
    int texture = -1;          ///< index in the texture list
    Properties properties;
    Pose pose;             ///< where it turns about, and its axes
    bool usesPose = true;  ///< else nothing ever moves it, and it may be measured from its middle
    int pieceOf = -1;      ///< index of the object of the same node whose properties count for this one too
    bool isCamera = false;  ///< without triangles: vertex 0 is the eye, vertex 1 what it looks at
    bool isBlind = false;   ///< the camera of a player who acts and sees nothing
    bool drawnLast = false;

    bool HasTriangles() const { return !mesh.faces.empty(); }
    /// Scenery that bodies can stand on or run against.
    bool IsSolid() const { return HasTriangles() && !properties.noCollider && !properties.IsBody(); }
};

/// A box around things; empty at first.
struct Bounds {
    aiVector3D low{1e30f, 1e30f, 1e30f};
    aiVector3D high{-1e30f, -1e30f, -1e30f};

    bool IsEmpty() const { return low.x > high.x; }
    aiVector3D Middle() const { return (low + high) * 0.5f; }
    aiVector3D Size() const { return high - low; }
    bool Holds(const aiVector3D& point) const {
        return point.x > low.x && point.x < high.x && point.y > low.y && point.y < high.y &&
               point.z > low.z && point.z < high.z;
    }
    void Add(engine::Float3 point) {
        low = {std::min(low.x, point.x), std::min(low.y, point.y), std::min(low.z, point.z)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y), std::max(high.z, point.z)};
    }
};

/// Around all triangles.
Bounds BoundsOf(const std::vector<WorldObject>& objects);
Bounds BoundsOf(const engine::SceneObject& mesh);

/// The objects of all nodes: one for each mesh, one for each camera, and one for each other node that has
/// properties. In a node of several meshes the first object has the properties, and the others are its
/// pieces. Meshes are released as soon as no node needs them any more.
struct Surface;
std::vector<WorldObject> MakeObjects(Model& model, const std::vector<Surface>& surfaces,
                                     const Options& options, Report& report);
