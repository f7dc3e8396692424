#include "shadows.h"

#include <algorithm>
#include <array>
#include <numbers>

#include "lights.h"

namespace {

constexpr float farAway = 1000.0f;
constexpr float neighbourhood = 9.0f;  ///< how far the things are that hide the sky
constexpr float lift = 0.15f;          ///< rays start above the surface, so that it doesn't hide itself

struct Occluder {
    const SceneObject* mesh = nullptr;
    Float3 centre;
    float radius = 0.0f;
};

struct Ray {
    Float3 start;
    Float3 direction;  ///< of length 1
    float length = 0.0f;
};

std::vector<Occluder> FindOccluders(const World& world) {
    std::vector<Occluder> occluders;
    for (const WorldObject& object : world.objects) {
        if (object.role != Role::Fixed) {
            continue;
        }
        Occluder occluder{&object.mesh, {}, 0.0f};
        for (const Float3 vertex : object.mesh.vertices) {
            occluder.centre =
                occluder.centre + vertex * (1.0f / static_cast<float>(object.mesh.vertices.size()));
        }
        for (const Float3 vertex : object.mesh.vertices) {
            occluder.radius = std::max(occluder.radius, Length(vertex - occluder.centre));
        }
        occluders.push_back(occluder);
    }
    return occluders;
}

bool MayHit(const Ray& ray, const Occluder& occluder) {
    const Float3 towards = occluder.centre - ray.start;
    const float along = Dot(towards, ray.direction);
    if (along < -occluder.radius || along > ray.length + occluder.radius) {
        return false;
    }
    return Dot(towards, towards) - along * along <= occluder.radius * occluder.radius;
}

/// The Möller-Trumbore test; either side counts.
bool HitsTriangle(const Ray& ray, Float3 a, Float3 b, Float3 c) {
    const Float3 edge1 = b - a;
    const Float3 edge2 = c - a;
    const Float3 p = Cross(ray.direction, edge2);
    const float determinant = Dot(edge1, p);
    if (std::fabs(determinant) < 1e-9f) {
        return false;
    }
    const Float3 fromA = ray.start - a;
    const float u = Dot(fromA, p) / determinant;
    if (u < 0.0f || u > 1.0f) {
        return false;
    }
    const Float3 q = Cross(fromA, edge1);
    const float v = Dot(ray.direction, q) / determinant;
    if (v < 0.0f || u + v > 1.0f) {
        return false;
    }
    const float distance = Dot(edge2, q) / determinant;
    return distance > 0.0f && distance < ray.length;
}

bool IsBlocked(const Ray& ray, const std::vector<Occluder>& occluders) {
    for (const Occluder& occluder : occluders) {
        if (!MayHit(ray, occluder)) {
            continue;
        }
        for (const engine::Int3 face : occluder.mesh->faces) {
            const std::vector<Float3>& vertices = occluder.mesh->vertices;
            if (HitsTriangle(ray, vertices[face.a], vertices[face.b], vertices[face.c])) {
                return true;
            }
        }
    }
    return false;
}

/// Directions over the half sphere about the normal, denser around it, where more light comes from.
std::array<Float3, 16> DirectionsAbout(Float3 normal) {
    const Float3 aside = std::fabs(normal.z) < 0.9f ? Float3{0.0f, 0.0f, 1.0f} : Float3{1.0f, 0.0f, 0.0f};
    const Float3 x = Normalised(Cross(aside, normal));
    const Float3 y = Cross(normal, x);
    std::array<Float3, 16> directions;
    for (std::size_t i = 0; i < directions.size(); i++) {
        const float square = (static_cast<float>(i) + 0.5f) / static_cast<float>(directions.size());
        const float angle = static_cast<float>(i) * std::numbers::pi_v<float> * 0.764f;
        const float flat = std::sqrt(square);
        directions[i] =
            x * (flat * std::cos(angle)) + y * (flat * std::sin(angle)) + normal * std::sqrt(1.0f - square);
    }
    return directions;
}

/// Share of the sun that arrives, from five points of its disc so that the border is soft.
float SunShare(Float3 start, const std::vector<Occluder>& occluders) {
    constexpr std::array<Float3, 5> offsets{{{0.0f, 0.0f, 0.0f},
                                             {0.05f, 0.0f, 0.0f},
                                             {-0.05f, 0.0f, 0.0f},
                                             {0.0f, 0.05f, 0.0f},
                                             {0.0f, -0.05f, 0.0f}}};
    float share = 0.0f;
    for (const Float3 offset : offsets) {
        const Float3 direction = Normalised(Normalised(Colour(Sun().position)) + offset);
        if (!IsBlocked({start, direction, farAway}, occluders)) {
            share += 1.0f / offsets.size();
        }
    }
    return share;
}

float SkyShare(Float3 start, Float3 normal, const std::vector<Occluder>& occluders) {
    const std::array<Float3, 16> directions = DirectionsAbout(normal);
    float share = 0.0f;
    for (const Float3 direction : directions) {
        if (!IsBlocked({start, direction, neighbourhood}, occluders)) {
            share += 1.0f / directions.size();
        }
    }
    return share;
}

/// What the vertex colour is to be multiplied with, so that the engine's lights give the shaded picture.
Float3 Shade(Float3 vertex, Float3 normal, const std::vector<Occluder>& occluders) {
    const Float3 start = vertex + normal * lift;
    const float sky = SkyShare(start, normal, occluders);
    const Float3 ambient = Ambient();
    const Float3 direct = Falling(Sun(), normal);
    const Float3 opposite = Falling(Sky(), normal);
    const Float3 below = Falling(Ground(), normal);
    Float3 wanted = ambient * (0.3f + 0.7f * sky) + (opposite + below * 0.5f) * sky;
    if (Dot(direct, direct) > 0.0f) {
        wanted = wanted + direct * SunShare(start, occluders);
    }
    return VertexColour(wanted, ambient + direct + opposite + below);
}

}  // namespace

std::vector<Float3> VertexNormals(const SceneObject& mesh) {
    std::vector<Float3> normals(mesh.vertices.size());
    for (const engine::Int3 face : mesh.faces) {
        const Float3 a = mesh.vertices[face.a];
        const Float3 normal = Normalised(Cross(mesh.vertices[face.b] - a, mesh.vertices[face.c] - a));
        for (const std::int32_t corner : {face.a, face.b, face.c}) {
            normals[corner] = normals[corner] + normal;
        }
    }
    for (Float3& normal : normals) {
        normal = Normalised(normal);
    }
    return normals;
}

void PaintShadows(World& world) {
    const std::vector<Occluder> occluders = FindOccluders(world);
    for (WorldObject& object : world.objects) {
        if (object.role != Role::Fixed) {
            continue;
        }
        SceneObject& mesh = object.mesh;
        mesh.colours.resize(mesh.vertices.size(), {1.0f, 1.0f, 1.0f});
        const std::vector<Float3> normals = VertexNormals(mesh);
        for (std::size_t i = 0; i < mesh.vertices.size(); i++) {
            mesh.colours[i] = mesh.colours[i] * Shade(mesh.vertices[i], normals[i], occluders);
        }
    }
}
