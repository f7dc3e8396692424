#pragma once

#include <initializer_list>
#include <string>

#include "scene/scene.h"
#include "services/log.h"
#include "support/expect_near.h"
#include "support/temporary_folder.h"

// Builds small worlds in memory. Adding an object moves the earlier ones, so objects go by their ids.

inline constexpr float quarterTurn = 1.57079633f;

inline Vector VertexOf(const Object& object, std::int32_t vertex) {
    Vector result;
    object.GetVertex(result, vertex);
    return result;
}

inline Vector CentreOf(const Object& object) {
    return VertexOf(object, object.centreVertex);
}

/// Five markers and no mesh: centre, one unit along X, Y and Z, and the spare vertex.
inline void MakeMarkers(Object& object, Vector centre) {
    object.ResizeVertices(5);
    object.ResizeFaces(0);
    const Vector offsets[] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}};
    for (std::int32_t i = 0; i < 5; i++) {
        object.SetVertex(centre + offsets[i], i);
    }
    object.xAxisVertex = 1;
    object.yAxisVertex = 2;
    object.zAxisVertex = 3;
    object.spareVertex = 4;
    object.ComputeRadius();
}

inline std::int32_t AddMarkers(Scene& scene, Vector centre) {
    scene.AddObjects(1);
    MakeMarkers(scene.objects[scene.objectCount - 1], centre);
    return scene.objectCount - 1;
}

/// An object with markers, a collider and physics.
inline std::int32_t AddBody(Scene& scene, Vector centre) {
    const std::int32_t id = AddMarkers(scene, centre);
    scene.objects[id].MakeCollider();
    scene.objects[id].MakePhysics();
    return id;
}

/// Triangles of three corners each, counter-clockwise as seen from the front.
inline void MakeMesh(Object& object, std::initializer_list<Vector> corners) {
    const auto count = static_cast<std::int32_t>(corners.size());
    object.ResizeVertices(count + 1);
    object.ResizeFaces(count / 3);
    Vector sum;
    for (std::int32_t i = 0; i < count; i++) {
        object.SetVertex(corners.begin()[i], i);
        object.faces[i] = i;
        sum = sum + corners.begin()[i];
    }
    object.SetVertex(sum / static_cast<float>(count), count);
    object.centreVertex = count;
    object.ComputeRadius();
}

/// A rectangle that reaches u and v from its centre to both sides, and faces along u x v.
inline std::int32_t AddRectangle(Scene& scene, Vector centre, Vector u, Vector v) {
    scene.AddObjects(1);
    const Vector a = centre - u - v;
    const Vector c = centre + u + v;
    MakeMesh(scene.objects[scene.objectCount - 1], {a, centre + u - v, c, a, c, centre - u + v});
    return scene.objectCount - 1;
}

inline std::int32_t AddFloor(Scene& scene) {
    return AddRectangle(scene, Vector(), Vector(100, 0, 0), Vector(0, 100, 0));
}

/// In the plane of this x, facing along minus x.
inline std::int32_t AddWall(Scene& scene, float x) {
    return AddRectangle(scene, Vector(x, 0, 0), Vector(0, -100, 0), Vector(0, 0, 100));
}

/// Lets the object have these tracks of one and the same key.
inline void AddKeyTracks(Object& object, std::int32_t trackCount, std::int32_t keyCount, Vector move,
                         float angle = 0.0f, Vector axis = Vector(0, 0, 1)) {
    object.ResizeKeyTracks(trackCount);
    for (std::int32_t t = 0; t < trackCount; t++) {
        KeyTrack& track = object.keyTracks[t];
        track.Resize(keyCount);
        std::fill_n(track.keyTranslations.get(), keyCount, move);
        std::fill_n(track.keyAngles.get(), keyCount, angle);
        std::fill_n(track.keyAxes.get(), keyCount, axis);
    }
}

/// A log of the scene in a folder of its own.
struct LoggedScene {
    TemporaryFolder folder;
    Log log;

    explicit LoggedScene(Scene& scene) { scene.SetLog(&log); }
    /// How many times a body went to its safe position.
    int Rescues() const {
        const std::string text = "Critical collision recursion value reached: moving to safe position";
        const std::string bytes = ReadWholeFile("defaultlog.txt");
        int count = 0;
        for (std::size_t at = bytes.find(text); at != std::string::npos; at = bytes.find(text, at + 1)) {
            count++;
        }
        return count;
    }
};
