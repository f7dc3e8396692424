#pragma once

#include <string>
#include <vector>

#include "scene_writer/scene_file.h"

namespace engine {

// The usual shapes of a scene. All of them are seen from outside and come without markers: put the object
// together first, and let `AddMarkers` be the last step.
//
// `tiles` is how often a texture repeats along each side of a shape; 0 leaves texture coordinates out.
//
// What makes no shape throws std::invalid_argument: one without triangles or size, corners the wrong way
// round, a mesh that is changed after its markers.

/// A closed box between two corners. Each side has vertices of its own, so that its shading is flat.
SceneObject MakeBox(const std::string& name, Float3 low, Float3 high, float tiles = 0.0f);
/// A parallelogram of columns x rows cells, each of two triangles. It is seen from where u x v points to.
/// @param u,v the whole edges from the corner on
SceneObject MakeGrid(const std::string& name, Float3 corner, Float3 u, Float3 v, int columns = 1,
                     int rows = 1, float tiles = 0.0f);
/// An upright cylinder with both caps, smooth around.
/// @param base middle of the lower cap
SceneObject MakeCylinder(const std::string& name, Float3 base, float radius, float height, int sides,
                         float tiles = 0.0f);
/// A ball of `rings` rows of faces from pole to pole, smooth. The sides of its texture run along the
/// equator and from pole to pole.
SceneObject MakeBall(const std::string& name, Float3 centre, float radius, int rings, int sides,
                     float tiles = 0.0f);
/// One ring of a turned shape.
struct LathePoint {
    float radius = 0.0f;
    float height = 0.0f;  ///< above the base
};
/// A shape turned on a lathe about the vertical: rings from the lowest to the highest, smooth around and
/// along. A height that occurs twice makes a ledge; a ring that occurs twice makes a sharp edge. The ends
/// stay open: close them with a ring of radius 0.
SceneObject MakeLathe(const std::string& name, Float3 base, const std::vector<LathePoint>& profile,
                      int sides, float tiles = 0.0f);
/// An object of two vertices and no triangle: vertex 0 is the eye, vertex 1 what it looks at.
SceneObject MakeCamera(const std::string& name, Float3 eye, Float3 look);

/// Adds the mesh of a part; its name, markers and key tracks stay behind. Neither may have markers yet.
void Append(SceneObject& object, const SceneObject& part);
/// Gives all vertices this colour.
void Paint(SceneObject& object, Float3 colour);
void Move(SceneObject& object, Float3 offset);
/// Multiplies the distances from the centre; factors are above 0. Refuses objects with markers.
void Stretch(SceneObject& object, Float3 centre, Float3 factors);
/// Turns the object about the vertical through `centre`, counter-clockwise as seen from above.
/// @param angle radians
void TurnAboutZ(SceneObject& object, Float3 centre, float angle);

/// Adds the five marker vertices, none of which a triangle uses. In an object with texture faces the centre
/// and the axes come to stand right after as many entries as there are texture vertices, where the engine
/// keeps them; the spare vertex is the last entry before them, with a texture vertex that no face names.
/// The axes are vectors from the centre, of unit length and at right angles. An object takes markers once.
void AddMarkers(SceneObject& object, Float3 centre, Float3 xAxis = {1.0f, 0.0f, 0.0f},
                Float3 yAxis = {0.0f, 1.0f, 0.0f}, Float3 zAxis = {0.0f, 0.0f, 1.0f});

}  // namespace engine
