#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>

#include "scene/scene.h"

// What the demo worlds promise a scene author who takes them as an example.

namespace {

Vector VertexOf(const Object& object, int vertex) {
    Vector place;
    object.GetVertex(place, vertex);
    return place;
}

/// The length of the cross product of two edges.
float TwiceTheArea(const Object& object, int face) {
    const Vector a = VertexOf(object, object.faces[face]);
    const Vector b = VertexOf(object, object.faces[face + 1]);
    const Vector c = VertexOf(object, object.faces[face + 2]);
    return (b - a).Cross(c - a).Length();
}

}  // namespace

class DemoWorldFiles : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        std::filesystem::current_path(std::filesystem::path(DEMO_FOLDER) / GetParam());
        scene.AddPlayers(4);
        ASSERT_TRUE(scene.LoadMesh("data\\courtyard.bin"));
    }
    void TearDown() override { std::filesystem::current_path(before); }

    std::filesystem::path before = std::filesystem::current_path();
    Scene scene;
};

TEST_P(DemoWorldFiles, KeepTheModellingRules) {
    for (int i = 0; i < scene.objectCount; i++) {
        const Object& object = scene.objects[i];
        SCOPED_TRACE(object.name);
        const Vector centre = VertexOf(object, object.centreVertex);
        const Vector x = VertexOf(object, object.xAxisVertex) - centre;
        const Vector y = VertexOf(object, object.yAxisVertex) - centre;
        const Vector z = VertexOf(object, object.zAxisVertex) - centre;
        EXPECT_NEAR(x.Length(), 1.0f, 1e-3f);
        EXPECT_NEAR((x.Cross(y) - z).Length(), 0.0f, 1e-3f) << "the axes are right-handed";
        for (int face = 0; face < object.faceValueCount; face += 3) {
            EXPECT_GT(TwiceTheArea(object, face), 1e-3f) << "a sliver, face " << face / 3;
        }
        const auto [darkest, brightest] =
            std::minmax_element(object.colours.get(), object.colours.get() + object.vertexValueCount);
        EXPECT_GE(*darkest, 0.0f);
        EXPECT_LE(*brightest, 1.0f);
    }
}

TEST_P(DemoWorldFiles, ShowTexturesOfEachKindAndLightsOfEachKind) {
    std::set<int> componentsOfTga;
    std::set<int> componentsOfSgi;
    for (int i = 0; i < scene.textureCount; i++) {
        const Texture& texture = scene.textures[i];
        EXPECT_GT(texture.width, 0) << texture.name;
        const bool isSgi = texture.name.find(".rgb") != std::string::npos;
        (isSgi ? componentsOfSgi : componentsOfTga).insert(texture.components);
    }
    EXPECT_EQ(componentsOfTga, (std::set<int>{3, 4}));
    EXPECT_EQ(componentsOfSgi, (std::set<int>{1, 3}));

    int suns = 0;
    int lamps = 0;
    int spots = 0;
    for (int i = 0; i < scene.lightCount; i++) {
        const Light& light = scene.lights[i];
        (light.position[3] == 0.0f ? suns : light.spotCutoff < 90.0f ? spots : lamps)++;
    }
    EXPECT_GE(suns, 1);
    EXPECT_EQ(lamps, 1);
    EXPECT_EQ(spots, 1);
}

INSTANTIATE_TEST_SUITE_P(Both, DemoWorldFiles, testing::Values("single", "split"),
                         [](const auto& world) { return std::string(world.param); });
