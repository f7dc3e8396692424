#include <algorithm>
#include <cmath>

#include "gl_recorder.h"
#include "render_test.h"
#include "support/temporary_folder.h"

// What the pictures show, in both paths: the parameter is whether the immediate one draws.
struct FrameTest : RenderTest, testing::WithParamInterface<bool> {
    void Draw() { RenderTest::Draw(GetParam()); }
};
INSTANTIATE_TEST_SUITE_P(Paths, FrameTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "Immediate" : "VertexArrays"; });

TEST_P(FrameTest, VertexColoursAreLitAndTheAmbientTermAloneIsAFifth) {
    AddStandardPlayer();
    Paint(AddRectangle(-5, -5, 5, 5), 1.0f, 0.5f, 0.0f);
    Draw();
    EXPECT_EQ(Pixel(100, 100), (Colour{51, 26, 0}));
    EXPECT_EQ(Pixel(145, 145), (Colour{51, 26, 0}));
    EXPECT_EQ(Pixel(155, 100), clearColour);

    AddHeadlight();
    Draw();
    EXPECT_EQ(Pixel(100, 100), (Colour{255, 153, 0})) << "ambient 0.2 and diffuse 1, cut at 1";
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

TEST_P(FrameTest, TextureIsMultipliedByTheLitColourAndOnlyOnItsObject) {
    AddStandardPlayer();
    AddHeadlight();
    Object& textured = AddRectangle(-8, -4, 0, 4);
    textured.textureIndex =
        AddTexture({{{255, 0, 0, 255}, {0, 255, 0, 255}, {0, 0, 255, 255}, {80, 80, 80, 255}}});
    AddRectangle(2, -4, 8, 4);
    Draw();
    EXPECT_EQ(Pixel(40, 80), red);
    EXPECT_EQ(Pixel(80, 80), green);
    EXPECT_EQ(Pixel(40, 120), (Colour{0, 0, 255}));
    EXPECT_EQ(Pixel(80, 120), (Colour{80, 80, 80}));
    EXPECT_EQ(Pixel(150, 80), white);
}

TEST_P(FrameTest, TextureIndexOutsideTheArrayCountsAsNone) {
    AddStandardPlayer();
    AddHeadlight();
    AddPlainTexture({100, 0, 0, 255});
    AddRectangle(-8, -4, 0, 4).textureIndex = 1;
    AddRectangle(0, -4, 8, 4).textureIndex = -2;
    AddSprite(Vector(0, 0, 6), 2, 0, 7);
    Draw();
    EXPECT_EQ(Pixel(60, 100), white);
    EXPECT_EQ(Pixel(140, 100), white);
    EXPECT_EQ(Pixel(100, 170), (Colour{151, 51, 255})) << "the texture that was bound anyway";
}

TEST_P(FrameTest, BackFacesAndSurplusIndicesDrawNothing) {
    AddStandardPlayer();
    Object& object = AddRectangle(-5, -5, 5, 5);
    std::swap(object.faces[1], object.faces[2]);
    AddRectangle(-9, -9, 9, 9).ResizeFaces(0);
    Draw();
    EXPECT_EQ(Pixel(130, 80), clearColour) << "the triangle that was turned round";
    EXPECT_EQ(Pixel(80, 130), (Colour{51, 51, 51})) << "the other one";

    std::swap(scene.objects[1].faces[1], scene.objects[1].faces[2]);
    scene.objects[1].faceValueCount = 5;
    Draw();
    EXPECT_EQ(Pixel(130, 80), (Colour{51, 51, 51}));
    EXPECT_EQ(Pixel(80, 130), clearColour);
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

// Both sides of the world, each seen by a player of its own: only the one that faces the light is lit.
TEST_P(FrameTest, LightStaysInTheWorldInEveryViewport) {
    AddPlayer(Vector(0, -eyeDistance, 0), Vector(0, 0, 0), {0, 0, 100, 200});
    AddPlayer(Vector(0, eyeDistance, 0), Vector(0, 0, 0), {100, 0, 100, 200});
    AddRectangle(-8, -8, 8, 8, -0.5f);
    Object& far = AddRectangle(8, -8, -8, 8, 0.5f);
    for (int i = 0; i < 4; i++) {
        far.normals[3 * i + 1] = 1.0f;
    }
    AddHeadlight();
    Draw();
    EXPECT_EQ(Pixel(50, 100), white);
    EXPECT_EQ(Pixel(150, 100), (Colour{51, 51, 51}));

    const float behind[4] = {0.0f, 1.0f, 0.0f, 0.0f};
    scene.lights[0].SetPosition(behind);
    Draw();
    EXPECT_EQ(Pixel(50, 100), (Colour{51, 51, 51}));
    EXPECT_EQ(Pixel(150, 100), white);
}

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
    GlRecorder empty;
    Draw();
    EXPECT_EQ(empty.calls, std::vector{Call("glClear", 0x4100)});

    AddPlayer(Vector(0, -5, 0), Vector(0, 0, 0));
    AddRectangle(-5, -5, 5, 5);
    Player& player = scene.players[0];
    const std::int32_t broken[][3] = {{-1, 0, 1}, {2, 0, 1},  {0, -1, 1},
                                      {0, 10, 1}, {0, 0, -1}, {0, 0, 10}};
    for (const auto& [object, eye, look] : broken) {
        player.cameraObject = object;
        player.eyeVertex = eye;
        player.lookVertex = look;
        GlRecorder recorder;
        Draw();
        EXPECT_EQ(recorder.calls, std::vector{Call("glClear", 0x4100)}) << object << eye << look;
    }
    AddPlayer(Vector(0, -eyeDistance, 0), Vector(0, 0, 0));
    Draw();
    EXPECT_EQ(Pixel(100, 100), (Colour{51, 51, 51})) << "the next player's view";
}

TEST_P(FrameTest, LightsBeyondTheLimitChangeNothing) {
    AddStandardPlayer();
    AddRectangle(-5, -5, 5, 5);
    GLint limit = 0;
    glGetIntegerv(GL_MAX_LIGHTS, &limit);
    const float dark[4] = {};
    const float behind[4] = {0.0f, 1.0f, 0.0f, 0.0f};
    for (GLint i = 0; i < limit; i++) {
        AddHeadlight();
        scene.lights[i].SetDiffuse(dark);
        EXPECT_EQ(scene.lights[i].glLight, GL_LIGHT0 + i);
    }
    Draw();
    ASSERT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    const std::vector<std::uint8_t> before = Picture();

    for (int i = 0; i < 3; i++) {
        AddHeadlight();
        scene.lights[limit + i].SetPosition(behind);
        EXPECT_EQ(scene.lights[limit + i].glLight, -1);
        EXPECT_EQ(scene.lights[limit + i].position[1], 1.0f);
    }
    Draw();
    EXPECT_EQ(Picture(), before);
    // OpenGL refuses the lights that it doesn't have, and that is all it has to complain about.
    while (const GLenum error = glGetError()) {
        EXPECT_EQ(error, GLenum{GL_INVALID_ENUM});
    }
}

TEST_P(FrameTest, EndsOnTheScreen) {
    AddStandardPlayer();
    AddHeadlight();
    Paint(AddRectangle(-5, -5, 5, 5), 1, 0, 0);
    const TemporaryFolder folder;
    Show(GetParam());
    // The window stands in the screen's upper left corner; the server draws in its own time.
    EXPECT_TRUE(WaitUntil([] {
        Display().SaveScreenshot("screen.png");
        const char* const pixels = "convert screen.png -format '%[hex:p{100,100}] %[hex:p{20,100}]' info:";
        return RunCommand(pixels).output == "FF0000 3333FF";
    }));
}

struct BothPathsTest : RenderTest {};

TEST_F(BothPathsTest, GiveTheSamePicture) {
    AddPlayer(Vector(0, -eyeDistance, 2), Vector(0, 0, 0), {0, 0, 120, 200});
    AddPlayer(Vector(12, -9, 7), Vector(0, 0, 0), {90, 50, 110, 150});
    AddHeadlight();
    scene.AddLights(1);
    scene.lights[1].Activate();
    const float lamp[4] = {3.0f, -2.0f, 4.0f, 1.0f};
    scene.lights[1].SetPosition(lamp);
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
