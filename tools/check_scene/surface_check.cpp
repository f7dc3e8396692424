#include <algorithm>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include "check_scene/checks.h"
#include "check_scene/mesh_facts.h"
#include "scene/scene.h"

// What is seen of a mesh: its colours, its texture coordinates, triangles that look the other way, and
// meshes that stand in each other's place.

namespace {

/// Whether all vertices of triangles have the same three values there, and which.
bool AreAllAlike(const Object& object, const float* values, Vector& value) {
    const float* first = values + 3 * static_cast<std::size_t>(object.faces[0]);
    value = Vector(first[0], first[1], first[2]);
    for (std::int32_t corner = 1; corner < object.faceValueCount; corner++) {
        if (!std::equal(first, first + 3, values + 3 * static_cast<std::size_t>(object.faces[corner]))) {
            return false;
        }
    }
    return true;
}

/// How often the texture lies side by side on one triangle, at most.
float MostRepeats(const Object& object) {
    float most = 0.0f;
    for (std::int32_t i = 0; i < object.faceValueCount && object.texVertices != nullptr; i++) {
        const std::int32_t next = i % 3 == 2 ? i - 2 : i + 1;
        const float* from = &object.texVertices[std::ptrdiff_t{3} * object.faces[i]];
        const float* to = &object.texVertices[std::ptrdiff_t{3} * object.faces[next]];
        most = std::max({most, std::fabs(to[0] - from[0]), std::fabs(to[1] - from[1])});
    }
    return most;
}

/// Of the triangles' edges, gathered by the vertex that they begin at: where each of them leads.
struct Edges {
    std::vector<std::int32_t> begins;  ///< of each vertex, in `ends`
    std::vector<std::int32_t> ends;

    explicit Edges(const Object& object)
        : begins(static_cast<std::size_t>(object.vertexValueCount / 3) + 2) {
        const auto count = static_cast<std::size_t>(object.faceValueCount);
        for (std::size_t corner = 0; corner < count; corner++) {
            begins[static_cast<std::size_t>(object.faces[corner]) + 2]++;
        }
        for (std::size_t i = 2; i < begins.size(); i++) {
            begins[i] += begins[i - 1];
        }
        ends.resize(count);
        for (std::size_t corner = 0; corner < count; corner++) {
            const std::size_t next = corner % 3 == 2 ? corner - 2 : corner + 1;
            std::int32_t& slot = begins[static_cast<std::size_t>(object.faces[corner]) + 1];
            ends[static_cast<std::size_t>(slot++)] = object.faces[next];
        }
    }
    /// How many triangles have this edge in this direction.
    std::ptrdiff_t Uses(std::int32_t from, std::int32_t to) const {
        const auto first = static_cast<std::size_t>(from);
        return std::count(ends.begin() + begins[first], ends.begin() + begins[first + 1], to);
    }
};

/// Triangles that share two edges or more with neighbours, in the neighbours' own direction: neighbours
/// that look to the same side run along an edge in opposite ones.
std::int32_t CountTurned(const Object& object, std::int32_t& firstTurned) {
    const Edges edges(object);
    std::int32_t turned = 0;
    for (std::int32_t corner = 0; corner + 2 < object.faceValueCount; corner += 3) {
        const std::int32_t* face = &object.faces[corner];
        int conflicts = 0;
        bool isAlone = true;  // a twin has all three edges
        for (int side = 0; side < 3; side++) {
            const std::ptrdiff_t uses = edges.Uses(face[side], face[(side + 1) % 3]);
            conflicts += uses == 2 ? 1 : 0;
            isAlone =
                isAlone && uses <= 2 && edges.Uses(face[(side + 1) % 3], face[side]) == (uses == 2 ? 0 : 1);
        }
        if (conflicts >= 2 && (conflicts == 3 || isAlone)) {
            firstTurned = turned++ == 0 ? corner / 3 : firstTurned;
        }
    }
    return turned;
}

void CheckTurned(Findings& findings, const World& world, std::int32_t id, const MeshFacts& facts) {
    const Object& object = world.scene->objects[id];
    std::int32_t first = 0;
    const std::int32_t turned = facts.doubledCount > 0 ? 0 : CountTurned(object, first);
    if (turned > 0) {
        findings.Warn("triangle-turned", world.At(id),
                      Named(object) + ": " + Counted(turned, "triangle") +
                          " of it look to the other side than their neighbours, so that there are "
                          "holes; the first is triangle " +
                          std::to_string(first));
    }
}

void CheckLook(Findings& findings, const World& world, std::int32_t id) {
    const Object& object = world.scene->objects[id];
    constexpr float black = 0.02f;
    Vector value;
    if (AreAllAlike(object, object.colours.get(), value) && std::max({value.x, value.y, value.z}) < black) {
        findings.Warn("mesh-black", world.At(id),
                      Named(object) +
                          ": all its colours are black, and no light or texture shows "
                          "on it; they are multiplied with the texture");
    }
    if (object.textureIndex >= 0 && object.texVertices != nullptr &&
        AreAllAlike(object, object.texVertices.get(), value)) {
        findings.Warn("coordinates-alike", world.At(id, "*TEXTURE"),
                      Named(object) +
                          ": all its texture coordinates are the same, so "
                          "that it shows one point of its texture");
    }
    constexpr float most = 100.0f;
    if (const float repeats = MostRepeats(object); object.textureIndex >= 0 && repeats > most) {
        findings.Warn("coordinates-large", world.At(id, "*TEXTURE"),
                      Named(object) + ": its texture lies " + Shown(std::round(repeats)) +
                          " times on one triangle: coordinates count whole images, not pixels");
    }
}

void CheckPlayersMesh(Findings& findings, const World& world, std::int32_t id, const MeshFacts& facts) {
    constexpr float widest = 10.0f;
    constexpr float highest = 20.0f;
    const Vector size = facts.high - facts.low;
    if (std::max(size.x, size.y) > widest || size.z > highest) {
        findings.Warn("mesh-beyond-body", world.At(id),
                      "the player's " + Named(world.scene->objects[id]) + " is " +
                          Shown(std::round(size.x)) + " x " + Shown(std::round(size.y)) + " x " +
                          Shown(std::round(size.z)) +
                          " large, and walks as a body of 4 x 4 x 10: it will reach into walls");
    }
}

/// Whether both have the same mesh at the same place.
bool AreTwins(const Object& a, const Object& b) {
    return a.vertexValueCount == b.vertexValueCount && a.faceValueCount == b.faceValueCount &&
           std::equal(a.vertices.get(), a.vertices.get() + a.vertexValueCount, b.vertices.get()) &&
           std::equal(a.faces.get(), a.faces.get() + a.faceValueCount, b.faces.get());
}

}  // namespace

void CheckSurface(Findings& findings, const World& world, std::int32_t id, const MeshFacts& facts) {
    CheckLook(findings, world, id);
    CheckTurned(findings, world, id, facts);
    if (PlayerOf(*world.scene, id) != -1) {
        CheckPlayersMesh(findings, world, id, facts);
    }
}

void CheckTwins(Findings& findings, const World& world) {
    const Scene& scene = *world.scene;
    std::map<std::pair<std::int32_t, float>, std::int32_t> firstAlike;
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        const Object& object = scene.objects[id];
        if (!world.HasMesh(id)) {
            continue;
        }
        const auto [alike, isNew] =
            firstAlike.emplace(std::pair(object.faceValueCount, object.vertices[0]), id);
        if (!isNew && AreTwins(object, scene.objects[alike->second])) {
            findings.Warn("object-twice", world.At(id),
                          Named(object) + " stands where " + Named(scene.objects[alike->second]) +
                              " stands, with the same mesh: the two flicker; take one out");
        }
    }
}
