#pragma once

#include <cstddef>

#include "import_scene/materials.h"
#include "scene_writer/scene_file.h"

/// What a mesh lost on its way.
struct MeshLosses {
    std::size_t degenerate = 0;  ///< triangles without an area
    std::size_t linesOrPoints = 0;
    std::size_t broken = 0;      ///< triangles with corners that don't exist, or that stand nowhere
    bool noCoordinates = false;  ///< a texture, and nothing that says where it goes
};

struct MeshConversion {
    float creaseAngle = 50.0f;  ///< degrees; for meshes without normals
    bool oneSided = false;
    bool linearColours = false;  ///< those of the model are amounts of light
};

/// Turns a mesh into an object without a name and markers. Corners share a vertex where position, colour
/// and the model's normal agree, so that the engine, which makes normals of its own, shades smoothly where
/// the model does. With texture coordinates every texture vertex belongs to one vertex alone, and there are
/// at least as many of them as of vertices: that is what the engine makes one list of.
/// @param toWorld from the mesh's space; a mirroring one keeps the front sides
engine::SceneObject ConvertMesh(const aiMesh& mesh, const aiMatrix4x4& toWorld, const Surface& surface,
                                const MeshConversion& conversion, MeshLosses& losses);
