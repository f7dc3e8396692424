#include "scene/object.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

/// Shows all numbers of an object, as pointers and counts.
template <typename Visit>
void ForEachArray(Object& object, Visit visit) {
    for (float* values : {object.vertices.get(), object.colours.get(), object.normals.get()}) {
        visit(values, object.vertexValueCount);
    }
    visit(object.faces.get(), object.faceValueCount);
    visit(object.texVertices.get(), object.texVertexValueCount);
    visit(object.texFaces.get(), object.texFaceValueCount);
    visit(object.transform.m, 16);
    visit(object.attributes, attributeCount);
    visit(&object.radius, 1);
    for (std::int32_t* field :
         {&object.centreVertex, &object.xAxisVertex, &object.yAxisVertex, &object.zAxisVertex,
          &object.spareVertex, &object.textureIndex, &object.groupParent, &object.activeKeyTrack}) {
        visit(field, 1);
    }
    for (std::int32_t i = 0; i < object.keyTrackCount; i++) {
        KeyTrack& track = object.keyTracks[i];
        visit(&track.currentKey, 1);
        visit(track.keyAngles.get(), track.keyCount);
        for (const auto* vectors : {&track.keyTranslations, &track.keyAxes, &track.keyExtras}) {
            visit(&vectors->get()->x, 3 * track.keyCount);
        }
    }
}

std::vector<int> NumbersOf(Object& object) {
    std::vector<int> numbers;
    ForEachArray(object,
                 [&](auto* values, int count) { numbers.insert(numbers.end(), values, values + count); });
    return numbers;
}

/// Two vertices, one triangle and two tracks of two keys, counted through from 1 on.
Object MakeCountedObject() {
    Object object;
    object.ResizeVertices(2);
    object.ResizeFaces(1);
    object.ResizeTexVertices(1);
    object.ResizeTexFaces(1);
    object.ResizeKeyTracks(2);
    object.keyTracks[0].Resize(2);
    object.keyTracks[1].Resize(2);
    int number = 1;
    ForEachArray(
        object, [&](auto* values, int count) { std::generate_n(values, count, [&] { return number++; }); });
    object.name = "Counted";
    object.MakeCollider();
    object.collider->recursionDepth = 4;
    object.MakePhysics();
    object.physics->friction = 0.25f;
    return object;
}

TEST(Object, DefaultsAreTenVerticesAndTenDegenerateTriangles) {
    Object object;
    object.ResizeVertices(11);
    EXPECT_EQ(std::count(&object.vertices[0], &object.vertices[33], 0.0f), 33);
    EXPECT_EQ(std::count(&object.colours[0], &object.colours[33], 1.0f), 33);
    EXPECT_EQ(std::count(&object.normals[0], &object.normals[30], 1.0f), 30);
    EXPECT_EQ(std::count(&object.normals[30], &object.normals[33], 0.0f), 3)
        << "of vertices that come later";
    EXPECT_EQ(std::count(&object.faces[0], &object.faces[30], 0), 30);
    EXPECT_EQ(object.faceValueCount, 30);
    EXPECT_EQ(std::count(object.attributes, object.attributes + attributeCount, -1), 10);
    EXPECT_EQ(KeyTrack().keyCount, 100);
}

TEST(Object, ACopyHasEverythingAndSharesNothing) {
    Object object = MakeCountedObject();
    const std::vector<int> numbers = NumbersOf(object);
    Object copy;
    object.CopyTo(copy);
    ForEachArray(object, [](auto* values, int count) { std::fill_n(values, count, 0); });
    EXPECT_EQ(NumbersOf(copy), numbers);
    EXPECT_EQ(copy.name, "Counted");
    EXPECT_EQ(copy.collider->recursionDepth, 4);
    EXPECT_EQ(copy.physics->friction, 0.25f);

    const Object plain;
    plain.CopyTo(object);
    EXPECT_EQ(object.vertexValueCount, 30);
    EXPECT_TRUE(!object.texVertices && !object.texFaces && !object.keyTracks);
    EXPECT_TRUE(object.collider && object.physics) << "what the source doesn't have stays";
}

TEST(Object, ResizesKeepWhatFitsAndRecordsAreMadeAfresh) {
    Object object = MakeCountedObject();
    const std::vector<int> numbers = NumbersOf(object);
    object.ResizeVertices(3);
    object.ResizeVertices(2);
    object.ResizeKeyTracks(3);
    object.keyTracks[1].Resize(5);
    EXPECT_TRUE(object.keyTracks[1].keyExtras[4].IsZero());
    object.keyTracks[1].Resize(2);
    EXPECT_EQ(object.keyTracks[2].keyCount, 100);
    object.ResizeKeyTracks(2);
    EXPECT_EQ(NumbersOf(object), numbers);
    object.MakePhysics();
    object.MakeCollider();
    EXPECT_EQ(object.physics->friction, 0.5f);
    EXPECT_EQ(object.collider->recursionDepth, 0);
}

}  // namespace
