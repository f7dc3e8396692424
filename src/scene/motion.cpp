#include <algorithm>

#include "scene/object.h"

// How requested motion is read, played and baked into the vertices.

namespace {

/// A vector given in the parent's axes, in world axes. Without a parent it is in world axes already.
Vector InWorldAxes(Vector vector, const Object* parent) {
    if (parent != nullptr) {
        Matrix orientation;
        parent->GetOrientationMatrix(orientation);
        orientation.TransformPoint(vector);
    }
    return vector;
}

bool HasActiveKeyTrack(const Object& object) {
    return object.activeKeyTrack >= 0 && object.activeKeyTrack < object.keyTrackCount &&
           object.keyTracks != nullptr;
}

}  // namespace

void Object::GetVertex(Vector& result, std::int32_t index) const {
    if (!HasVertex(index)) {
        result = Vector();
        return;
    }
    const float* value = vertices.get() + 3 * static_cast<std::ptrdiff_t>(index);
    result = Vector(value[0], value[1], value[2]);
}

void Object::SetVertex(Vector value, std::int32_t index) {
    if (!HasVertex(index)) {
        return;
    }
    float* vertex = vertices.get() + 3 * static_cast<std::ptrdiff_t>(index);
    vertex[0] = value.x;
    vertex[1] = value.y;
    vertex[2] = value.z;
    MeshChanged();
}

void Object::GetOrientationMatrix(Matrix& result) const {
    Vector centre;
    GetVertex(centre, centreVertex);
    result.SetIdentity();
    const std::int32_t markers[3] = {xAxisVertex, yAxisVertex, zAxisVertex};
    for (int row = 0; row < 3; row++) {
        Vector marker;
        GetVertex(marker, markers[row]);
        const Vector axis = marker - centre;
        result.m[4 * row] = axis.x;
        result.m[4 * row + 1] = axis.y;
        result.m[4 * row + 2] = axis.z;
        result.m[4 * row + 3] = 0.0f;
    }
    result.Invert();
}

void Object::AdvanceKeyTrack(const Object* parent) {
    if (activeKeyTrack == -1) {
        return;
    }
    if (!HasActiveKeyTrack(*this)) {
        activeKeyTrack = -1;
        return;
    }
    KeyTrack& track = keyTracks[activeKeyTrack];
    if (track.currentKey >= track.keyCount) {
        RewindKeyTrack(parent);
        return;
    }
    const std::int32_t key = track.currentKey;
    // Rotation first, so that the key's own rotation does not turn its translation.
    const Vector axis = InWorldAxes(track.keyAxes[key], parent);
    transform.Rotate(track.keyAngles[key], axis.x, axis.y, axis.z);
    const Vector move = InWorldAxes(track.keyTranslations[key], parent);
    transform.Translate(move.x, move.y, move.z);
    track.currentKey++;
    activeKeyTrack = -1;
}

void Object::RewindKeyTrack(const Object* parent) {
    if (!HasActiveKeyTrack(*this)) {
        activeKeyTrack = -1;
        return;
    }
    KeyTrack& track = keyTracks[activeKeyTrack];
    Matrix turned;
    Matrix moved;
    const std::int32_t played = std::min(track.currentKey, track.keyCount);
    for (std::int32_t key = 0; key < played; key++) {
        const Vector axis = InWorldAxes(track.keyAxes[key], parent);
        const Vector move = InWorldAxes(track.keyTranslations[key], parent);
        turned.Rotate(track.keyAngles[key], axis.x, axis.y, axis.z);
        moved.Translate(move.x, move.y, move.z);
    }
    // Each holds one kind of transform, of which `Invert` is the true inverse.
    turned.Invert();
    moved.Invert();
    transform.Multiply(turned);
    transform.Multiply(moved);
    track.currentKey = 0;
    activeKeyTrack = -1;
}

void Object::ApplyTransform() {
    if (transform.IsIdentity()) {
        return;
    }
    Vector centre;
    GetVertex(centre, centreVertex);
    const bool turns = !transform.IsIdentityRotation();
    const float* m = transform.m;
    for (std::int32_t i = 0; i < vertexValueCount; i += 3) {
        float* vertex = vertices.get() + i;
        Vector point = Vector(vertex[0], vertex[1], vertex[2]) - centre;
        transform.TransformPoint(point);
        point = point + centre;
        vertex[0] = point.x;
        vertex[1] = point.y;
        vertex[2] = point.z;
        if (turns) {
            float* normal = normals.get() + i;
            const float x = normal[0];
            const float y = normal[1];
            const float z = normal[2];
            normal[0] = m[0] * x + m[1] * y + m[2] * z;
            normal[1] = m[4] * x + m[5] * y + m[6] * z;
            normal[2] = m[8] * x + m[9] * y + m[10] * z;
        }
    }
    transform.SetIdentity();
    MeshChanged();
}
