#include "scene/object.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

std::vector<float> Values(const std::unique_ptr<float[]>& array, std::int32_t count) {
    return std::vector<float>(array.get(), array.get() + count);
}

TEST(Object, DefaultsAreTenVerticesAndTenDegenerateTriangles) {
    const Object object;
    EXPECT_EQ(Values(object.vertices, object.vertexValueCount), std::vector<float>(30, 0.0f));
    EXPECT_EQ(Values(object.colours, 30), std::vector<float>(30, 1.0f));
    EXPECT_EQ(Values(object.normals, 30), std::vector<float>(30, 1.0f));
    EXPECT_EQ(object.faceValueCount, 30);
    EXPECT_EQ(std::count(object.faces.get(), object.faces.get() + 30, 0), 30);
}

TEST(Object, ResizingVerticesKeepsTheFirstOfAllThreeArrays) {
    Object object;
    object.vertices[3] = 5.0f;
    object.colours[4] = 0.25f;
    object.ResizeVertices(2);
    object.ResizeVertices(3);
    EXPECT_EQ(Values(object.vertices, 9), (std::vector<float>{0, 0, 0, 5, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Values(object.colours, 9), (std::vector<float>{1, 1, 1, 1, 0.25f, 1, 1, 1, 1}));
    EXPECT_EQ(Values(object.normals, 9), (std::vector<float>{1, 1, 1, 1, 1, 1, 0, 0, 0}));
}

TEST(Object, KeyTracksKeepTheirKeysAndTheirPlaceWhenResized) {
    Object object;
    object.ResizeKeyTracks(2);
    KeyTrack& track = object.keyTracks[1];
    EXPECT_EQ(track.keyCount, 100);
    track.Resize(2);
    track.keyAngles[1] = 0.5f;
    track.keyAxes[1] = Vector(0, 0, 1);
    track.currentKey = 2;
    track.Resize(4);
    EXPECT_EQ(track.keyAngles[1], 0.5f);
    EXPECT_TRUE(track.keyAxes[3].IsZero());
    object.ResizeKeyTracks(3);
    EXPECT_EQ(object.keyTracks[1].keyCount, 4);
    EXPECT_EQ(object.keyTracks[1].currentKey, 2);
    EXPECT_EQ(object.keyTracks[1].keyAxes[1].z, 1.0f);
    EXPECT_EQ(object.keyTracks[2].keyCount, 100);
}

TEST(Object, RecordsAreMadeAfresh) {
    Object object;
    object.MakePhysics();
    object.physics->gravity = 9.0f;
    object.MakePhysics();
    EXPECT_EQ(object.physics->gravity, 1.0f);
}

TEST(Object, ACopyHasEverythingAndSharesNothing) {
    Object object;
    object.ResizeVertices(2);
    object.ResizeFaces(1);
    object.faces[2] = 1;
    object.ResizeTexVertices(1);
    object.texVertices[2] = 0.5f;
    object.ResizeKeyTracks(1);
    object.keyTracks[0].Resize(1);
    object.keyTracks[0].keyTranslations[0] = Vector(1, 2, 3);
    object.MakeCollider();
    object.collider->recursionDepth = 4;
    object.name = "Original";
    object.spareVertex = 1;
    object.attributes[9] = 12;

    Object copy;
    object.CopyTo(copy);
    object.vertices[0] = 99.0f;
    object.keyTracks[0].keyTranslations[0].x = 99.0f;
    EXPECT_EQ(copy.vertexValueCount, 6);
    EXPECT_EQ(copy.vertices[0], 0.0f);
    EXPECT_EQ(copy.faces[2], 1);
    EXPECT_EQ(copy.texVertices[2], 0.5f);
    EXPECT_EQ(copy.texFaces, nullptr);
    EXPECT_EQ(copy.keyTracks[0].keyTranslations[0].x, 1.0f);
    EXPECT_EQ(copy.collider->recursionDepth, 4);
    EXPECT_EQ(copy.physics, nullptr);
    EXPECT_EQ(copy.name, "Original");
    EXPECT_EQ(copy.spareVertex, 1);
    EXPECT_EQ(copy.attributes[9], 12);
}

}  // namespace
