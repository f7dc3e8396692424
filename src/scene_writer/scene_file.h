#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "scene_writer/float3.h"

namespace engine {

// The binary mesh file of a scene.

/// The corners of a triangle, counter-clockwise as seen from its front.
struct Int3 {
    std::int32_t a = 0;
    std::int32_t b = 0;
    std::int32_t c = 0;
};

/// One step of an animation; the engine plays one a frame.
struct SceneKey {
    Float3 translation;
    Float3 axis;
    float angle = 0.0f;  ///< radians
    Float3 extra;        ///< kept by the engine and not used by playback
};

using SceneKeyTrack = std::vector<SceneKey>;

/// One object as the file holds it. `AddMarkers` of shapes.h fills the marker indices in.
struct SceneObject {
    std::string name;              ///< at most 49 characters
    std::vector<Float3> vertices;  ///< world coordinates, z up; markers included
    std::vector<Int3> faces;
    std::vector<Float3> texVertices;  ///< empty without a texture
    std::vector<Int3> texFaces;       ///< parallel to `faces`, or empty
    std::vector<Float3> colours;      ///< parallel to `vertices`; those that are missing are written white
    std::int32_t centreVertex = 0;    ///< the pivot
    std::int32_t spareVertex = 0;     ///< of no triangle; needed by members of groups
    std::int32_t xAxisVertex = 0;     ///< one unit from the pivot along the object's own X
    std::int32_t yAxisVertex = 0;     ///< the same along Y; players walk against it
    std::int32_t zAxisVertex = 0;     ///< the same along Z
    std::vector<SceneKeyTrack> keyTracks;
};

/// The bytes of a scene file. Nothing is checked: damaged scenes can be written too.
std::string SceneFileBytes(const std::vector<SceneObject>& objects);
/// Writes these bytes to a file. Throws std::invalid_argument for an object that the engine couldn't load
/// as it stands, and std::runtime_error if the file can't be written.
void WriteSceneFile(const std::string& path, const std::vector<SceneObject>& objects);

}  // namespace engine
