#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <utility>

#include "scene/indices.h"
#include "scene/object.h"

// What is done to a mesh once it is read: smooth normals, one index list instead of two, the radius.

namespace {

Vector VectorAt(const float* values, std::int32_t index) {
    return Vector(values[3 * index], values[3 * index + 1], values[3 * index + 2]);
}

void StoreVector(float* values, std::int32_t index, Vector value) {
    values[3 * index] = value.x;
    values[3 * index + 1] = value.y;
    values[3 * index + 2] = value.z;
}

/// Resizes the array, with the given value after the old ones, and gives entry `texFaces[i]` the old value
/// of entry `faces[i]`, for all i in order: of two vertices that one texture vertex belongs to, the later
/// wins.
void Redistribute(std::unique_ptr<float[]>& values, std::int32_t oldCount, std::int32_t newCount,
                  float newValue, const Object& object) {
    // The old array stays beside it, since an entry may be overwritten before its old value is wanted.
    auto resized = std::make_unique_for_overwrite<float[]>(static_cast<std::size_t>(newCount));
    const std::int32_t kept = std::min(oldCount, newCount);
    std::copy_n(values.get(), kept, resized.get());
    std::fill(resized.get() + kept, resized.get() + newCount, newValue);
    for (std::int32_t i = 0; i < object.faceValueCount; i++) {
        std::memcpy(resized.get() + 3 * object.texFaces[i], values.get() + 3 * object.faces[i],
                    3 * sizeof(float));
    }
    values = std::move(resized);
}

}  // namespace

void Object::ComputeNormals() {
    const std::int32_t vertexCount = vertexValueCount / 3;
    const std::int32_t triangleCount = faceValueCount / 3;
    // The mean of a vertex is the sum over its triangles in triangle order. Going through the triangles
    // once and adding each to its corners' sums adds in just that order, without searching. The sums stand
    // in the array of the normals, from which a vertex without triangles keeps its value.
    auto counts = std::make_unique<std::int32_t[]>(static_cast<std::size_t>(vertexCount));
    const auto add = [&](std::int32_t vertex, Vector normal) {
        const Vector sum = counts[vertex] > 0 ? VectorAt(normals.get(), vertex) : Vector();
        StoreVector(normals.get(), vertex, sum + normal);
        counts[vertex]++;
    };
    for (std::int32_t triangle = 0; triangle < triangleCount; triangle++) {
        const std::int32_t* corner = faces.get() + 3 * triangle;
        const Vector a = VectorAt(vertices.get(), corner[0]);
        const Vector b = VectorAt(vertices.get(), corner[1]);
        const Vector c = VectorAt(vertices.get(), corner[2]);
        Vector normal = (a - b).Cross(b - c);
        normal.Normalise();
        // A triangle counts once for a vertex, even if it names it twice.
        add(corner[0], normal);
        if (corner[1] != corner[0]) {
            add(corner[1], normal);
        }
        if (corner[2] != corner[0] && corner[2] != corner[1]) {
            add(corner[2], normal);
        }
    }
    for (std::int32_t vertex = 0; vertex < vertexCount; vertex++) {
        Vector normal = VectorAt(normals.get(), vertex);
        if (counts[vertex] > 0) {
            normal = normal / static_cast<float>(counts[vertex]);
        }
        normal.Normalise();
        StoreVector(normals.get(), vertex, normal);
    }
}

void Object::ReindexByTexFaces() {
    const std::int32_t newCount = texVertexValueCount + 3 * 4;
    if (texFaces == nullptr || texFaceValueCount != faceValueCount ||
        !AreIndicesBelow(faces.get(), faceValueCount, std::min(vertexValueCount, newCount) / 3) ||
        !AreIndicesBelow(texFaces.get(), texFaceValueCount, texVertexValueCount / 3)) {
        return;
    }
    // The values of new entries are those of `ResizeVertices`.
    Redistribute(vertices, vertexValueCount, newCount, 0.0f, *this);
    Redistribute(normals, vertexValueCount, newCount, 0.0f, *this);
    Redistribute(colours, vertexValueCount, newCount, 1.0f, *this);
    vertexValueCount = newCount;
    faces = std::move(texFaces);
    texFaceValueCount = 0;
    MeshChanged();
}

void Object::ComputeRadius() {
    // A root never turns the order of two numbers round, so the largest square has the largest root.
    float largestSquare = 0.0f;
    Vector centre;
    GetVertex(centre, centreVertex);
    for (std::int32_t vertex = 0; vertex < vertexValueCount / 3; vertex++) {
        const Vector offset = VectorAt(vertices.get(), vertex) - centre;
        const float square = offset.Dot(offset);
        if (square > largestSquare) {
            largestSquare = square;
        }
    }
    radius = std::sqrt(largestSquare);
}
