#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "scene/object.h"

namespace {

TEST(Object, CopiedOntoItselfStaysAsItIs) {
    Object body;
    body.MakeCollider();
    body.collider->recursionDepth = 4;
    body.MakePhysics();
    body.physics->gravity = 9.0f;
    body.CopyTo(body);
    EXPECT_EQ(body.collider->recursionDepth, 4);
    EXPECT_EQ(body.physics->gravity, 9.0f);
}

TEST(ReindexByTexFaces, DoesNothingWithListsThatDoNotFit) {
    const auto reindexed = [](auto change) {
        Object object;  // ten vertices
        object.ResizeFaces(1);
        object.ResizeTexVertices(3);
        object.ResizeTexFaces(1);
        std::iota(object.faces.get(), object.faces.get() + 3, 0);
        std::copy_n(object.faces.get(), 3, object.texFaces.get());
        change(object);
        object.ReindexByTexFaces();
        return object.vertexValueCount == 3 * (3 + 4);
    };
    EXPECT_TRUE(reindexed([](Object&) {}));
    EXPECT_TRUE(reindexed([](Object& object) { object.faces[1] = 6; })) << "the last spare entry";
    EXPECT_FALSE(reindexed([](Object& object) { object.faces[1] = 7; }));
    EXPECT_FALSE(reindexed([](Object& object) { object.texFaces[1] = 3; }));
    EXPECT_FALSE(reindexed([](Object& object) { object.texFaces[1] = -1; }));
    EXPECT_FALSE(reindexed([](Object& object) { object.ResizeFaces(2); }));
    EXPECT_FALSE(reindexed([](Object& object) { object.ResizeVertices(2); }));
    EXPECT_FALSE(reindexed([](Object& object) { object.texFaces = nullptr; }));
}

}  // namespace
