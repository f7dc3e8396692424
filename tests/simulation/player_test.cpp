#include <cmath>

#include "simulation/player_control.h"
#include "simulation/test_world.h"

namespace {

/// One player: object 0 is the body and object 1 the camera, a member of group 0.
struct PlayerWorld {
    Scene scene;
    PlayerControl control;
    std::uint8_t keys[256] = {};

    PlayerWorld() {
        AddBody(scene, Vector(0, 0, 50));
        AddMarkers(scene, Vector(0, 0, 54));
        scene.AddPlayers(1);
        scene.AddGroups(1);
        scene.groups[0].Add(1);
        Body().groupParent = 0;
        Body().physics->gravity = 0.0f;
        Body().collider->airborne = 0;
        scene.players[0].playerObject = 0;
        scene.players[0].cameraObject = 1;
    }
    Object& Body() { return scene.objects[0]; }
    Object& Camera() { return scene.objects[1]; }
    Vector& Velocity() { return Body().physics->velocity; }
    void Frame() {
        control.ControlByKeyboard(scene, 0, keys);
        scene.StepWorld();
    }
    void Mouse(Vector delta, std::uint8_t left, std::uint8_t middle, std::uint8_t right = 0) {
        const std::uint8_t buttons[3] = {left, middle, right};
        control.ControlByMouse(scene, 0, delta, buttons);
    }
    void Joystick(Vector delta, DWORD buttons) {
        JOYINFOEX joystick;
        joystick.dwButtons = buttons;
        control.ControlByJoystick(scene, 0, delta, joystick);
    }
    bool AskedForNothing() {
        return Velocity().IsZero() && Body().transform.IsIdentity() && Camera().transform.IsIdentity() &&
               Body().activeKeyTrack == -1;
    }
};

TEST(PlayerMovement, MovesGoAlongTheBodyAtMostAtFullSpeed) {
    PlayerWorld world;
    world.control.MovePlayer(world.scene, moveForward, 1.0f, 0);
    ExpectNear(world.Velocity(), Vector(0, -0.1f, 0), 1e-6f);
    EXPECT_EQ(world.Body().activeKeyTrack, moveForward);
    world.control.MovePlayer(world.scene, moveForward, 1.0f, 0);
    ExpectNear(world.Velocity(), Vector(0, -0.1f, 0), 1e-6f);
    world.control.MovePlayer(world.scene, moveBackward, 1.0f, 0);
    ExpectNear(world.Velocity(), Vector(0, 0.1f, 0), 1e-6f);
    world.Velocity() = 0;
    world.control.MovePlayer(world.scene, moveSideways, 1.0f, 0);
    ExpectNear(world.Velocity(), Vector(0.1f, 0, 0), 1e-6f);
    // Below the limit nothing is cut, and nothing is normalised.
    world.scene.players[0].maxSpeed = 10.0f;
    world.Velocity() = 0;
    world.control.MovePlayer(world.scene, moveForward, 0.25f, 0);
    ExpectNear(world.Velocity(), Vector(0, -0.25f, 0), 1e-6f);
    // The fall counts in the speed.
    world.Velocity() = Vector(0, 0, -30);
    world.control.MovePlayer(world.scene, moveForward, 1.0f, 0);
    EXPECT_NEAR(world.Velocity().Length(), 10.0f, 1e-4f);
    EXPECT_NEAR(world.Velocity().y, -1.0f / 3.0f, 1e-3f);
    // An action that is none.
    world.Velocity() = 0;
    world.Body().activeKeyTrack = -1;
    world.control.MovePlayer(world.scene, 3, 1.0f, 0);
    EXPECT_TRUE(world.AskedForNothing());
}

TEST(PlayerMovement, InTheAirOnlyTheTrackPlays) {
    PlayerWorld world;
    world.Body().collider->airborne = 1;
    world.Velocity() = Vector(0, 0, -3);
    world.control.MovePlayer(world.scene, moveForward, 1.0f, 0);
    ExpectNear(world.Velocity(), Vector(0, 0, -3), 0.0f);
    EXPECT_EQ(world.Body().activeKeyTrack, moveForward);
}

TEST(PlayerMovement, WithoutColliderOrPhysicsTheStepIsDirect) {
    for (const bool collider : {true, false}) {
        PlayerWorld world;
        if (collider) {
            world.Body().physics = nullptr;
        } else {
            world.Body().collider = nullptr;
        }
        const float* m = world.Body().transform.m;
        world.control.MovePlayer(world.scene, moveForward, 2.0f, 0);
        EXPECT_FLOAT_EQ(m[7], -2.0f);
        world.control.MovePlayer(world.scene, moveBackward, 0.5f, 0);
        EXPECT_FLOAT_EQ(m[7], -1.5f);
        world.control.MovePlayer(world.scene, moveSideways, 1.0f, 0);
        EXPECT_FLOAT_EQ(m[7], -0.5f) << "sideways is backward";
        EXPECT_FLOAT_EQ(m[3], 0.0f);
        EXPECT_EQ(world.Body().activeKeyTrack, -1);
    }
}

TEST(PlayerMovement, TurnsGoAboutTheWorldsUpAndCarryTheCamera) {
    PlayerWorld world;
    world.control.TurnPlayer(world.scene, turnRight, 1.57079633f, 0);
    world.scene.StepWorld();
    ExpectNear(VertexOf(world.Body(), 1), Vector(0, -1, 50));
    ExpectNear(VertexOf(world.Camera(), 1), Vector(0, -1, 54));
    world.control.TurnPlayer(world.scene, turnLeft, 1.57079633f, 0);
    world.scene.StepWorld();
    ExpectNear(VertexOf(world.Body(), 1), Vector(1, 0, 50));
    world.control.TurnPlayer(world.scene, 6, 1.0f, 0);
    EXPECT_TRUE(world.AskedForNothing());
}

TEST(PlayerMovement, TiltStopsShortOfTheHeadLimit) {
    PlayerWorld world;
    const auto up = [&world] { return VertexOf(world.Camera(), 3) - CentreOf(world.Camera()); };
    const auto tilt = [&world](std::int32_t action, float amount) {
        world.control.TurnPlayer(world.scene, action, amount, 0);
        world.scene.StepWorld();
    };
    // A quarter turn is 15.7 steps of 0.1: the 16th would bring the head below the horizon.
    for (int frame = 0; frame < 40; frame++)
        tilt(lookUp, 0.1f);
    EXPECT_NEAR(up().z, std::cos(1.5f), 1e-4f);
    EXPECT_NEAR(up().y, std::sin(1.5f), 1e-4f);
    for (int frame = 0; frame < 40; frame++)
        tilt(lookDown, 0.1f);
    EXPECT_NEAR(up().z, std::cos(1.5f), 1e-4f);
    EXPECT_NEAR(up().y, -std::sin(1.5f), 1e-4f);
    EXPECT_NEAR(VertexOf(world.Body(), 3).z, 51.0f, 1e-6f) << "the body stays upright";

    // Above the marker every tilt is refused, also one back up.
    world.scene.players[0].headLimit = 0.5f;
    tilt(lookUp, 0.1f);
    EXPECT_NEAR(up().z, std::cos(1.5f), 1e-4f);
    // A limit of exactly what a request would reach lets it pass.
    PlayerWorld other;
    other.scene.players[0].headLimit = 1.0f;
    other.control.TurnPlayer(other.scene, lookUp, 0.1f, 0);
    EXPECT_TRUE(other.Camera().transform.IsIdentity());
    other.scene.players[0].headLimit = std::cos(0.1f);
    other.control.TurnPlayer(other.scene, lookUp, 0.1f, 0);
    EXPECT_FALSE(other.Camera().transform.IsIdentity());
}

TEST(PlayerMovement, HeadLimitSeesThePendingTranslationToo) {
    PlayerWorld world;
    world.Camera().transform.Translate(0, 0, -5);
    world.control.TurnPlayer(world.scene, lookUp, 0.1f, 0);
    EXPECT_TRUE(world.Camera().transform.IsIdentityRotation());
    EXPECT_EQ(world.Camera().transform.m[11], -5.0f);
    // A tilt of 1.5 leaves 0.07 of the marker's height, and of a marker 5 units higher 0.42.
    world.scene.players[0].headLimit = 0.3f;
    world.Camera().transform.m[11] = 5.0f;
    world.control.TurnPlayer(world.scene, lookUp, 1.5f, 0);
    EXPECT_FALSE(world.Camera().transform.IsIdentityRotation());
}

TEST(PlayerMovement, StoppedActionRewindsTheGroup) {
    PlayerWorld world;
    AddKeyTracks(world.Body(), 2, 9, Vector());
    AddKeyTracks(world.Camera(), 1, 9, Vector(0, 0, 1));
    world.keys[0x26] = 1;
    for (int frame = 1; frame <= 3; frame++) {
        world.Frame();
        EXPECT_EQ(world.Body().keyTracks[0].currentKey, frame);
        EXPECT_NEAR(CentreOf(world.Camera()).z, 54.0f + static_cast<float>(frame), 1e-3f);
    }
    world.keys[0x26] = 0;
    world.Frame();
    EXPECT_EQ(world.Camera().keyTracks[0].currentKey, 0);
    EXPECT_NEAR(CentreOf(world.Camera()).z, 54.0f, 1e-3f) << "back at rest in one frame";
    EXPECT_EQ(world.Body().keyTracks[0].currentKey, 3) << "the body is not on its own list";
    // Then it is asked every frame, and there is no more to undo.
    world.Frame();
    EXPECT_NEAR(CentreOf(world.Camera()).z, 54.0f, 1e-3f);
    // On the list it is rewound with the others.
    world.scene.groups[0].Add(0);
    world.Frame();
    EXPECT_EQ(world.Body().keyTracks[0].currentKey, 0);
}

TEST(PlayerControl, KeysAskForTurnsTiltsAndMoves) {
    struct {
        int key;
        float turn;
        float tilt;
        Vector velocity;
        std::int32_t track;
    } const cases[] = {{0x26, 0, 0, Vector(0, -0.1f, 0), 0},
                       {0x28, 0, 0, Vector(0, 0.1f, 0), 1},
                       {0x25, -0.1f, 0, Vector(), -1},
                       {0x27, 0.1f, 0, Vector(), -1},
                       {0x21, 0, 0.1f, Vector(), -1},
                       {0x22, 0, -0.1f, Vector(), -1},
                       {0xBC, 0, 0, Vector(0.1f, 0, 0), 2},
                       {0xBE, 0, 0, Vector(), -1},
                       {0x41, 0, 0, Vector(), -1}};
    for (const auto& expected : cases) {
        PlayerWorld world;
        world.keys[expected.key] = 1;
        world.control.ControlByKeyboard(world.scene, 0, world.keys);
        Matrix turn;
        turn.Rotate(expected.turn, 0, 0, 1);
        Matrix tilt;
        tilt.Rotate(expected.tilt, 1, 0, 0);
        for (int i = 0; i < 16; i++) {
            EXPECT_FLOAT_EQ(world.Body().transform.m[i], turn.m[i]) << expected.key;
            EXPECT_FLOAT_EQ(world.Camera().transform.m[i], tilt.m[i]) << expected.key;
        }
        ExpectNear(world.Velocity(), expected.velocity, 1e-6f);
        EXPECT_EQ(world.Body().activeKeyTrack, expected.track) << expected.key;
    }
}

TEST(PlayerControl, LaterOfTwoMovesStands) {
    PlayerWorld world;
    world.keys[0x26] = world.keys[0x28] = 1;
    world.control.ControlByKeyboard(world.scene, 0, world.keys);
    ExpectNear(world.Velocity(), Vector(0, 0.1f, 0), 1e-6f);
    EXPECT_EQ(world.Body().activeKeyTrack, moveBackward);
}

TEST(PlayerControl, MouseAndJoystickTurnBothWays) {
    for (const std::int32_t device : {1, 2}) {
        PlayerWorld world;
        world.scene.players[0].controller = device;
        const auto act = [&world, device](Vector delta, bool forward, bool backward) {
            if (device == 1) {
                world.Mouse(delta, forward, backward, 1);
            } else {
                world.Joystick(delta, (forward ? 1u : 0u) | (backward ? 2u : 0u) | 4u);
            }
        };
        act(Vector(0, 0, 0), false, false);
        EXPECT_TRUE(world.AskedForNothing()) << "the third button does nothing";
        // To the right and down are the right arrow key and Page Down.
        act(Vector(0.2f, 0.3f, 0), true, false);
        Matrix turn;
        turn.Rotate(0.2f, 0, 0, 1);
        Matrix tilt;
        tilt.Rotate(-0.3f, 1, 0, 0);
        for (int i = 0; i < 16; i++) {
            EXPECT_FLOAT_EQ(world.Body().transform.m[i], turn.m[i]);
            EXPECT_FLOAT_EQ(world.Camera().transform.m[i], tilt.m[i]);
        }
        ExpectNear(world.Velocity(), Vector(0, -0.1f, 0), 1e-6f);
        act(Vector(0, 0, 0), false, true);
        ExpectNear(world.Velocity(), Vector(0, 0.1f, 0), 1e-6f);
    }
}

TEST(PlayerControl, OnlyThePlayersOwnDeviceCounts) {
    for (const std::int32_t controller : {0, 1, 2, 3, -1}) {
        PlayerWorld world;
        world.scene.players[0].controller = controller;
        std::fill_n(world.keys, 256, std::uint8_t{1});
        if (controller != 0) world.control.ControlByKeyboard(world.scene, 0, world.keys);
        if (controller != 1) world.Mouse(Vector(1, 1, 0), 1, 1);
        if (controller != 2) world.Joystick(Vector(1, 1, 0), 3);
        EXPECT_TRUE(world.AskedForNothing()) << controller;
    }
}

TEST(PlayerControl, PlayersWithoutObjectsOrJustPlacedAreLeftOut) {
    PlayerWorld world;
    std::fill_n(world.keys, 256, std::uint8_t{1});
    world.Body().attributes[spawnStateAttribute] = justSpawned;
    world.control.ControlByKeyboard(world.scene, 0, world.keys);
    EXPECT_TRUE(world.AskedForNothing());
    world.scene.StepWorld();
    world.control.ControlByKeyboard(world.scene, 0, world.keys);
    EXPECT_FALSE(world.AskedForNothing());

    PlayerWorld other;
    Player& player = other.scene.players[0];
    for (const std::int32_t id : {-1, -2, 2, 1000000}) {
        for (std::int32_t* object : {&player.playerObject, &player.cameraObject}) {
            const std::int32_t before = *object;
            *object = id;
            other.control.ControlByKeyboard(other.scene, 0, world.keys);
            for (std::int32_t action = 0; action < 6; action++) {
                other.control.MovePlayer(other.scene, action, 1.0f, 0);
                other.control.MovePlayerDirect(other.scene, action, 1.0f, 0);
                other.control.TurnPlayer(other.scene, action, 1.0f, 0);
                other.control.StopPlayerAction(other.scene, 0, action);
            }
            *object = before;
            EXPECT_TRUE(other.AskedForNothing()) << id;
        }
    }
    other.control.ControlByKeyboard(other.scene, 1, world.keys);
    other.control.ControlByKeyboard(other.scene, -1, world.keys);
    EXPECT_TRUE(other.AskedForNothing());
}

TEST(PlayerControl, StopWithoutTracksOrGroupIsNothing) {
    PlayerWorld world;
    for (const std::int32_t action : {-1, 0, 2, 100})
        world.control.StopPlayerAction(world.scene, 0, action);
    AddKeyTracks(world.Body(), 1, 3, Vector(0, 0, 1));
    world.Body().keyTracks[0].currentKey = 2;
    // The camera has no such track and drops the request.
    world.control.StopPlayerAction(world.scene, 0, 0);
    EXPECT_EQ(world.Camera().activeKeyTrack, -1);
    world.scene.groupCount = 0;
    world.control.StopPlayerAction(world.scene, 0, 0);
    EXPECT_EQ(world.Body().keyTracks[0].currentKey, 2);
}

TEST(PlayerControl, BackwardToForwardLosesTheFirstFrameOfABodyOnItsOwnList) {
    PlayerWorld world;
    world.scene.groups[0].Add(0);
    AddKeyTracks(world.Body(), 2, 9, Vector());
    world.keys[0x26] = 1;
    world.Frame();
    world.keys[0x26] = 0;
    world.keys[0x28] = 1;
    world.Frame();
    EXPECT_EQ(world.Body().keyTracks[1].currentKey, 1) << "stop forward first, then backward stands";
    world.keys[0x28] = 0;
    world.keys[0x26] = 1;
    world.Frame();
    EXPECT_EQ(world.Body().keyTracks[0].currentKey, 0) << "forward first, then the stop takes its place";
    world.Frame();
    EXPECT_EQ(world.Body().keyTracks[0].currentKey, 1);
}

}  // namespace
