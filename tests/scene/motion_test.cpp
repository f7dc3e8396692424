#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "scene/object.h"

namespace {

constexpr float quarterTurn = 1.57079633f;

/// Markers of unit axes about `centre`, and no mesh.
Object MakeMarkers(Vector centre) {
    Object object;
    object.ResizeVertices(4);
    object.SetVertex(centre, 0);
    object.SetVertex(centre + Vector(1, 0, 0), 1);
    object.SetVertex(centre + Vector(0, 1, 0), 2);
    object.SetVertex(centre + Vector(0, 0, 1), 3);
    object.xAxisVertex = 1;
    object.yAxisVertex = 2;
    object.zAxisVertex = 3;
    return object;
}

void AddTrack(Object& object, std::int32_t keyCount, Vector move, float angle, Vector axis) {
    object.ResizeKeyTracks(1);
    KeyTrack& track = object.keyTracks[0];
    track.Resize(keyCount);
    for (std::int32_t key = 0; key < keyCount; key++) {
        track.keyTranslations[key] = move;
        track.keyAngles[key] = angle;
        track.keyAxes[key] = axis;
    }
}

Vector Centre(const Object& object) {
    Vector centre;
    object.GetVertex(centre, object.centreVertex);
    return centre;
}

void ExpectNear(Vector actual, Vector expected) {
    EXPECT_LT(actual.Distance(expected), 1e-5f);
}

TEST(Motion, RotationsTurnAboutTheCentreAndTranslationsRunAlongTheWorld) {
    Object object = MakeMarkers(Vector(10, 0, 0));
    object.normals[0] = 1.0f;
    object.normals[1] = object.normals[2] = 0.0f;
    object.transform.Rotate(quarterTurn, 0, 0, 1);
    object.transform.Translate(0, 0, 5);
    object.ApplyTransform();
    ExpectNear(Centre(object), Vector(10, 0, 5));
    Vector xMarker;
    object.GetVertex(xMarker, 1);
    ExpectNear(xMarker, Vector(10, -1, 5));
    ExpectNear(Vector(object.normals[0], object.normals[1], object.normals[2]), Vector(0, -1, 0));
    EXPECT_TRUE(object.transform.IsIdentity());

    // Its own X axis, turned into the world's.
    Matrix orientation;
    object.GetOrientationMatrix(orientation);
    Vector x(1, 0, 0);
    orientation.TransformPoint(x);
    ExpectNear(x, Vector(0, -1, 0));
}

TEST(Motion, ATranslationLeavesNormalsAloneToTheBit) {
    Object object = MakeMarkers(Vector());
    object.normals[0] = 0.1f;
    object.transform.Translate(0.1f, 0.2f, 0.3f);
    object.ApplyTransform();
    EXPECT_EQ(object.normals[0], 0.1f);
    EXPECT_EQ(object.vertices[0], 0.1f);
}

TEST(Motion, AnObjectWithoutVerticesIsSafe) {
    Object object;
    object.ResizeVertices(0);
    object.transform.Rotate(1, 0, 0, 1);
    object.ApplyTransform();
    Matrix orientation;
    object.GetOrientationMatrix(orientation);
    Vector vertex(1, 1, 1);
    object.GetVertex(vertex, 0);
    EXPECT_TRUE(vertex.IsZero());
    object.SetVertex(vertex, 3);
}

TEST(Motion, ATrackCyclesInOneFrameMoreThanItsKeys) {
    Object object = MakeMarkers(Vector());
    AddTrack(object, 3, Vector(0, 0, 1), 0.0f, Vector());
    std::vector<float> heights;
    for (int frame = 0; frame < 6; frame++) {
        object.activeKeyTrack = 0;
        object.AdvanceKeyTrack(nullptr);
        EXPECT_EQ(object.activeKeyTrack, -1);
        object.ApplyTransform();
        heights.push_back(Centre(object).z);
    }
    EXPECT_EQ(heights, (std::vector<float>{1, 2, 3, 0, 1, 2}));
}

TEST(Motion, RewindingUndoesWhatWasPlayed) {
    Object object = MakeMarkers(Vector(3, 4, 5));
    AddTrack(object, 10, Vector(), 0.1f, Vector(1, 0, 0));
    for (int frame = 0; frame < 4; frame++) {
        object.activeKeyTrack = 0;
        object.AdvanceKeyTrack(nullptr);
        object.ApplyTransform();
    }
    Vector yMarker;
    object.GetVertex(yMarker, 2);
    ExpectNear(yMarker, Vector(3, 4 + std::cos(0.4f), 5 - std::sin(0.4f)));
    object.activeKeyTrack = 0;
    object.RewindKeyTrack(nullptr);
    object.ApplyTransform();
    object.GetVertex(yMarker, 2);
    ExpectNear(yMarker, Vector(3, 5, 5));
    EXPECT_EQ(object.keyTracks[0].currentKey, 0);
}

TEST(Motion, KeysRunAlongTheParentsAxes) {
    Object parent = MakeMarkers(Vector(7, 7, 7));
    Object member = MakeMarkers(Vector());
    AddTrack(member, 10, Vector(1, 0, 0), 0.0f, Vector());
    member.activeKeyTrack = 0;
    member.AdvanceKeyTrack(&parent);
    member.ApplyTransform();
    ExpectNear(Centre(member), Vector(1, 0, 0));

    parent.transform.Rotate(quarterTurn, 0, 0, 1);
    parent.ApplyTransform();
    member.activeKeyTrack = 0;
    member.AdvanceKeyTrack(&parent);
    member.ApplyTransform();
    ExpectNear(Centre(member), Vector(1, -1, 0));
    // Both keys are undone along the parent's axes of now.
    member.activeKeyTrack = 0;
    member.RewindKeyTrack(&parent);
    member.ApplyTransform();
    ExpectNear(Centre(member), Vector(1, 1, 0));
}

TEST(Motion, RequestsThatNameNoTrackAreDropped) {
    Object object = MakeMarkers(Vector());
    for (const int request : {0, 5, -7}) {
        object.activeKeyTrack = request;
        object.AdvanceKeyTrack(nullptr);
        EXPECT_EQ(object.activeKeyTrack, -1);
        object.activeKeyTrack = request;
        object.RewindKeyTrack(nullptr);
        EXPECT_EQ(object.activeKeyTrack, -1);
    }
    AddTrack(object, 0, Vector(), 0.0f, Vector());
    object.activeKeyTrack = 0;
    object.AdvanceKeyTrack(nullptr);  // exhausted from the start
    EXPECT_TRUE(object.transform.IsIdentity());
}

}  // namespace
