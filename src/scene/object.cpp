#include "scene/object.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace {

/// Replaces the array by one of `newCount` values with as many of the first old ones as fit. The values
/// after them are not initialised.
template <typename Value>
void ResizeArray(std::unique_ptr<Value[]>& array, std::int32_t oldCount, std::int32_t newCount) {
    assert(oldCount >= 0 && newCount >= 0);
    auto resized = std::make_unique_for_overwrite<Value[]>(static_cast<std::size_t>(newCount));
    std::copy_n(array.get(), std::min(oldCount, newCount), resized.get());
    array = std::move(resized);
}

template <typename Value>
void FillBeyond(std::unique_ptr<Value[]>& array, std::int32_t oldCount, std::int32_t newCount,
                Value value) {
    if (newCount > oldCount) {
        std::fill(array.get() + oldCount, array.get() + newCount, value);
    }
}

}  // namespace

Object::Object() {
    const auto vertexValues = static_cast<std::size_t>(vertexValueCount);
    vertices = std::make_unique<float[]>(vertexValues);
    faces = std::make_unique<std::int32_t[]>(static_cast<std::size_t>(faceValueCount));
    colours = std::make_unique_for_overwrite<float[]>(vertexValues);
    normals = std::make_unique_for_overwrite<float[]>(vertexValues);
    std::fill_n(colours.get(), vertexValues, 1.0f);
    std::fill_n(normals.get(), vertexValues, 1.0f);
}

void Object::ResizeVertices(std::int32_t vertexCount) {
    const std::int32_t count = 3 * vertexCount;
    ResizeArray(vertices, vertexValueCount, count);
    ResizeArray(colours, vertexValueCount, count);
    ResizeArray(normals, vertexValueCount, count);
    FillBeyond(vertices, vertexValueCount, count, 0.0f);
    FillBeyond(colours, vertexValueCount, count, 1.0f);
    FillBeyond(normals, vertexValueCount, count, 0.0f);
    vertexValueCount = count;
    MeshChanged();
}

void Object::ResizeFaces(std::int32_t triangleCount) {
    ResizeArray(faces, faceValueCount, 3 * triangleCount);
    faceValueCount = 3 * triangleCount;
    MeshChanged();
}

void Object::ResizeTexVertices(std::int32_t texVertexCount) {
    ResizeArray(texVertices, texVertexValueCount, 3 * texVertexCount);
    texVertexValueCount = 3 * texVertexCount;
}

void Object::ResizeTexFaces(std::int32_t triangleCount) {
    ResizeArray(texFaces, texFaceValueCount, 3 * triangleCount);
    texFaceValueCount = 3 * triangleCount;
}

void Object::ResizeKeyTracks(std::int32_t trackCount) {
    KeyTracks resized = MakeKeyTracks(trackCount, 0);
    for (std::int32_t track = 0; track < trackCount; track++) {
        if (track < keyTrackCount) {
            keyTracks[track].CopyTo(resized[track]);
        } else {
            resized[track] = KeyTrack();
        }
    }
    keyTracks = std::move(resized);
    keyTrackCount = trackCount;
}

void Object::MakeCollider() {
    collider = std::make_unique<Collider>();
}

void Object::MakePhysics() {
    physics = std::make_unique<Physics>();
}

void Object::CopyTo(Object& destination) const {
    if (&destination == this) {
        return;
    }
    if (destination.vertexValueCount != vertexValueCount || destination.faceValueCount != faceValueCount) {
        destination.ResizeVertices(vertexValueCount / 3);
        destination.ResizeFaces(faceValueCount / 3);
    }
    std::copy_n(vertices.get(), vertexValueCount, destination.vertices.get());
    std::copy_n(colours.get(), vertexValueCount, destination.colours.get());
    std::copy_n(normals.get(), vertexValueCount, destination.normals.get());
    std::copy_n(faces.get(), faceValueCount, destination.faces.get());
    assert(destination.vertexValueCount == vertexValueCount &&
           destination.faceValueCount == faceValueCount);
    destination.MeshChanged();

    if (destination.texVertexValueCount != texVertexValueCount ||
        destination.texFaceValueCount != texFaceValueCount) {
        destination.ResizeTexVertices(texVertexValueCount / 3);
        destination.ResizeTexFaces(texFaceValueCount / 3);
    }
    std::copy_n(texVertices.get(), texVertexValueCount, destination.texVertices.get());
    std::copy_n(texFaces.get(), texFaceValueCount, destination.texFaces.get());
    // An array of no values is no array: the render paths know a textured object by it.
    if (texVertices == nullptr) {
        destination.texVertices = nullptr;
    }
    if (texFaces == nullptr) {
        destination.texFaces = nullptr;
    }

    if (destination.keyTrackCount != keyTrackCount) {
        destination.keyTracks = MakeKeyTracks(keyTrackCount, 0);
        destination.keyTrackCount = keyTrackCount;
    }
    for (std::int32_t track = 0; track < keyTrackCount; track++) {
        keyTracks[track].CopyTo(destination.keyTracks[track]);
    }
    if (keyTracks == nullptr) {
        destination.keyTracks = nullptr;
    }

    if (collider != nullptr) {
        destination.MakeCollider();
        collider->CopyTo(*destination.collider);
    }
    if (physics != nullptr) {
        destination.MakePhysics();
        physics->CopyTo(*destination.physics);
    }

    destination.groupParent = groupParent;
    destination.textureIndex = textureIndex;
    transform.CopyTo(destination.transform);
    destination.name = name;
    destination.activeKeyTrack = activeKeyTrack;
    destination.centreVertex = centreVertex;
    destination.xAxisVertex = xAxisVertex;
    destination.yAxisVertex = yAxisVertex;
    destination.zAxisVertex = zAxisVertex;
    destination.spareVertex = spareVertex;
    destination.radius = radius;
    std::copy_n(attributes, attributeCount, destination.attributes);
}
