#include <limits>

#include "engine/engine.h"
#include "engine/singletons.h"
#include "simulation/player_control.h"
#include "simulation/test_world.h"

namespace {

TEST(Input, InactiveWindowKeepsTheJoysticksLastSampleAndNoMouse) {
    Scene scene;
    PlayerControl control;
    Engine engine;
    int otherWindow = 0;  // there is no active one in this process
    engine.window = reinterpret_cast<HWND>(&otherWindow);
    theScene = &scene;
    thePlayerControl = &control;
    AddMarkers(scene, Vector());
    scene.AddPlayers(1);
    Player& player = scene.players[0];
    player.playerObject = player.cameraObject = 0;
    Matrix& pending = scene.objects[0].transform;

    player.controller = 2;
    engine.SampleInput();
    EXPECT_TRUE(pending.IsIdentity()) << "never sampled, it stands at rest";
    // 10000 units to the left, as a signed difference of unsigned numbers, at 0.00001 radians each.
    engine.joystickState.dwXpos = engine.joystickCentreX - 10000;
    engine.joystickState.dwButtons = 1;
    engine.SampleInput();
    Matrix expected;
    expected.Rotate(-0.1f, 0, 0, 1);
    expected.Translate(0, -1, 0);
    ExpectNear(pending, expected);

    player.controller = 1;
    pending.SetIdentity();
    engine.mouseCentreX = 400;
    engine.mouseSensitivity = std::numeric_limits<float>::infinity();
    engine.mouseMiddleButton = 1;  // buttons come as messages, and count
    engine.SampleInput();
    expected.SetIdentity();
    expected.Translate(0, 1, 0);
    ExpectNear(pending, expected);

    engine.keyState[0x61] = 1;
    engine.SampleInput();  // no light to raise
    scene.AddLights(2);
    for (int frame = 0; frame < 3; frame++) {
        engine.SampleInput();
    }
    EXPECT_EQ(scene.lights[0].position[1], 1.5f);
    EXPECT_EQ(scene.lights[0].position[2], 1.0f);
    EXPECT_EQ(scene.lights[1].position[1], 0.0f);

    engine.window = nullptr;
    theScene = nullptr;
    thePlayerControl = nullptr;
}

}  // namespace
