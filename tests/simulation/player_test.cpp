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
    void Move(std::int32_t action, float amount) { control.MovePlayer(scene, action, amount, 0); }
    void Turn(std::int32_t action, float amount) { control.TurnPlayer(scene, action, amount, 0); }
    void Keyboard() { control.ControlByKeyboard(scene, 0, keys); }
    /// A frame with these keys and no others down.
    void Frame(std::initializer_list<std::uint8_t> down) {
        std::fill_n(keys, 256, std::uint8_t{0});
        for (const std::uint8_t key : down) {
            keys[key] = 1;
        }
        Keyboard();
        scene.StepWorld();
    }
    void Mouse(Vector delta, bool left, bool middle, bool right) {
        const std::uint8_t buttons[3] = {static_cast<std::uint8_t>(left ? 1 : 0),
                                         static_cast<std::uint8_t>(middle ? 1 : 0),
                                         static_cast<std::uint8_t>(right ? 1 : 0)};
        control.ControlByMouse(scene, 0, delta, buttons);
    }
    void Joystick(Vector delta, DWORD buttons) {
        JOYINFOEX joystick;
        joystick.dwButtons = buttons;
        control.ControlByJoystick(scene, 0, delta, joystick);
    }
    void ExpectAsked(float turn, float tilt, Vector velocity, std::int32_t track) {
        Matrix turned;
        turned.Rotate(turn, 0, 0, 1);
        ExpectNear(Body().transform, turned);
        Matrix tilted;
        tilted.Rotate(tilt, 1, 0, 0);
        ExpectNear(Camera().transform, tilted);
        ExpectNear(Velocity(), velocity, 1e-6f);
        EXPECT_EQ(Body().activeKeyTrack, track);
    }
    void ExpectAskedForNothing() { ExpectAsked(0, 0, Vector(), -1); }
};

constexpr std::uint8_t forwardKey = 0x26;
constexpr std::uint8_t backwardKey = 0x28;

TEST(PlayerMovement, MovesGoAlongTheBodyAtMostAtFullSpeed) {
    const struct {
        float maxSpeed;
        Vector before;
        std::int32_t action;
        float amount;
        Vector after;
    } cases[] = {{0.1f, {0, 0, 0}, moveForward, 1.0f, {0, -0.1f, 0}},
                 {0.1f, {0, -0.1f, 0}, moveBackward, 1.0f, {0, 0.1f, 0}},
                 {0.1f, {0, 0, 0}, moveSideways, 1.0f, {0.1f, 0, 0}},
                 {10.0f, {0, 0, 0}, moveForward, 0.25f, {0, -0.25f, 0}},   // below the limit nothing is cut
                 {5.0f, {0, 0, -7.5f}, moveForward, 10.0f, {0, -4, -3}}};  // the fall counts in the speed
    for (const auto& [maxSpeed, before, action, amount, after] : cases) {
        PlayerWorld world;
        world.scene.players[0].maxSpeed = maxSpeed;
        world.Velocity() = before;
        world.Move(action, amount);
        world.ExpectAsked(0, 0, after, action);
    }
    PlayerWorld world;
    world.Move(3, 1.0f);
    world.Turn(6, 1.0f);
    world.ExpectAskedForNothing();
    // In the air only the track plays.
    world.Body().collider->airborne = 1;
    world.Move(moveForward, 1.0f);
    world.ExpectAsked(0, 0, Vector(), moveForward);
}

TEST(PlayerMovement, WithoutColliderOrPhysicsTheStepIsDirect) {
    for (const bool collider : {true, false}) {
        PlayerWorld world;
        if (collider) {
            world.Body().physics = nullptr;
        } else {
            world.Body().collider = nullptr;
        }
        world.Move(moveForward, 2.0f);
        world.Move(moveBackward, 0.5f);
        world.Move(moveSideways, 1.0f);  // is backward
        Matrix expected;
        expected.Translate(0, -0.5f, 0);
        ExpectNear(world.Body().transform, expected);
        EXPECT_EQ(world.Body().activeKeyTrack, -1);
    }
}

TEST(PlayerMovement, TiltStopsShortOfTheHeadLimit) {
    PlayerWorld world;
    const auto tilt = [&world](std::int32_t action, int frames) {
        for (int frame = 0; frame < frames; frame++) {
            world.Turn(action, 0.1f);
            world.scene.StepWorld();
        }
        return VertexOf(world.Camera(), 3) - CentreOf(world.Camera());
    };
    // A quarter turn is 15.7 steps of 0.1: the 16th would bring the head below the horizon.
    ExpectNear(tilt(lookUp, 40), Vector(0, std::sin(1.5f), std::cos(1.5f)), 1e-4f);
    ExpectNear(tilt(lookDown, 40), Vector(0, -std::sin(1.5f), std::cos(1.5f)), 1e-4f);
    ExpectNear(VertexOf(world.Body(), 3), Vector(0, 0, 51));
    // Above the marker every tilt is refused, also one back up.
    world.scene.players[0].headLimit = 0.5f;
    ExpectNear(tilt(lookUp, 1), Vector(0, -std::sin(1.5f), std::cos(1.5f)), 1e-4f);
}

TEST(PlayerMovement, HeadLimitIsInclusive) {
    PlayerWorld world;
    Matrix& pending = world.Camera().transform;
    world.scene.players[0].headLimit = std::nextafter(std::cos(0.1f), 2.0f);
    world.Turn(lookUp, 0.1f);
    EXPECT_TRUE(pending.IsIdentity());
    world.scene.players[0].headLimit = std::cos(0.1f);
    world.Turn(lookUp, 0.1f);
    EXPECT_FALSE(pending.IsIdentity());
    // The pending translation counts as well: it lifts the marker, and is kept when a tilt is refused.
    world.scene.players[0].headLimit = 0.3f;
    pending.SetIdentity();
    pending.Translate(0, 0, 5);
    world.Turn(lookUp, 1.5f);
    EXPECT_FALSE(pending.IsIdentityRotation());
    pending.SetIdentity();
    pending.Translate(0, 0, -5);
    world.Turn(lookUp, 0.1f);
    EXPECT_TRUE(pending.IsIdentityRotation());
    EXPECT_EQ(pending.m[11], -5.0f);
}

TEST(PlayerControl, KeysAskForTurnsTiltsAndMoves) {
    const struct {
        std::uint8_t keys[2];
        float turn;
        float tilt;
        Vector velocity;
        std::int32_t track;
    } cases[] = {{{forwardKey, 0}, 0, 0, {0, -0.1f, 0}, moveForward},
                 {{backwardKey, forwardKey}, 0, 0, {0, 0.1f, 0}, moveBackward},  // the later one stands
                 {{0xBC, 0}, 0, 0, {0.1f, 0, 0}, moveSideways},
                 {{0x25, 0}, -0.1f, 0, {}, -1},
                 {{0x27, 0x21}, 0.1f, 0.1f, {}, -1},
                 {{0x22, 0}, 0, -0.1f, {}, -1},
                 {{0xBE, 0x41}, 0, 0, {}, -1}};
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.keys[0]);
        PlayerWorld world;
        for (const std::uint8_t key : expected.keys) {
            world.keys[key] = 1;
        }
        world.Keyboard();
        world.ExpectAsked(expected.turn, expected.tilt, expected.velocity, expected.track);
    }
}

TEST(PlayerControl, MouseAndJoystickTurnBothWaysAndOnlyThePlayersOwnDeviceCounts) {
    for (const std::int32_t device : {-1, 0, 1, 2, 3}) {
        SCOPED_TRACE(device);
        PlayerWorld world;
        world.scene.players[0].controller = device;
        std::fill_n(world.keys, 256, std::uint8_t{1});
        if (device != 0) {
            world.Keyboard();
        }
        world.Mouse(device == 1 ? Vector() : Vector(1, 1, 0), device != 1, device != 1, true);
        world.Joystick(device == 2 ? Vector() : Vector(1, 1, 0), device == 2 ? 4 : 7);
        world.ExpectAskedForNothing();
        if (device != 1 && device != 2) {
            continue;
        }
        // To the right and down are the right arrow key and Page Down.
        world.Mouse(Vector(0.2f, 0.3f, 0), true, false, true);
        world.Joystick(Vector(0.2f, 0.3f, 0), 1 | 4);
        world.ExpectAsked(0.2f, -0.3f, Vector(0, -0.1f, 0), moveForward);
        world.Mouse(Vector(), false, true, false);
        world.Joystick(Vector(), 2);
        world.ExpectAsked(0.2f, -0.3f, Vector(0, 0.1f, 0), moveBackward);
    }
}

TEST(PlayerControl, JustPlacedPlayersRestForAFrame) {
    PlayerWorld world;
    std::fill_n(world.keys, 256, std::uint8_t{1});
    world.Body().attributes[spawnStateAttribute] = justSpawned;
    world.Keyboard();
    world.ExpectAskedForNothing();
    world.scene.StepWorld();
    world.Keyboard();
    EXPECT_FALSE(world.Velocity().IsZero());
    // And those who aren't there do nothing.
    for (const std::int32_t player : {-1, 1}) {
        world.control.ControlByKeyboard(world.scene, player, world.keys);
    }
    for (const std::int32_t id : {-1, 2}) {
        world.scene.players[0].cameraObject = id;
        world.Keyboard();
        world.Move(moveForward, 1.0f);
        world.Turn(lookUp, 1.0f);
    }
}

TEST(PlayerControl, StoppedActionRewindsTheGroup) {
    PlayerWorld world;
    AddKeyTracks(world.Body(), 2, 9, Vector());
    AddKeyTracks(world.Camera(), 1, 9, Vector(0, 0, 1));
    const auto bodyKey = [&world](std::int32_t track) { return world.Body().keyTracks[track].currentKey; };
    for (int frame = 1; frame <= 3; frame++) {
        world.Frame({forwardKey});
        EXPECT_EQ(bodyKey(0), frame);
        EXPECT_NEAR(CentreOf(world.Camera()).z, 54.0f + static_cast<float>(frame), 1e-3f);
    }
    // Back at rest in one frame; then it is asked every frame, and there is no more to undo.
    for (int frame = 0; frame < 2; frame++) {
        world.Frame({});
        EXPECT_NEAR(CentreOf(world.Camera()).z, 54.0f, 1e-3f);
        EXPECT_EQ(world.Camera().keyTracks[0].currentKey, 0);
        EXPECT_EQ(bodyKey(0), 3) << "the body is not on its own list";
    }
    // On the list it is rewound with the others.
    world.scene.groups[0].Add(0);
    world.Frame({});
    EXPECT_EQ(bodyKey(0), 0);

    // Moves are asked for in their order: going backward then, the stop of forward comes before.
    world.Frame({forwardKey});
    world.Frame({backwardKey});
    EXPECT_EQ(bodyKey(1), 1);
    world.Frame({forwardKey});
    EXPECT_EQ(bodyKey(0), 0) << "forward first, then the stop takes its place";
    world.Frame({forwardKey});
    EXPECT_EQ(bodyKey(0), 1);
}

}  // namespace
