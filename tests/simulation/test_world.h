#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "scene/scene.h"
#include "services/log.h"
#include "support/temporary_folder.h"

// Builds small worlds in memory. Adding an object moves the earlier ones, so objects go by their ids.

inline Vector VertexOf(const Object& object, std::int32_t vertex) {
    Vector result;
    object.GetVertex(result, vertex);
    return result;
}

inline Vector CentreOf(const Object& object) {
    return VertexOf(object, object.centreVertex);
}

inline void ExpectNear(Vector actual, Vector expected, float tolerance = 1e-4f) {
    EXPECT_LE(actual.Distance(expected), tolerance)
        << "(" << actual.x << ", " << actual.y << ", " << actual.z << ") instead of (" << expected.x << ", "
        << expected.y << ", " << expected.z << ")";
}

/// Five markers and no mesh: centre, one unit along X, Y and Z, and the spare vertex.
inline std::int32_t AddMarkers(Scene& scene, Vector centre) {
    scene.AddObjects(1);
    Object& object = scene.objects[scene.objectCount - 1];
    object.ResizeVertices(5);
    object.ResizeFaces(0);
    object.SetVertex(centre, 0);
    object.SetVertex(centre + Vector(1, 0, 0), 1);
    object.SetVertex(centre + Vector(0, 1, 0), 2);
    object.SetVertex(centre + Vector(0, 0, 1), 3);
    object.SetVertex(centre, 4);
    object.centreVertex = 0;
    object.xAxisVertex = 1;
    object.yAxisVertex = 2;
    object.zAxisVertex = 3;
    object.spareVertex = 4;
    object.ComputeRadius();
    return scene.objectCount - 1;
}

/// The same with a collider and physics.
inline std::int32_t AddBody(Scene& scene, Vector centre) {
    const std::int32_t id = AddMarkers(scene, centre);
    scene.objects[id].MakeCollider();
    scene.objects[id].MakePhysics();
    return id;
}

/// A mesh of triangles, three corners each, counter-clockwise as seen from the front.
inline void MakeMesh(Object& object, const Vector* corners, std::int32_t count) {
    object.ResizeVertices(count + 1);
    object.ResizeFaces(count / 3);
    Vector sum;
    for (std::int32_t i = 0; i < count; i++) {
        object.SetVertex(corners[i], i);
        object.faces[i] = i;
        sum = sum + corners[i];
    }
    object.SetVertex(sum / static_cast<float>(count), count);
    object.centreVertex = count;
    object.ComputeRadius();
}

inline std::int32_t AddMesh(Scene& scene, std::initializer_list<Vector> corners) {
    scene.AddObjects(1);
    MakeMesh(scene.objects[scene.objectCount - 1], corners.begin(),
             static_cast<std::int32_t>(corners.size()));
    return scene.objectCount - 1;
}

/// A square of 200 x 200 world units that faces up.
inline std::int32_t AddFloor(Scene& scene, float z) {
    const Vector a(-100, -100, z);
    const Vector b(100, -100, z);
    const Vector c(100, 100, z);
    const Vector d(-100, 100, z);
    return AddMesh(scene, {a, b, c, a, c, d});
}

/// A square of 200 x 200 world units in the plane of this x, facing along minus x.
inline std::int32_t AddWall(Scene& scene, float x) {
    const Vector a(x, 100, -100);
    const Vector b(x, -100, -100);
    const Vector c(x, -100, 100);
    const Vector d(x, 100, 100);
    return AddMesh(scene, {a, b, c, a, c, d});
}

/// Lets the object have these tracks of one and the same key.
inline void AddKeyTracks(Object& object, std::int32_t trackCount, std::int32_t keyCount, Vector move,
                         float angle = 0.0f, Vector axis = Vector(0, 0, 1)) {
    object.ResizeKeyTracks(trackCount);
    for (std::int32_t t = 0; t < trackCount; t++) {
        KeyTrack& track = object.keyTracks[t];
        track.Resize(keyCount);
        for (std::int32_t key = 0; key < keyCount; key++) {
            track.keyTranslations[key] = move;
            track.keyAngles[key] = angle;
            track.keyAxes[key] = axis;
        }
    }
}

/// A log of the scene in a folder of its own.
struct LoggedScene {
    TemporaryFolder folder;
    Log log;

    explicit LoggedScene(Scene& scene) { scene.SetLog(&log); }
    int CountLines(const std::string& text) const {
        const std::string bytes = ReadWholeFile("defaultlog.txt");
        int count = 0;
        for (std::size_t at = bytes.find(text); at != std::string::npos; at = bytes.find(text, at + 1))
            count++;
        return count;
    }
};

inline constexpr const char* limitLine =
    "Critical collision recursion value reached: moving to safe position";
