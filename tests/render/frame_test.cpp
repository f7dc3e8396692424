#include <algorithm>
#include <cmath>

#include "gl_lights/gl_lights.h"
#include "gl_recorder.h"
#include "render_test.h"

// What the pictures show, in both paths: the parameter is whether the immediate one draws.
struct FrameTest : RenderTest, testing::WithParamInterface<bool> {
    void Draw() { RenderTest::Draw(GetParam()); }
};
INSTANTIATE_TEST_SUITE_P(Paths, FrameTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "Immediate" : "VertexArrays"; });

TEST_P(FrameTest, ViewportsShareOneDepthBufferAndTheRestShowsTheClearColour) {
    // A red wall 5 in front of one camera, a green one 10 in front of another that is far away.
    AddPlayer(Vector(0, -5, 0), Vector(0, 0, 0), {20, 20, 100, 100});
    AddPlayer(Vector(500, -10, 0), Vector(500, 0, 0), {70, 70, 100, 100});
    AddHeadlight();
    Paint(AddRectangle(-20, -20, 20, 20), 1, 0, 0);
    Paint(AddRectangle(480, -20, 520, 20), 0, 1, 0);
    Draw();
    EXPECT_EQ(Pixel(45, 45), red);
    EXPECT_EQ(Pixel(95, 95), red) << "nearer to its camera, though drawn first";
    EXPECT_EQ(Pixel(145, 145), green);
    EXPECT_EQ(Pixel(5, 150), clearColour);
    EXPECT_EQ(Pixel(150, 45), clearColour);
    EXPECT_EQ(Pixel(180, 180), clearColour);
}

TEST_P(FrameTest, WithoutPlayersWithACameraOnlyClears) {
    AddPlayer(Vector(0, -5, 0), Vector(0, 0, 0));
    AddRectangle(-5, -5, 5, 5);
    const std::array<std::int32_t, 3> broken[] = {{-1, 0, 1}, {2, 0, 1},  {0, -1, 1},
                                                  {0, 10, 1}, {0, 0, -1}, {0, 0, 10}};
    for (const auto& [object, eye, look] : broken) {
        Player& player = scene.players[0];
        player.cameraObject = object;
        player.eyeVertex = eye;
        player.lookVertex = look;
        GlRecorder recorder;
        Draw();
        EXPECT_EQ(recorder.calls, std::vector{Call("glClear", 0x4100)}) << object << eye << look;
    }
}

struct BothPathsTest : RenderTest {};

TEST_F(BothPathsTest, GiveTheSamePicture) {
    AddPlayer(Vector(0, -eyeDistance, 2), Vector(0, 0, 0), {0, 0, 120, 200});
    AddPlayer(Vector(12, -9, 7), Vector(0, 0, 0), {90, 50, 110, 150});
    AddHeadlight();
    scene.AddLights(1);
    Activate(scene.lights[1]);
    const float lamp[4] = {3.0f, -2.0f, 4.0f, 1.0f};
    SetPosition(scene.lights[1], lamp);
    const std::int32_t texture =
        AddTexture({{{255, 0, 0, 255}, {0, 255, 0, 0}, {0, 0, 255, 90}, {80, 80, 80, 255}}});
    for (int i = 0; i < 12; i++) {
        const auto x = static_cast<float>(i - 6);
        Object& object = AddRectangle(x, x / 2, x + 1.5f, x / 2 + 3, std::sin(x));
        object.colours[i] = 0.3f;
        object.textureIndex = i % 3 == 0 ? texture : -1;
        if (i % 3 == 1) {
            object.texVertices = nullptr;
        }
        AddSprite(Vector(-x, x / 3, x / 4), 2, i % 2, i % 4 == 0 ? texture : -1);
    }
    // The last one leaves the same current colour and normal behind as the path that sends none.
    Object& last = AddRectangle(-9, -9, 9, -8);
    for (int i = 0; i < 4; i++) {
        std::ranges::copy(std::array{0.0f, 0.0f, 1.0f}, &last.normals[3 * i]);
    }
    Draw(true);
    Draw(true);
    const std::vector<std::uint8_t> immediate = Picture();
    Draw(false);
    EXPECT_EQ(Picture(), immediate);
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    EXPECT_GT(std::ranges::count(immediate, 255), 10000) << "something was drawn";
}
