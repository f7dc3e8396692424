#include "simulation/face_index.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace {

constexpr std::int32_t mostPassesToBuild = 64 * FaceIndex::buildCost;

/// Faces to an entry of the tree: fewer mean more entries, more mean more faces that are candidates without
/// need.
constexpr std::int32_t facesInLeaf = 4;

float LargestOf(float a, float b, float c) {
    return std::max({std::fabs(a), std::fabs(b), std::fabs(c)});
}

Bound BoundOfFace(const float* vertices, const std::int32_t* face) {
    Vector corners[3];
    for (int corner = 0; corner < 3; corner++) {
        const float* vertex = vertices + 3 * static_cast<std::ptrdiff_t>(face[corner]);
        corners[corner] = Vector(vertex[0], vertex[1], vertex[2]);
    }
    const Vector centroid = (corners[0] + corners[1] + corners[2]) / 3.0f;
    const Vector a = corners[0] - centroid;
    const Vector b = corners[1] - centroid;
    const Vector c = corners[2] - centroid;
    return {centroid, Vector(LargestOf(a.x, b.x, c.x), LargestOf(a.y, b.y, c.y), LargestOf(a.z, b.z, c.z))};
}

}  // namespace

FaceIndex* FaceIndex::Of(const Object& mesh) {
    if (mesh.faceValueCount / 3 < fewestFaces) {
        return nullptr;
    }
    if (mesh.collisionIndex == nullptr) {
        mesh.collisionIndex = std::make_shared<FaceIndex>();
    }
    return static_cast<FaceIndex*>(mesh.collisionIndex.get());
}

void FaceIndex::PrepareLarge(const Scene& scene) {
    const std::span objects(scene.objects.get(), static_cast<std::size_t>(scene.objectCount));
    if (std::ranges::none_of(objects, [](const Object& object) { return object.collider != nullptr; })) {
        return;
    }
    for (const Object& mesh : objects) {
        if (mesh.faceValueCount / 3 >= fewestLarge && mesh.collider == nullptr &&
            mesh.attributes[collidableAttribute] != 0) {
            Of(mesh)->Follow(mesh);
            Of(mesh)->Build();
        }
    }
}

void FaceIndex::Follow(const Object& mesh) {
    if (mesh.meshVersion == meshVersion && mesh.vertices.get() == vertices && mesh.faces.get() == faces &&
        mesh.faceValueCount / 3 == faceCount) {
        return;
    }
    if (built) {
        const bool paid = passes >= buildCost;
        passesToBuild = paid ? buildCost : std::min(2 * passesToBuild, mostPassesToBuild);
    }
    built = false;
    passes = 0;
    meshVersion = mesh.meshVersion;
    vertices = mesh.vertices.get();
    faces = mesh.faces.get();
    faceCount = mesh.faceValueCount / 3;
}

void FaceIndex::Build() {
    auto bounds = std::make_unique_for_overwrite<Bound[]>(static_cast<std::size_t>(faceCount));
    for (std::int32_t face = 0; face < faceCount; face++) {
        bounds[face] = BoundOfFace(vertices, faces + 3 * static_cast<std::ptrdiff_t>(face));
    }
    tree.Build(bounds.get(), nullptr, faceCount, facesInLeaf);
    candidates.Resize(faceCount);
    built = true;
    passes = 0;
}

IdMarks* FaceIndex::FindCandidates(const Object& mesh, const Collider& body, float travel) {
    Follow(mesh);
    if (!built && passes >= passesToBuild) {
        Build();
    }
    passes = std::min(passes + 1, mostPassesToBuild);
    if (!built) {
        return nullptr;
    }
    // `FaceFilter` calls a face far if 0.999 distance² >= (radius + reach)², where its reach is travel + 1
    // and a third of a thousandth of the origin's size; radius and distance are those of the face's
    // centroid. The tree asks for 0.998 distance² with a smaller distance, a larger radius and the reach
    // below, so what it passes over is far by half a thousandth of the distance and more than that of the
    // origin's size. The rounding of all figures involved, here and there, is in proportion to the
    // coordinates of the face and of the origin in ellipsoid space, less than a hundred-thousandth of them;
    // and they are at most origin, distance and radius together. So such a face is far for the filter, too.
    NearQuery query;
    query.scale = Vector(1.0f / body.radii.x, 1.0f / body.radii.y, 1.0f / body.radii.z);
    query.origin = body.sweepOrigin;
    const float originSize =
        std::fabs(query.origin.x) + std::fabs(query.origin.y) + std::fabs(query.origin.z);
    query.reach = travel + 1.0f + 4e-4f * originSize;
    if (!tree.Covers(query)) {
        return nullptr;
    }
    tree.FindNear(query, candidates);
    candidates.Add(faceCount - 1);
    return &candidates;
}

std::int64_t FaceIndex::Memory() const {
    return tree.Memory() + candidates.Memory();
}
