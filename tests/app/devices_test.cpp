#include <cmath>

#include "scene_writer/attribute_text.h"
#include "scene_writer/bytes.h"
#include "scene_writer/scene_file.h"
#include "scene_writer/shapes.h"
#include "support/other_window.h"
#include "support/running_engine.h"

// Players walked, turned and tilted by real devices in a real window, frame by frame.

namespace {

constexpr float floorSide = 200.0f;

/// A floor; a hero of the usual size who stands in the middle, looks along +y, and has
/// a camera at his head.
void WriteWorld() {
    engine::SceneObject floor = engine::MakeGrid("Floor", {-floorSide / 2, -floorSide / 2, 0},
                                                 {floorSide, 0, 0}, {0, floorSide, 0}, 10, 10);
    AddMarkers(floor, {0, 0, 0});
    engine::SceneObject hero = engine::MakeBox("Hero", {-1, -1, 1}, {1, 1, 9});
    AddMarkers(hero, {0, 0, 5.05f}, {-1, 0, 0}, {0, -1, 0});
    engine::SceneObject camera = engine::MakeCamera("Camera", {0, 0, 8}, {0, 1, 8});
    AddMarkers(camera, {0, 0, 8}, {-1, 0, 0}, {0, -1, 0});
    engine::WriteSceneFile("world.bin", {floor, hero, camera});
    engine::WriteBytes(
        "world.atr",
        engine::AttributeBlock("Hero",
                               {"*PLAYEROBJECT 0", "*GROUPPARENT 0", "*COLLIDER", "*PHYSICS 1 0 0.2"}) +
            engine::AttributeBlock("Camera", {"*CAMERAOBJECT 0 0 1", "*GROUPMEMBER 0", "*NOCOLLIDER"}));
}

struct Devices : testing::Test {
    RunningEngine running{WindowManager::Openbox};

    Devices() {
        WriteWorld();
        running.Start("*PLAYERCOUNT 1 *LOADMESH world.bin }");
        running.Frames(20);  // settles on the floor, with the cursor in the centre
    }
    Object& Hero() { return theScene->objects[1]; }
    Object& Camera() { return theScene->objects[2]; }
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
    /// Holds the key until the condition comes true.
    template <typename Condition>
    void Hold(const std::string& key, int code, Condition condition) {
        running.display.Xdotool("keydown " + key);
        EXPECT_TRUE(running.FramesUntil(condition)) << key;
        running.display.Xdotool("keyup " + key);
        EXPECT_TRUE(running.FramesUntil([&] { return theEngine->keyState[code] == 0; }));
    }
};

TEST_F(Devices, KeysWalkTurnAndTilt) {
    const Vector start = Position();
    EXPECT_NEAR(start.z, 5.05f, 0.1f);
    Hold("Down", 0x28, [&] { return Position().y < start.y - 2.0f; });
    const Vector stopped = Position();
    Hold("Up", 0x26, [&] { return Position().y > stopped.y + 1.0f; });
    Hold("Right", 0x27, [&] { return Heading() > 0.4f; });
    const float right = Heading();
    Hold("Left", 0x25, [&] { return Heading() < right - 0.3f; });
    const float level = Tilt();
    Hold("Prior", 0x21, [&] { return Tilt() > level + 0.3f; });
    Hold("Next", 0x22, [&] { return Tilt() < level - 0.3f; });
}

TEST_F(Devices, TheMouseTurnsByItsWayFromTheCentre) {
    theScene->players[0].controller = 1;
    theEngine->mouseSensitivity = 0.01f;
    const float heading = Heading();
    running.Frames(5);
    EXPECT_NEAR(Heading(), heading, 1e-5f);  // at rest nothing drifts

    running.display.Xdotool("mousemove_relative 20 0");
    ASSERT_TRUE(running.FramesUntil([&] { return Heading() > heading + 0.1f; }));
    running.Frames(5);
    EXPECT_NEAR(Heading(), heading + 0.2f, 0.011f);  // 20 pixels of 0.01, and the cursor is back
    const auto cursorRests = [] {
        POINT cursor;
        GetCursorPos(&cursor);
        return cursor.x == theEngine->mouseCentreX && cursor.y == theEngine->mouseCentreY;
    };
    EXPECT_TRUE(cursorRests());

    const float level = Tilt();
    running.display.Xdotool("mousemove_relative 0 30");
    ASSERT_TRUE(running.FramesUntil([&] { return Tilt() < level - 0.2f; }));

    const Vector start = Position();
    running.display.Xdotool("mousedown 2");
    ASSERT_TRUE(running.FramesUntil([&] { return Position().Distance(start) > 1.0f; }));
    EXPECT_LT(Position().y, start.y);  // backward
    running.display.Xdotool("mouseup 2 mousedown 1");
    ASSERT_TRUE(running.FramesUntil([&] { return Position().Distance(start) < 0.3f; }));
    running.display.Xdotool("mouseup 1 mousedown 3");
    EXPECT_TRUE(running.FramesUntil([] { return theEngine->mouseRightButton == 1; }));
    running.display.Xdotool("mouseup 3");
    EXPECT_TRUE(
        running.FramesUntil([] { return theEngine->mouseRightButton + theEngine->mouseLeftButton == 0; }));

    // While another window has the keyboard the mouse is its own.
    const OtherWindow other;
    EXPECT_TRUE(running.FramesUntil([] { return GetActiveWindow() == nullptr; }));
    running.display.Xdotool("mousemove 1000 900");
    const float before = Heading();
    running.Frames(5);
    EXPECT_NEAR(Heading(), before, 1e-5f);
    EXPECT_FALSE(cursorRests());
}

TEST_F(Devices, AJoystickTurnsAsLongAsItIsDeflected) {
    theScene->players[0].controller = 2;
    const int index = SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, 2, 4, 0);
    ASSERT_GE(index, 0) << SDL_GetError();
    SDL_Joystick* joystick = SDL_JoystickOpen(index);
    JOYINFOEX state;
    ASSERT_TRUE(running.FramesUntil([&] { return joyGetPosEx(JOYSTICKID1, &state) == JOYERR_NOERROR; }));
    EXPECT_EQ(state.dwXpos, theEngine->joystickCentreX);
    EXPECT_EQ(state.dwYpos, theEngine->joystickCentreY);
    const float heading = Heading();
    running.Frames(50);
    EXPECT_EQ(Heading(), heading);

    SDL_JoystickSetVirtualAxis(joystick, 0, SDL_JOYSTICK_AXIS_MAX);
    ASSERT_TRUE(running.FramesUntil([&] { return Heading() > heading + 0.5f; }));
    SDL_JoystickSetVirtualAxis(joystick, 0, 0);
    SDL_JoystickSetVirtualButton(joystick, 1, SDL_PRESSED);
    running.Frames(2);
    const Vector start = Position();
    ASSERT_TRUE(running.FramesUntil([&] { return Position().y < start.y - 1.0f; }));
    SDL_JoystickClose(joystick);
    SDL_JoystickDetachVirtual(index);
    // Pulled out in play, it turns and moves nobody.
    running.Frames(60);
    const Vector stopped = Position();
    running.Frames(20);
    EXPECT_LT(Position().Distance(stopped), 0.01f);
}

}  // namespace
