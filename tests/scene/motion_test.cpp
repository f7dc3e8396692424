#include <cmath>

#include "simulation/test_world.h"

namespace {

/// Plays the track of the object, or rewinds it.
void Play(Object& object, const Object* parent = nullptr, bool rewind = false) {
    object.activeKeyTrack = 0;
    if (rewind) {
        object.RewindKeyTrack(parent);
    } else {
        object.AdvanceKeyTrack(parent);
    }
    EXPECT_EQ(object.activeKeyTrack, -1);
    object.ApplyTransform();
}

TEST(Motion, RotationsTurnAboutTheCentreAndTranslationsRunAlongTheWorld) {
    Object object;
    MakeMarkers(object, Vector(10, 0, 0));
    const Vector normal(0.25f, 0.5f, 0.75f);
    const auto normalIs = [&object] {
        return Vector(object.normals[0], object.normals[1], object.normals[2]);
    };
    std::copy_n(&normal.x, 3, object.normals.get());
    object.transform.Translate(0, 0, 5);
    object.ApplyTransform();
    ExpectNear(normalIs(), normal, 0.0f);
    object.transform.Rotate(quarterTurn, 0, 0, 1);
    object.transform.Translate(0, 0, -5);
    object.ApplyTransform();
    ExpectNear(CentreOf(object), Vector(10, 0, 0));
    ExpectNear(VertexOf(object, 1), Vector(10, -1, 0));
    ExpectNear(normalIs(), Vector(0.5f, -0.25f, 0.75f));
    EXPECT_TRUE(object.transform.IsIdentity());
    // Its own axes, turned into the world's.
    object.transform.Rotate(quarterTurn, 1, 0, 0);
    object.ApplyTransform();
    ExpectNear(normalIs(), Vector(0.5f, 0.75f, 0.25f));
    Matrix orientation;
    object.GetOrientationMatrix(orientation);
    Vector axes(1, 2, 3);
    orientation.TransformPoint(axes);
    ExpectNear(axes, Vector(2, 3, 1));

    // Without vertices nothing moves, and nothing happens.
    object.ResizeVertices(0);
    object.transform.Rotate(1, 0, 0, 1);
    object.ApplyTransform();
    object.SetVertex(axes, 3);
    object.SetVertex(axes, -1);
    EXPECT_TRUE(VertexOf(object, 0).IsZero() && VertexOf(object, -1).IsZero());
}

TEST(Motion, ATrackCyclesInOneFrameMoreThanItsKeys) {
    Object object;
    MakeMarkers(object, Vector());
    AddKeyTracks(object, 1, 3, Vector(0, 0, 1));
    for (const float z : {1.0f, 2.0f, 3.0f, 0.0f, 1.0f, 2.0f}) {
        Play(object);
        ExpectNear(CentreOf(object), Vector(0, 0, z));
    }
    object.keyTracks[0].Resize(1);  // shorter than what was played: only the key that is left is undone
    Play(object, nullptr, true);
    ExpectNear(CentreOf(object), Vector(0, 0, 1));
}

TEST(Motion, RewindingUndoesWhatWasPlayed) {
    Object object;
    MakeMarkers(object, Vector(3, 4, 5));
    AddKeyTracks(object, 1, 10, Vector(1, 0, 0), 0.1f, Vector(1, 0, 0));
    for (int frame = 0; frame < 4; frame++) {
        Play(object);
    }
    ExpectNear(VertexOf(object, 2), Vector(7, 4 + std::cos(0.4f), 5 - std::sin(0.4f)));
    Play(object, nullptr, true);
    ExpectNear(VertexOf(object, 2), Vector(3, 5, 5));
    EXPECT_EQ(object.keyTracks[0].currentKey, 0);
}

TEST(Motion, KeysRunAlongTheParentsAxes) {
    Object parent;
    Object member;
    MakeMarkers(parent, Vector(7, 7, 7));
    MakeMarkers(member, Vector());
    AddKeyTracks(member, 1, 10, Vector(1, 0, 0), quarterTurn, Vector(1, 0, 0));
    Play(member, &parent);
    ExpectNear(CentreOf(member), Vector(1, 0, 0));
    ExpectNear(VertexOf(member, 3), Vector(1, 1, 0));
    parent.transform.Rotate(quarterTurn, 0, 0, 1);
    parent.ApplyTransform();
    Play(member, &parent);
    ExpectNear(CentreOf(member), Vector(1, -1, 0));
    ExpectNear(VertexOf(member, 1), Vector(1, -1, -1));  // about the parent's X, which is -Y now
    // Both keys are undone along the parent's axes of now.
    Play(member, &parent, true);
    ExpectNear(CentreOf(member), Vector(1, 1, 0));
}

TEST(Motion, RequestsThatNameNoTrackAreDropped) {
    Object object;
    for (const std::int32_t request : {0, 1, -7}) {
        object.activeKeyTrack = request;
        object.AdvanceKeyTrack(nullptr);
        EXPECT_EQ(object.activeKeyTrack, -1);
        object.activeKeyTrack = request;
        object.RewindKeyTrack(nullptr);
        EXPECT_EQ(object.activeKeyTrack, -1);
        AddKeyTracks(object, 1, 0, Vector(1, 1, 1));  // exhausted from the start
    }
    EXPECT_TRUE(object.transform.IsIdentity());
}

}  // namespace
