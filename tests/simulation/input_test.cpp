#include "app/engine.h"
#include "app/singletons.h"
#include "simulation/player_control.h"
#include "simulation/test_world.h"

namespace {

/// An engine whose window is not the active one: there is none in this process.
struct InputWorld {
    Scene scene;
    PlayerControl control;
    Engine engine;
    int otherWindow = 0;

    InputWorld() {
        AddMarkers(scene, Vector(0, 0, 0));
        scene.AddPlayers(1);
        scene.players[0].playerObject = scene.players[0].cameraObject = 0;
        engine.window = reinterpret_cast<HWND>(&otherWindow);
        theScene = &scene;
        thePlayerControl = &control;
    }
    ~InputWorld() {
        engine.window = nullptr;
        theScene = nullptr;
        thePlayerControl = nullptr;
    }
    const Matrix& Pending() { return scene.objects[0].transform; }
};

TEST(Input, InactiveWindowKeepsTheJoysticksLastSampleAndNoMouse) {
    InputWorld world;
    world.scene.players[0].controller = 2;
    world.engine.SampleInput();
    EXPECT_TRUE(world.Pending().IsIdentity()) << "never sampled, it stands at rest";
    // 10000 units to the left, as a signed difference of unsigned numbers, at 0.00001 radians each.
    world.engine.joystickState.dwXpos = world.engine.joystickCentreX - 10000;
    world.engine.joystickState.dwButtons = 1;
    world.engine.SampleInput();
    Matrix expected;
    expected.Rotate(-0.1f, 0, 0, 1);
    expected.Translate(0, -1, 0);
    for (int i = 0; i < 16; i++)
        EXPECT_NEAR(world.Pending().m[i], expected.m[i], 1e-6f);

    InputWorld other;
    other.scene.players[0].controller = 1;
    other.engine.mouseCentreX = 400;
    other.engine.SampleInput();
    EXPECT_TRUE(other.Pending().IsIdentity());
    // Buttons come as messages, and count.
    other.engine.mouseMiddleButton = 1;
    other.engine.SampleInput();
    EXPECT_EQ(other.Pending().m[7], 1.0f);
}

TEST(Input, NumericPad1RaisesTheFirstLight) {
    InputWorld world;
    world.engine.keyState[0x61] = 1;
    world.engine.SampleInput();  // no light to raise
    world.scene.AddLights(2);
    for (int frame = 0; frame < 3; frame++)
        world.engine.SampleInput();
    EXPECT_EQ(world.scene.lights[0].position[1], 1.5f);
    EXPECT_EQ(world.scene.lights[0].position[2], 1.0f);
    EXPECT_EQ(world.scene.lights[1].position[1], 0.0f);
}

}  // namespace
