#include "scene_writer/texture_mapping.h"

#include <array>
#include <cmath>

#include "scene_writer/refusal.h"

namespace engine {

namespace {

enum Axis { alongX, alongY, alongZ };

/// The axis that the triangle faces most, to either side.
Axis FacingAxis(const SceneObject& object, Int3 face) {
    const Float3 a = object.vertices[face.a];
    const Float3 b = object.vertices[face.b];
    const Float3 c = object.vertices[face.c];
    const float x = std::fabs((b.y - a.y) * (c.z - a.z) - (b.z - a.z) * (c.y - a.y));
    const float y = std::fabs((b.z - a.z) * (c.x - a.x) - (b.x - a.x) * (c.z - a.z));
    const float z = std::fabs((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x));
    if (z >= x && z >= y) {
        return alongZ;
    }
    return x >= y ? alongX : alongY;
}

Float3 Projected(Float3 vertex, Axis axis, float size) {
    if (axis == alongX) {
        return {vertex.y / size, vertex.z / size, 0.0f};
    }
    if (axis == alongY) {
        return {vertex.x / size, vertex.z / size, 0.0f};
    }
    return {vertex.x / size, vertex.y / size, 0.0f};
}

}  // namespace

void ProjectTexture(SceneObject& object, float size) {
    DemandNoMarkers(object, "ProjectTexture");
    if (!(size > 0.0f)) {
        Refuse(Named(object), "a texture needs a size above 0");
    }
    object.texVertices.clear();
    object.texFaces.clear();
    // For each vertex its texture vertex along each axis: neighbours that face the same way share it.
    std::vector<std::array<std::int32_t, 3>> texVertexOf(object.vertices.size(), {-1, -1, -1});
    for (const Int3& face : object.faces) {
        const Axis axis = FacingAxis(object, face);
        Int3 texFace = face;
        for (std::int32_t* corner : {&texFace.a, &texFace.b, &texFace.c}) {
            std::int32_t& texVertex = texVertexOf[*corner][axis];
            if (texVertex == -1) {
                texVertex = static_cast<std::int32_t>(object.texVertices.size());
                object.texVertices.push_back(Projected(object.vertices[*corner], axis, size));
            }
            *corner = texVertex;
        }
        object.texFaces.push_back(texFace);
    }
}

void ScaleTexture(SceneObject& object, float u, float v) {
    for (Float3& texVertex : object.texVertices) {
        texVertex.x *= u;
        texVertex.y *= v;
    }
}

}  // namespace engine
