#include <SDL.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>

#include "engine/engine.h"
#include "engine/singletons.h"
#include "platform/video.h"
#include "scene/scene.h"
#include "scene_writer/attribute_text.h"
#include "scene_writer/bytes.h"
#include "scene_writer/scene_file.h"
#include "scene_writer/shapes.h"
#include "services/log.h"
#include "simulation/player_control.h"
#include "support/loaded_libraries.h"
#include "support/temporary_folder.h"
#include "support/virtual_display.h"

// Players walked, turned and tilted by real devices in a real window: the frame loop's pump, input and
// world step, frame by frame.

namespace {

constexpr float floorSide = 200.0f;

/// A floor, a ramp and a wall; a hero of the usual size who stands in the middle, looks along +y, and has
/// a camera at his head.
void WriteWorld() {
    SceneObject floor = MakeGrid("Floor", {-floorSide / 2, -floorSide / 2, 0}, {floorSide, 0, 0},
                                 {0, floorSide, 0}, 10, 10);
    AddMarkers(floor, {0, 0, 0});
    SceneObject wall = MakeBox("Wall", {-20, 4, 0}, {20, 8, 20});
    AddMarkers(wall, {0, 6, 10});
    // Rises by 10 over 40 to the south.
    SceneObject ramp = MakeGrid("Ramp", {20, -50, 10}, {0, 40, -10}, {-40, 0, 0}, 4, 4);
    AddMarkers(ramp, {0, -30, 5});
    SceneObject hero = MakeBox("Hero", {-1, -1, 1}, {1, 1, 9});
    AddMarkers(hero, {0, 0, 5.05f}, {-1, 0, 0}, {0, -1, 0});
    SceneObject camera = MakeCamera("Camera", {0, 0, 8}, {0, 1, 8});
    AddMarkers(camera, {0, 0, 8}, {-1, 0, 0}, {0, -1, 0});
    WriteSceneFile("world.bin", {floor, wall, ramp, hero, camera});
    WriteBytes(
        "world.atr",
        AttributeBlock("Hero", {"*PLAYEROBJECT 0", "*GROUPPARENT 0", "*COLLIDER", "*PHYSICS 1 0 0.2"}) +
            AttributeBlock("Camera", {"*CAMERAOBJECT 0 0 1", "*GROUPMEMBER 0", "*NOCOLLIDER"}));
}

struct DevicesTest : testing::TestWithParam<WindowManager> {
    VirtualDisplay display{GetParam()};
    TemporaryFolder folder;
    std::unique_ptr<Engine> engine;
    Scene scene;
    PlayerControl control;
    std::unique_ptr<Log> log;

    void SetUp() override {
        log = std::make_unique<Log>();
        engine = std::make_unique<Engine>();
        theEngine = engine.get();
        theScene = &scene;
        thePlayerControl = &control;
        engine->SetLog(log.get());
        scene.SetLog(log.get());
        WriteWorld();
        scene.AddPlayers(1);
        ASSERT_TRUE(engine->CreateMainWindow(nullptr, nullptr, nullptr, SW_SHOW));
        ASSERT_TRUE(scene.LoadMesh("world.bin"));
        ASSERT_TRUE(FramesUntil([this] { return GetActiveWindow() == engine->window; }));
        Frames(20);  // settles on the floor, with the cursor in the centre
    }
    void TearDown() override {
        const HWND window = engine->window;
        theEngine = nullptr;  // from here on the default handling
        DestroyWindow(window);
        UnregisterClassA(engine->title.c_str(), nullptr);
        KeepLoadedLibraries();
        StopVideo();  // before the display goes
        engine.reset();
        theScene = nullptr;
        thePlayerControl = nullptr;
    }

    void Frame() {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) != FALSE) {
            GetMessageA(&message, nullptr, 0, 0);
            DispatchMessageA(&message);
        }
        engine->SampleInput();
        scene.StepWorld();
    }
    void Frames(int count) {
        while (count-- > 0)
            Frame();
    }
    bool FramesUntil(const std::function<bool()>& condition) {
        return WaitUntil([&] {
            Frame();
            return condition();
        });
    }

    Object& Hero() { return scene.objects[3]; }
    Object& Camera() { return scene.objects[4]; }
    static Vector Vertex(const Object& object, std::int32_t index) {
        Vector vertex;
        object.GetVertex(vertex, index);
        return vertex;
    }
    Vector Position() { return Vertex(Hero(), Hero().centreVertex); }
    /// Where the hero looks, in radians: 0 along +y, rising to the right.
    float Heading() {
        const Vector back = Vertex(Hero(), Hero().yAxisVertex) - Position();
        return std::atan2(-back.x, -back.y);
    }
    /// The z of the direction of view: 0 level, above 0 upwards.
    float Tilt() { return Vertex(Camera(), 1).z - Vertex(Camera(), 0).z; }
    void Press(const std::string& key) { display.Xdotool("keydown " + key); }
    void Release(const std::string& key, int code) {
        display.Xdotool("keyup " + key);
        ASSERT_TRUE(FramesUntil([&] { return engine->keyState[code] == 0; }));
    }
};

TEST_P(DevicesTest, KeysWalkTurnAndTilt) {
    const Vector start = Position();
    EXPECT_NEAR(start.z, 5.05f, 0.1f);
    Press("Down");
    ASSERT_TRUE(FramesUntil([&] { return Position().y < start.y - 2.0f; }));
    Release("Down", 0x28);
    Frames(60);
    const Vector stopped = Position();
    Frames(10);
    EXPECT_LT(Position().Distance(stopped), 0.01f);  // friction has brought him to rest

    Press("Up");
    ASSERT_TRUE(FramesUntil([&] { return Position().y > stopped.y + 1.0f; }));
    EXPECT_NEAR(Position().x, start.x, 0.1f);
    Release("Up", 0x26);

    Press("Right");
    ASSERT_TRUE(FramesUntil([&] { return Heading() > 0.4f; }));
    Release("Right", 0x27);
    const float right = Heading();
    Press("Left");
    ASSERT_TRUE(FramesUntil([&] { return Heading() < right - 0.3f; }));
    Release("Left", 0x25);

    const float level = Tilt();
    Press("Prior");
    ASSERT_TRUE(FramesUntil([&] { return Tilt() > level + 0.3f; }));
    Release("Prior", 0x21);
    Press("Next");
    ASSERT_TRUE(FramesUntil([&] { return Tilt() < level - 0.3f; }));
    Frames(200);  // held on, it stops at the limit, upright still
    EXPECT_GE(Vertex(Camera(), Camera().zAxisVertex).z, Vertex(Camera(), Camera().centreVertex).z);
    EXPECT_NEAR(Vertex(Camera(), 0).Distance(Position()), 2.95f, 0.05f);  // the camera came along
    Release("Next", 0x22);
}

TEST_P(DevicesTest, TheWallStopsAndTheRampLifts) {
    Press("Up");
    ASSERT_TRUE(FramesUntil([&] { return engine->keyState[0x26] == 1; }));
    Frames(200);
    // The wall begins at y 4; half the hero's width and a gap of 0.01 ellipsoid units stay between.
    EXPECT_NEAR(Position().y, 2.0f, 0.1f);
    Release("Up", 0x26);
    Press("Down");
    // Up the ramp to four tenths of its height; the body's round foot stands a little higher on a slope.
    ASSERT_TRUE(FramesUntil([&] { return Position().y < -26.0f; }));
    EXPECT_GT(Position().z, 5.05f + 4.0f);
    Release("Down", 0x28);
}

TEST_P(DevicesTest, TheMouseTurnsByItsWayFromTheCentre) {
    scene.players[0].controller = 1;
    engine->mouseSensitivity = 0.01f;
    const float heading = Heading();
    Frames(5);
    EXPECT_NEAR(Heading(), heading, 1e-5f);  // at rest nothing drifts

    display.Xdotool("mousemove_relative 20 0");
    ASSERT_TRUE(FramesUntil([&] { return Heading() > heading + 0.1f; }));
    Frames(5);
    EXPECT_NEAR(Heading(), heading + 0.2f, 0.011f);  // 20 pixels of 0.01, and the cursor is back
    POINT cursor;
    GetCursorPos(&cursor);
    EXPECT_EQ(cursor.x, engine->mouseCentreX);
    EXPECT_EQ(cursor.y, engine->mouseCentreY);

    const float level = Tilt();
    display.Xdotool("mousemove_relative 0 30");
    ASSERT_TRUE(FramesUntil([&] { return Tilt() < level - 0.2f; }));

    const Vector start = Position();
    display.Xdotool("mousedown 2");
    ASSERT_TRUE(FramesUntil([&] { return Position().Distance(start) > 1.0f; }));
    EXPECT_LT(Position().y, start.y);  // backward
    display.Xdotool("mouseup 2 mousedown 1");
    ASSERT_TRUE(FramesUntil([&] { return Position().Distance(start) < 0.3f; }));
    display.Xdotool("mouseup 1");
}

TEST_P(DevicesTest, AJoystickTurnsAsLongAsItIsDeflected) {
    scene.players[0].controller = 2;
    const int index = SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, 2, 4, 0);
    ASSERT_GE(index, 0) << SDL_GetError();
    SDL_Joystick* joystick = SDL_JoystickOpen(index);
    JOYINFOEX state;
    ASSERT_TRUE(FramesUntil([&] { return joyGetPosEx(JOYSTICKID1, &state) == JOYERR_NOERROR; }));
    EXPECT_EQ(state.dwXpos, engine->joystickCentreX);
    EXPECT_EQ(state.dwYpos, engine->joystickCentreY);
    const float heading = Heading();
    Frames(50);
    EXPECT_EQ(Heading(), heading);

    SDL_JoystickSetVirtualAxis(joystick, 0, SDL_JOYSTICK_AXIS_MAX);
    ASSERT_TRUE(FramesUntil([&] { return Heading() > heading + 0.5f; }));
    SDL_JoystickSetVirtualAxis(joystick, 0, 0);
    SDL_JoystickSetVirtualButton(joystick, 1, SDL_PRESSED);
    Frames(2);
    const Vector start = Position();
    ASSERT_TRUE(FramesUntil([&] { return Position().y < start.y - 1.0f; }));
    SDL_JoystickClose(joystick);
    SDL_JoystickDetachVirtual(index);
    // Pulled out in play, it turns and moves nobody.
    Frames(60);
    const Vector stopped = Position();
    Frames(20);
    EXPECT_LT(Position().Distance(stopped), 0.01f);
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, DevicesTest,
                         testing::Values(WindowManager::None, WindowManager::Openbox),
                         [](const auto& manager) {
                             return manager.param == WindowManager::None ? "NoManager" : "Openbox";
                         });

}  // namespace
